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

MetadataAnswer answerOf(bool isFulfilled) {
    return isFulfilled ? MetadataAnswer::yes : MetadataAnswer::no;
}

MetadataAnswer negated(MetadataAnswer answer) {
    switch (answer) {
    case MetadataAnswer::no:
        return MetadataAnswer::yes;
    case MetadataAnswer::yes:
        return MetadataAnswer::no;
    case MetadataAnswer::later:
        break;
    }
    return MetadataAnswer::later;
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

MetadataAnswer MetadataItem::occursInContent(const TextPattern& pattern) {
    const auto value = this->value(MetadataAttribute::textContent);
    const auto* const text = std::get_if<std::string_view>(&value);
    return answerOf(text != nullptr && (pattern.matchesEverything() || pattern.occursIn(*text)));
}

MetadataAnswer MetadataQuery::fulfils(const Node& node, MetadataItem& item) {
    switch (node.kind) {
    case Node::Kind::comparison:
        return node.comparison ? fulfils(*node.comparison, item) : MetadataAnswer::no;
    case Node::Kind::all:
        return fulfilsSome(node, item, MetadataAnswer::no);
    case Node::Kind::any:
        return fulfilsSome(node, item, MetadataAnswer::yes);
    case Node::Kind::negation:
        return negated(fulfils(node.children.front(), item));
    }
    return MetadataAnswer::no;
}

// The answer that decides, when a child gives it; else `later` when one gives that.
MetadataAnswer MetadataQuery::fulfilsSome(const Node& node, MetadataItem& item, MetadataAnswer decisive) {
    auto answer = negated(decisive);
    for (const auto& child : node.children) {
        const auto part = fulfils(child, item);
        if (part == decisive) {
            return decisive;
        }
        if (part == MetadataAnswer::later) {
            answer = part;
        }
    }
    return answer;
}

MetadataAnswer MetadataQuery::fulfils(const Comparison& comparison, MetadataItem& item) {
    if (comparison.attribute == MetadataAttribute::unknown) {
        return MetadataAnswer::no;
    }
    if (comparison.attribute == MetadataAttribute::textContent) {
        return comparison.operation == Operator::equal ? item.occursInContent(comparison.value.text)
                                                       : MetadataAnswer::no;
    }
    return answerOf(isFulfilledBy(item.value(comparison.attribute), comparison));
}

bool MetadataQuery::isFulfilledBy(const MetadataValue& value, const Comparison& comparison) {
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
    return text != nullptr && pattern.matches(*text);
}

} // namespace quillane
