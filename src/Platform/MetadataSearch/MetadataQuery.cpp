#include "MetadataQuery.h"
#include "MetadataQueryParser.h"
#include <algorithm>

namespace quillane {
namespace {

struct NamedAttribute {
    std::string_view name;
    MetadataAttribute attribute;
};

constexpr NamedAttribute kAttributes[] = {
    {"kMDItemContentType", MetadataAttribute::contentType},
    {"kMDItemContentTypeTree", MetadataAttribute::contentTypeTree},
    {"kMDItemDisplayName", MetadataAttribute::displayName},
    {"kMDItemFSName", MetadataAttribute::fileName},
    {"kMDItemFSSize", MetadataAttribute::size},
    {"kMDItemFSContentChangeDate", MetadataAttribute::contentChangeDate},
    {"kMDItemContentModificationDate", MetadataAttribute::contentChangeDate},
    {"kMDItemLastUsedDate", MetadataAttribute::lastUsedDate},
    {"kMDItemIsScreenCapture", MetadataAttribute::screenCapture},
    {"kMDItemTextContent", MetadataAttribute::textContent},
};

// A number or a date against the value, by the operator.
bool isOrdered(double left, double right, auto operation) {
    using Operator = decltype(operation);
    switch (operation) {
    case Operator::equal:
        return left == right;
    case Operator::less:
        return left < right;
    case Operator::lessOrEqual:
        return left <= right;
    case Operator::greater:
        return left > right;
    case Operator::greaterOrEqual:
        return left >= right;
    }
    return false;
}

} // namespace

MetadataAttribute metadataAttributeNamed(std::string_view name) {
    const auto* const found = std::ranges::find(kAttributes, name, &NamedAttribute::name);
    return found == std::end(kAttributes) ? MetadataAttribute::unknown : found->attribute;
}

std::optional<MetadataQuery> MetadataQuery::parse(std::string_view text, Date now) {
    if (text.size() > kLongest) {
        return std::nullopt;
    }
    auto root = MetadataQueryParser(text, now).parse();
    if (!root) {
        return std::nullopt;
    }
    return MetadataQuery(std::move(*root));
}

bool MetadataQuery::fulfils(const Node& node, MetadataItem& item) {
    const auto isFulfilled = [&](const Node& child) { return fulfils(child, item); };
    switch (node.kind) {
    case Node::Kind::comparison:
        return node.comparison && fulfils(*node.comparison, item);
    case Node::Kind::all:
        return std::ranges::all_of(node.children, isFulfilled);
    case Node::Kind::any:
        return std::ranges::any_of(node.children, isFulfilled);
    case Node::Kind::negation:
        return !fulfils(node.children.front(), item);
    }
    return false;
}

bool MetadataQuery::fulfils(const Comparison& comparison, MetadataItem& item) {
    if (comparison.attribute == MetadataAttribute::unknown) {
        return false;
    }
    const auto value = item.value(comparison.attribute);
    if (std::holds_alternative<std::monostate>(value)) {
        return false;
    }
    if (comparison.operation == Operator::equal && comparison.value.text.matchesEverything()) {
        return true;
    }
    if (const auto* const bytes = std::get_if<Bytes>(&value)) {
        return comparison.value.number &&
               isOrdered(static_cast<double>(*bytes), *comparison.value.number, comparison.operation);
    }
    if (const auto* const date = std::get_if<Date>(&value)) {
        const auto wanted = comparison.value.date ? comparison.value.date->secondsSinceReferenceDate
                                                  : comparison.value.number;
        return wanted && isOrdered(date->secondsSinceReferenceDate, *wanted, comparison.operation);
    }
    return comparison.operation == Operator::equal && isEqual(comparison, value);
}

bool MetadataQuery::isEqual(const Comparison& comparison, const MetadataValue& value) {
    const auto& pattern = comparison.value.text;
    if (const auto* const members = std::get_if<std::span<const std::string_view>>(&value)) {
        return std::ranges::any_of(*members,
                                   [&](std::string_view member) { return pattern.matches(member); });
    }
    const auto* const text = std::get_if<std::string_view>(&value);
    if (text == nullptr) {
        return false;
    }
    return comparison.attribute == MetadataAttribute::textContent ? pattern.occursIn(*text)
                                                                  : pattern.matches(*text);
}

} // namespace quillane
