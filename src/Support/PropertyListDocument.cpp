#include "PropertyListDocument.h"
#include "PrivateBytes.h"
#include "ShortestDecimal.h"
#include <array>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <fmt/format.h>
#include <optional>
#include <type_traits>

namespace quillane::PropertyListDocument {
namespace {

constexpr std::string_view kHead = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                   "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
                                   "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
                                   "<plist version=\"1.0\">\n";
constexpr std::string_view kTail = "</plist>\n";

bool isXmlCharacter(std::int32_t c) {
    return c == '\t' || c == '\n' || (c >= 0x20 && c <= 0xD7FF) || (c >= 0xE000 && c <= 0xFFFD) ||
           c >= 0x10000;
}

void appendText(std::string& out, std::string_view text) {
    for (const char c : PrivateBytes::written(text, isXmlCharacter)) {
        switch (c) {
        case '<':
            out += "&lt;";
            break;
        case '>':
            out += "&gt;";
            break;
        case '&':
            out += "&amp;";
            break;
        default:
            out += c;
        }
    }
}

std::string base64(std::string_view bytes) {
    static constexpr std::string_view kDigits =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string out;
    out.reserve((bytes.size() + 2) / 3 * 4);
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        std::uint32_t group = 0;
        for (std::size_t k = 0; k < 3; ++k) {
            group = group << 8 | (i + k < bytes.size() ? static_cast<unsigned char>(bytes[i + k]) : 0U);
        }
        for (std::size_t k = 0; k < 4; ++k) {
            out += i + k <= bytes.size() ? kDigits[group >> (18 - 6 * k) & 63U] : '=';
        }
    }
    return out;
}

// Nothing for what is no date that the text form knows. The library's calendar ends with the year 32,767; as the
// calendar repeats itself after 400 years, it serves for all others too.
std::optional<std::string> dateText(Date date) {
    using namespace std::chrono;
    constexpr double kFarthest = 31e15; // seconds: years of nine digits, as many as can be read
    constexpr std::int64_t kSecondsOf400Years = std::int64_t{146097} * 86400;
    if (!(std::fabs(date.secondsSince1970()) < kFarthest)) {
        return std::nullopt;
    }
    const auto since1970 = static_cast<std::int64_t>(std::floor(date.secondsSince1970()));
    const auto inCycle = (since1970 % kSecondsOf400Years + kSecondsOf400Years) % kSecondsOf400Years;
    const auto cycles = (since1970 - inCycle) / kSecondsOf400Years;
    const auto whole = sys_seconds(seconds(inCycle));
    const auto day = floor<days>(whole);
    const year_month_day civil(day);
    const hh_mm_ss time(whole - day);
    return fmt::format("{:04}-{:02}-{:02}T{:02}:{:02}:{:02}Z", static_cast<int>(civil.year()) + cycles * 400,
                       static_cast<unsigned>(civil.month()), static_cast<unsigned>(civil.day()),
                       time.hours().count(), time.minutes().count(), time.seconds().count());
}

bool hasTextForm(const PropertyList::Value& value) {
    const auto* date = std::get_if<Date>(&value.variant());
    return date != nullptr ? dateText(*date).has_value()
                           : !std::holds_alternative<PropertyList::Opaque>(value.variant());
}

std::string realText(double value) {
    if (std::isnan(value)) {
        return "nan";
    }
    if (std::isinf(value)) {
        return value > 0 ? "+infinity" : "-infinity";
    }
    return ShortestDecimal(value).shorter();
}

class Writer {
  public:
    void value(const PropertyList::Value& value, int depth) {
        std::visit([&](const auto& held) { write(held, depth); }, value.variant());
    }
    void write(const PropertyList::Dictionary& dictionary, int depth) {
        line(depth, "<dict>");
        for (const auto& entry : dictionary.entries()) {
            if (!hasTextForm(entry.value)) {
                continue;
            }
            element(depth + 1, "key", entry.key);
            value(entry.value, depth + 1);
        }
        line(depth, "</dict>");
    }
    std::string out{kHead};

  private:
    void write(bool flag, int depth) { line(depth, flag ? "<true/>" : "<false/>"); }
    void write(std::int64_t number, int depth) { element(depth, "integer", std::to_string(number)); }
    void write(const PropertyList::BigNumber& number, int depth) {
        element(depth, "integer", std::to_string(number.value));
    }
    void write(double real, int depth) { element(depth, "real", realText(real)); }
    void write(const std::string& text, int depth) { element(depth, "string", text); }
    void write(Date date, int depth) {
        if (const auto text = dateText(date)) {
            element(depth, "date", *text);
        }
    }
    void write(const PropertyList::Data& data, int depth) { element(depth, "data", base64(data.bytes)); }
    void write(const PropertyList::Opaque&, int) {}
    void write(const PropertyList::Array& array, int depth) {
        line(depth, "<array>");
        for (const auto& item : array) {
            value(item, depth + 1);
        }
        line(depth, "</array>");
    }
    void line(int depth, std::string_view text) {
        out.append(static_cast<std::size_t>(depth), '\t');
        out += text;
        out += '\n';
    }
    void element(int depth, std::string_view tag, std::string_view text) {
        out.append(static_cast<std::size_t>(depth), '\t');
        out += fmt::format("<{}>", tag);
        appendText(out, text);
        out += fmt::format("</{}>\n", tag);
    }
};

} // namespace

std::string text(const PropertyList::Dictionary& root) {
    Writer writer;
    writer.write(root, 0);
    writer.out += kTail;
    return std::move(writer.out);
}

std::string restored(const std::string& read) {
    return PrivateBytes::restored(read, isXmlCharacter);
}

} // namespace quillane::PropertyListDocument
