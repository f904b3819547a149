#include "StoredRecords.h"
#include "JsonText.h"
#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>
#include <utility>

namespace quillane::StoredRecords {
namespace {

using nlohmann::json;

// Records are small; what is larger was not written by us and would only cost time.
constexpr std::size_t kMaxBytes = std::size_t{64} << 20U;

std::optional<json> parse(const Defaults::Data& data) {
    // The parser would take a zero byte for the end, whatever follows.
    if (data.size() > kMaxBytes || std::ranges::find(data, std::uint8_t{0}) != data.end()) {
        return std::nullopt;
    }
    const auto* const text = reinterpret_cast<const char*>(data.data());
    auto parsed = json::parse(text, text + data.size(), nullptr, false);
    return parsed.is_discarded() ? std::nullopt : std::optional(std::move(parsed));
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

// What is stored may be anybody's. Sums of figures stop the process when they overflow, so no figure is negative, and
// all that one value holds stay together below what sums can take.
class Figures {
  public:
    // The nearest to a figure that is still to be believed.
    Bytes believed(std::int64_t figure) {
        const auto value = std::clamp<std::int64_t>(figure, 0, m_left);
        m_left -= value;
        return value;
    }

  private:
    Bytes m_left = kMostStoredBytes;
};

std::optional<bool> boolean(const json& object, const char* key) {
    const auto* value = field(object, key);
    return value != nullptr && value->is_boolean() ? std::optional(value->get<bool>()) : std::nullopt;
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

std::optional<RecentUninstall::Leftover> leftover(const json& object, Figures& figures) {
    if (!object.is_object()) {
        return std::nullopt;
    }
    auto url = fileURL(object, "url");
    auto category = text(object, "category");
    const auto bytes = integer(object, "bytes");
    const auto highConfidence = boolean(object, "highConfidence");
    if (!url || !category || !bytes || !highConfidence) {
        return std::nullopt;
    }
    return RecentUninstall::Leftover{std::move(*url), std::move(*category), figures.believed(*bytes),
                                     *highConfidence};
}

std::optional<RecentUninstall> recentUninstall(const json& object, Figures& figures) {
    if (!object.is_object()) {
        return std::nullopt;
    }
    auto name = text(object, "name");
    const auto date = number(object, "removedAt");
    const auto* leftovers = field(object, "leftovers");
    if (!name || !date || leftovers == nullptr || !leftovers->is_array()) {
        return std::nullopt;
    }
    RecentUninstall record{std::move(*name), std::nullopt, Date{*date}, {}};
    if (const auto* identifier = field(object, "bundleIdentifier");
        identifier != nullptr && !identifier->is_null()) {
        record.bundleIdentifier = text(object, "bundleIdentifier");
        if (!record.bundleIdentifier) {
            return std::nullopt; // of another kind: an error and not an absence
        }
    }
    for (const auto& element : *leftovers) {
        auto item = leftover(element, figures);
        if (!item) {
            return std::nullopt;
        }
        record.leftovers.push_back(std::move(*item));
    }
    return record;
}

std::string leftoverText(const RecentUninstall::Leftover& leftover) {
    return "{\"url\":" + JsonText::string(leftover.url.absoluteString()) +
           ",\"category\":" + JsonText::string(leftover.category) +
           ",\"bytes\":" + std::to_string(leftover.bytes) +
           ",\"highConfidence\":" + (leftover.highConfidence ? "true" : "false") + "}";
}

} // namespace

std::optional<Defaults::Data> encode(const std::vector<RecentUninstall>& records) {
    std::string out = "[";
    for (const auto& record : records) {
        const auto date = JsonText::number(record.removedAt.secondsSinceReferenceDate);
        if (!date) {
            return std::nullopt;
        }
        out += out.size() == 1 ? "{" : ",{";
        out += "\"name\":" + JsonText::string(record.name);
        if (record.bundleIdentifier) {
            out += ",\"bundleIdentifier\":" + JsonText::string(*record.bundleIdentifier);
        }
        out += ",\"removedAt\":" + *date + ",\"leftovers\":[";
        for (std::size_t i = 0; i < record.leftovers.size(); ++i) {
            out += (i == 0 ? "" : ",") + leftoverText(record.leftovers[i]);
        }
        out += "]}";
    }
    out += "]";
    return Defaults::Data(out.begin(), out.end());
}

std::optional<std::vector<RecentUninstall>> decodeRecentUninstalls(const Defaults::Data& data) {
    const auto array = parse(data);
    if (!array || !array->is_array()) {
        return std::nullopt;
    }
    std::vector<RecentUninstall> records;
    Figures figures;
    for (const auto& element : *array) {
        auto record = recentUninstall(element, figures);
        if (!record) {
            return std::nullopt;
        }
        records.push_back(std::move(*record));
    }
    return records;
}

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
    if (!object || !object->is_object()) {
        return std::nullopt;
    }
    auto label = text(*object, "label");
    const auto date = number(*object, "date");
    auto trashMoves = moves(*object, "moves");
    const auto bytes = integer(*object, "bytes");
    if (!label || !date || !trashMoves || !bytes) {
        return std::nullopt;
    }
    return UndoableOperation{std::move(*label), Date{*date}, std::move(*trashMoves),
                             Figures().believed(*bytes)};
}

} // namespace quillane::StoredRecords
