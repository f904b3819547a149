#include "StoredRecords.h"
#include "JsonText.h"
#include <cmath>
#include <nlohmann/json.hpp>
#include <utility>

namespace quillane::StoredRecords {
namespace {

using nlohmann::json;

// Records are small; what is larger was not written by us and would only cost time.
constexpr std::size_t kMaxBytes = 64U * 1024U * 1024U;

std::optional<json> parse(const Defaults::Data& data) {
    if (data.size() > kMaxBytes) {
        return std::nullopt;
    }
    auto parsed = json::parse(data.begin(), data.end(), nullptr, false);
    if (parsed.is_discarded() || !parsed.is_object()) {
        return std::nullopt;
    }
    return parsed;
}

const json* field(const json& object, const char* key) {
    const auto found = object.find(key);
    return found == object.end() ? nullptr : &*found;
}

std::optional<std::string> text(const json& object, const char* key) {
    const auto* value = field(object, key);
    return value != nullptr && value->is_string() ? std::optional(value->get_ref<const std::string&>())
                                                  : std::nullopt;
}

std::optional<double> number(const json& object, const char* key) {
    const auto* value = field(object, key);
    return value != nullptr && value->is_number() ? std::optional(value->get<double>()) : std::nullopt;
}

// An integer, or a real that is one.
std::optional<std::int64_t> integer(const json& object, const char* key) {
    const auto* value = field(object, key);
    if (value == nullptr) {
        return std::nullopt;
    }
    if (value->is_number_unsigned()) {
        const auto big = value->get<std::uint64_t>();
        return big <= static_cast<std::uint64_t>(INT64_MAX) ? std::optional(static_cast<std::int64_t>(big))
                                                            : std::nullopt;
    }
    if (value->is_number_integer()) {
        return value->get<std::int64_t>();
    }
    if (value->is_number_float()) {
        const double real = value->get<double>();
        constexpr double kLimit = 9223372036854775808.0; // 2 to the 63
        if (real == std::trunc(real) && real >= -kLimit && real < kLimit) {
            return static_cast<std::int64_t>(real);
        }
    }
    return std::nullopt;
}

std::optional<FileURL> fileURL(const json& object, const char* key) {
    const auto absolute = text(object, key);
    return absolute ? FileURL::fromAbsoluteString(*absolute) : std::nullopt;
}

std::optional<std::vector<TrashMove>> moves(const json& object, const char* key) {
    const auto* array = field(object, key);
    if (array == nullptr || !array->is_array()) {
        return std::nullopt;
    }
    std::vector<TrashMove> result;
    result.reserve(array->size());
    for (const auto& element : *array) {
        if (!element.is_object()) {
            return std::nullopt;
        }
        auto from = fileURL(element, "from");
        auto to = fileURL(element, "to");
        if (!from || !to) {
            return std::nullopt;
        }
        result.push_back({std::move(*from), std::move(*to)});
    }
    return result;
}

} // namespace

std::optional<Defaults::Data> encode(const UndoableOperation& operation) {
    const auto date = JsonText::number(operation.date.secondsSinceReferenceDate);
    if (!date) {
        return std::nullopt;
    }
    std::string out =
        "{\"label\":" + JsonText::string(operation.label) + ",\"date\":" + *date + ",\"moves\":[";
    for (std::size_t i = 0; i < operation.moves.size(); ++i) {
        const auto& move = operation.moves[i];
        out += i == 0 ? "" : ",";
        out += "{\"from\":" + JsonText::string(move.from.absoluteString()) +
               ",\"to\":" + JsonText::string(move.to.absoluteString()) + "}";
    }
    out += "],\"bytes\":" + std::to_string(operation.bytes) + "}";
    return Defaults::Data(out.begin(), out.end());
}

std::optional<UndoableOperation> decodeUndoableOperation(const Defaults::Data& data) {
    const auto object = parse(data);
    if (!object) {
        return std::nullopt;
    }
    auto label = text(*object, "label");
    const auto date = number(*object, "date");
    auto trashMoves = moves(*object, "moves");
    const auto bytes = integer(*object, "bytes");
    if (!label || !date || !trashMoves || !bytes) {
        return std::nullopt;
    }
    return UndoableOperation{std::move(*label), Date{*date}, std::move(*trashMoves), *bytes};
}

} // namespace quillane::StoredRecords
