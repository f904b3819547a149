#pragma once
#include "MetadataQuery.h"
#include <optional>
#include <string>
#include <string_view>

namespace quillane {

// Reads the text of a query, once. Goes no deeper than MetadataQuery::kDeepest.
class MetadataQueryParser {
  public:
    MetadataQueryParser(std::string_view text, Date now)
        : m_rest(text)
        , m_now(now) {}

    // The whole text as one expression, or nothing.
    std::optional<MetadataQuery::Node> parse();

  private:
    using Node = MetadataQuery::Node;
    using Operator = MetadataQuery::Operator;
    struct WrittenOperator;
    struct WrittenValue;

    std::optional<Node> any();
    std::optional<Node> all();
    std::optional<Node> unary();
    std::optional<Node> group(Node::Kind kind, std::string_view joint,
                              std::optional<Node> (MetadataQueryParser::*member)());
    std::optional<Node> comparison();
    std::optional<Node> range();
    std::optional<Node> comparisonOf(std::string_view name, const WrittenOperator& written,
                                     const WrittenValue& value);

    std::optional<WrittenOperator> operation();
    std::optional<WrittenValue> value();
    std::optional<WrittenValue> quotedValue();
    std::optional<WrittenValue> plainValue();
    bool modifiers(TextPattern::Modifiers& modifiers);
    std::string_view name();

    void skipBlanks();
    // Takes blanks and then `token` off the front, or nothing at all.
    bool take(std::string_view token);

    std::string_view m_rest;
    Date m_now;
    int m_depth = 0;
};

} // namespace quillane
