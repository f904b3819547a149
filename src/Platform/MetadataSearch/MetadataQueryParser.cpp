#include "MetadataQueryParser.h"
#include "QueryTime.h"
#include <algorithm>

namespace quillane {
namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isNameCharacter(char c) {
    return isDigit(c) || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

// All of `text` as a decimal number, without an exponent and in no locale.
std::optional<double> decimal(std::string_view text) {
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+')) {
        text.remove_prefix(1);
    }
    double value = 0;
    double place = 0; // of the next digit behind the point; 0 before it
    bool anyDigit = false;
    for (const char c : text) {
        if (c == '.' && place == 0) {
            place = 0.1;
        } else if (!isDigit(c)) {
            return std::nullopt;
        } else if (place == 0) {
            value = value * 10 + (c - '0');
            anyDigit = true;
        } else {
            value += (c - '0') * place;
            place /= 10;
            anyDigit = true;
        }
    }
    if (!anyDigit) {
        return std::nullopt;
    }
    return negative ? -value : value;
}

// How much an answer costs: a name, a call of the system, the sum of a folder, the
// beginning of a file, its content.
int costOf(MetadataAttribute attribute) {
    switch (attribute) {
    case MetadataAttribute::unknown:
        return 0;
    case MetadataAttribute::contentType:
    case MetadataAttribute::contentTypeTree:
    case MetadataAttribute::displayName:
    case MetadataAttribute::fileName:
        return 1;
    case MetadataAttribute::contentChangeDate:
    case MetadataAttribute::lastUsedDate:
        return 2;
    case MetadataAttribute::size:
        return 3;
    case MetadataAttribute::screenCapture:
        return 4;
    case MetadataAttribute::textContent:
        return 5;
    }
    return 0;
}

// Uniform types are names without case, whoever wrote them down.
bool isIdentifier(MetadataAttribute attribute) {
    return attribute == MetadataAttribute::contentType || attribute == MetadataAttribute::contentTypeTree;
}

} // namespace

struct MetadataQueryParser::WrittenOperator {
    std::string_view token;
    TextPattern::Modifiers modifiers;
};

struct MetadataQueryParser::WrittenValue {
    std::string text; // with its wildcards and escapes
    bool isQuoted = false;
    TextPattern::Modifiers modifiers;
};

std::optional<MetadataQuery::Node> MetadataQueryParser::parse() {
    auto root = any();
    skipBlanks();
    return m_rest.empty() ? std::move(root) : std::nullopt;
}

std::optional<MetadataQuery::Node> MetadataQueryParser::any() {
    return group(Node::Kind::any, "||", &MetadataQueryParser::all);
}

std::optional<MetadataQuery::Node> MetadataQueryParser::all() {
    return group(Node::Kind::all, "&&", &MetadataQueryParser::unary);
}

std::optional<MetadataQuery::Node>
MetadataQueryParser::group(Node::Kind kind, std::string_view joint,
                           std::optional<Node> (MetadataQueryParser::*member)()) {
    Node node;
    node.kind = kind;
    do {
        auto child = (this->*member)();
        if (!child) {
            return std::nullopt;
        }
        node.cost = std::max(node.cost, child->cost);
        node.children.push_back(std::move(*child));
    } while (take(joint));
    if (node.children.size() == 1) {
        Node only = std::move(node.children.front());
        return only;
    }
    // Members don't depend on one another, so the dear ones may wait until the cheap ones have decided.
    std::ranges::sort(node.children, {}, &Node::cost);
    return node;
}

std::optional<MetadataQuery::Node> MetadataQueryParser::unary() {
    const bool negates = take("!");
    const bool opens = !negates && take("(");
    if (!negates && !opens) {
        return take("InRange(") ? range() : comparison();
    }
    if (m_depth >= MetadataQuery::kDeepest) {
        return std::nullopt;
    }
    ++m_depth;
    auto inner = negates ? unary() : any();
    --m_depth;
    if (!inner || (opens && !take(")"))) {
        return std::nullopt;
    }
    if (opens) {
        return inner;
    }
    Node node;
    node.kind = Node::Kind::negation;
    node.cost = inner->cost;
    node.children.push_back(std::move(*inner));
    return node;
}

std::optional<MetadataQuery::Node> MetadataQueryParser::comparison() {
    const auto attribute = name();
    const auto written = attribute.empty() ? std::nullopt : operation();
    const auto wanted = written ? value() : std::nullopt;
    if (!wanted) {
        return std::nullopt;
    }
    return comparisonOf(attribute, *written, *wanted);
}

// InRange(attribute, from, to), both ends within.
std::optional<MetadataQuery::Node> MetadataQueryParser::range() {
    const auto attribute = name();
    const auto from = !attribute.empty() && take(",") ? value() : std::nullopt;
    const auto to = from && take(",") ? value() : std::nullopt;
    if (!to || !take(")")) {
        return std::nullopt;
    }
    auto low = comparisonOf(attribute, {">=", {}}, *from);
    auto high = comparisonOf(attribute, {"<=", {}}, *to);
    if (!low || !high) {
        return std::nullopt;
    }
    Node node;
    node.kind = Node::Kind::all;
    node.cost = low->cost;
    node.children.push_back(std::move(*low));
    node.children.push_back(std::move(*high));
    return node;
}

