#include "UpdateFeed.h"
#include "Base64.h"
#include "Ed25519.h"
#include <algorithm>
#include <charconv>
#include <chrono>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>

namespace quillane::UpdateFeed {
namespace {

using nlohmann::json;

constexpr std::size_t kSignatureDigits = 86; // of the 88 characters; the others are "="
constexpr std::string_view kPadding = "==";
constexpr std::string_view kScheme = "https://";
constexpr std::string_view kDateForm = "0000-00-00T00:00:00Z"; // a zero stands for any digit

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isControl(char c) {
    return static_cast<unsigned char>(c) < 0x20 || c == '\x7f';
}

// Nothing for what is not written exactly as a signature is.
std::optional<std::string> signatureIn(std::string_view line) {
    const auto digits = line.substr(0, kSignatureDigits);
    const bool isOne = line.size() == kSignatureDigits + kPadding.size() && line.ends_with(kPadding) &&
                       std::ranges::all_of(digits, [](char c) { return Base64::digit(c).has_value(); });
    return isOne ? std::optional(Base64::decoded(line)) : std::nullopt;
}

std::optional<std::string> textIn(const json& object, const char* key, std::size_t mostBytes) {
    const auto found = object.find(key);
    if (found == object.end() || !found->is_string()) {
        return std::nullopt;
    }
    const auto& text = found->get_ref<const std::string&>();
    return text.size() <= mostBytes ? std::optional(text) : std::nullopt;
}

bool hasDateForm(std::string_view text) {
    return std::ranges::equal(text, kDateForm,
                              [](char c, char form) { return form == '0' ? isDigit(c) : c == form; });
}

std::optional<Date> dateFrom(std::string_view text) {
    if (!hasDateForm(text)) {
        return std::nullopt;
    }
    const auto number = [&](std::size_t begin, std::size_t length) {
        unsigned value = 0;
        std::from_chars(text.data() + begin, text.data() + begin + length, value);
        return value;
    };
    using namespace std::chrono;
    const year_month_day day{year(static_cast<int>(number(0, 4))), month(number(5, 2)),
                             std::chrono::day(number(8, 2))};
    const auto hour = number(11, 2);
    const auto minute = number(14, 2);
    const auto second = number(17, 2);
    if (!day.ok() || hour > 23 || minute > 59 || second > 59) {
        return std::nullopt;
    }
    const seconds since1970 =
        sys_days(day).time_since_epoch() + hours(hour) + minutes(minute) + seconds(second);
    return Date::fromUnix(since1970.count());
}

// A name and perhaps a port; no account, which could pass for the name.
bool isHost(std::string_view text) {
    const auto colon = std::min(text.find(':'), text.size());
    const auto isOfName = [](char c) {
        return isDigit(c) || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '.' || c == '-';
    };
    return colon != 0 && text[0] != '.' && text[0] != '-' &&
           std::ranges::all_of(text.substr(0, colon), isOfName) &&
           std::ranges::all_of(text.substr(std::min(colon + 1, text.size())), isDigit);
}

bool isPage(std::string_view text) {
    const auto isPlain = [](char c) {
        return c > ' ' && c <= '~' && c != '"' && c != '<' && c != '>' && c != '\\';
    };
    if (!text.starts_with(kScheme) || !std::ranges::all_of(text, isPlain)) {
        return false;
    }
    text.remove_prefix(kScheme.size());
    return isHost(text.substr(0, text.find_first_of("/?#")));
}

bool areNotes(std::string_view text) {
    return std::ranges::none_of(text, [](char c) { return isControl(c) && c != '\n' && c != '\t'; });
}

std::optional<json> objectIn(std::string_view text) {
    if (text.find('\0') != std::string_view::npos) { // the parser would take it for the end
        return std::nullopt;
    }
    auto parsed = json::parse(text.begin(), text.end(), nullptr, false);
    return parsed.is_object() ? std::optional(std::move(parsed)) : std::nullopt;
}

} // namespace

std::optional<AppUpdate> parse(std::string_view announcement) {
    const auto object = announcement.size() <= kMostBytes ? objectIn(announcement) : std::nullopt;
    if (!object) {
        return std::nullopt;
    }
    constexpr std::size_t kMostVersion = VersionNumber::kMostParts * (VersionNumber::kMostDigits + 1);
    const auto version = VersionNumber::parse(textIn(*object, "version", kMostVersion).value_or(""));
    const auto date = dateFrom(textIn(*object, "date", kDateForm.size()).value_or(""));
    auto page = textIn(*object, "page", kMostBytesOfPage);
    auto notes = object->contains("notes") ? textIn(*object, "notes", kMostBytesOfNotes) : std::string();
    if (!version || !date || !page || !isPage(*page) || !notes || !areNotes(*notes)) {
        return std::nullopt;
    }
    return AppUpdate{*version, *date, std::move(*page), std::move(*notes)};
}

std::variant<AppUpdate, Fault> read(std::string_view text, std::string_view publicKey) {
    const auto end = text.size() <= kMostBytes ? text.find('\n') : std::string_view::npos;
    const auto signature = end == std::string_view::npos ? std::nullopt : signatureIn(text.substr(0, end));
    if (!signature || !Ed25519::isSigned(text.substr(end + 1), *signature, publicKey)) {
        return Fault::notSigned;
    }
    auto update = parse(text.substr(end + 1));
    if (!update) {
        return Fault::unreadable;
    }
    return std::move(*update);
}

} // namespace quillane::UpdateFeed