std::optional<MetadataQuery::Node> MetadataQueryParser::comparisonOf(std::string_view name,
                                                                     const WrittenOperator& written,
                                                                     const WrittenValue& value) {
    const auto attribute = metadataAttributeNamed(name);
    auto modifiers = value.modifiers;
    modifiers.folding.caseInsensitive |= written.modifiers.folding.caseInsensitive || isIdentifier(attribute);
    modifiers.folding.diacriticInsensitive |= written.modifiers.folding.diacriticInsensitive;
    modifiers.wordwise |= written.modifiers.wordwise;

    std::optional<Date> date;
    if (!value.isQuoted && value.text.starts_with('$')) {
        date = queryTime(value.text, m_now);
        if (!date) {
            return std::nullopt;
        }
    }
    const auto operation = written.token == "<"    ? Operator::less
                           : written.token == "<=" ? Operator::lessOrEqual
                           : written.token == ">"  ? Operator::greater
                           : written.token == ">=" ? Operator::greaterOrEqual
                                                   : Operator::equal;
    Node node;
    node.kind = Node::Kind::comparison;
    node.cost = costOf(attribute);
    node.comparison = MetadataQuery::Comparison{
        attribute, operation, {TextPattern(value.text, modifiers), decimal(value.text), date}};
    if (written.token != "!=") {
        return node;
    }
    Node negation;
    negation.kind = Node::Kind::negation;
    negation.cost = node.cost;
    negation.children.push_back(std::move(node));
    return negation;
}

std::optional<MetadataQueryParser::WrittenOperator> MetadataQueryParser::operation() {
    for (const std::string_view token : {"==", "!=", "<=", ">=", "=", "<", ">"}) { // longer ones first
        if (!take(token)) {
            continue;
        }
        WrittenOperator written{token, {}};
        if (take("[") && !(modifiers(written.modifiers) && take("]"))) {
            return std::nullopt;
        }
        return written;
    }
    return std::nullopt;
}

std::optional<MetadataQueryParser::WrittenValue> MetadataQueryParser::value() {
    skipBlanks();
    return m_rest.starts_with('"') || m_rest.starts_with('\'') ? quotedValue() : plainValue();
}

std::optional<MetadataQueryParser::WrittenValue> MetadataQueryParser::quotedValue() {
    const char quote = m_rest.front();
    std::size_t end = 1;
    while (end < m_rest.size() && m_rest[end] != quote) {
        end += m_rest[end] == '\\' ? 2 : 1;
    }
    if (end >= m_rest.size()) {
        return std::nullopt;
    }
    WrittenValue written{std::string(m_rest.substr(1, end - 1)), true, {}};
    m_rest.remove_prefix(end + 1);
    if (!modifiers(written.modifiers)) {
        return std::nullopt;
    }
    return written;
}

std::optional<MetadataQueryParser::WrittenValue> MetadataQueryParser::plainValue() {
    if (take("*")) {
        return WrittenValue{"*", false, {}};
    }
    std::size_t end = 0;
    bool isInBrackets = false;
    for (; end < m_rest.size(); ++end) {
        const char c = m_rest[end];
        if (!isNameCharacter(c) && c != '$' && c != '.' && c != '-' && c != '+' && c != '(' &&
            !(isInBrackets && (c == ')' || c == ':'))) {
            break;
        }
        isInBrackets = c == '(' || (isInBrackets && c != ')');
    }
    const auto text = m_rest.substr(0, end);
    if (!text.starts_with('$') && !decimal(text)) {
        return std::nullopt;
    }
    m_rest.remove_prefix(end);
    return WrittenValue{std::string(text), false, {}};
}

// The letters at the front; false when one of them is no modifier.
bool MetadataQueryParser::modifiers(TextPattern::Modifiers& modifiers) {
    for (; !m_rest.empty() && isNameCharacter(m_rest.front()); m_rest.remove_prefix(1)) {
        switch (m_rest.front()) {
        case 'c':
            modifiers.folding.caseInsensitive = true;
            break;
        case 'd':
            modifiers.folding.diacriticInsensitive = true;
            break;
        case 'w':
            modifiers.wordwise = true;
            break;
        default:
            return false;
        }
    }
    return true;
}

std::string_view MetadataQueryParser::name() {
    skipBlanks();
    const auto* const end = std::ranges::find_if_not(m_rest, isNameCharacter);
    const auto name = m_rest.substr(0, static_cast<std::size_t>(end - m_rest.begin()));
    m_rest.remove_prefix(name.size());
    return name;
}

void MetadataQueryParser::skipBlanks() {
    while (!m_rest.empty() && isBlank(m_rest.front())) {
        m_rest.remove_prefix(1);
    }
}

bool MetadataQueryParser::take(std::string_view token) {
    const auto before = m_rest;
    skipBlanks();
    if (!m_rest.starts_with(token)) {
        m_rest = before;
        return false;
    }
    m_rest.remove_prefix(token.size());
    return true;
}

} // namespace quillane
