#pragma once
#include "Bytes.h"
#include "Date.h"
#include "TextPattern.h"
#include <optional>
#include <span>
#include <string_view>
#include <variant>
#include <vector>

namespace quillane {

// What an item can be asked for. `unknown` stands for every attribute that this search does not have: such an
// attribute is absent from every item.
enum class MetadataAttribute {
    unknown,
    contentType,       // kMDItemContentType
    contentTypeTree,   // kMDItemContentTypeTree
    displayName,       // kMDItemDisplayName
    fileName,          // kMDItemFSName
    size,              // kMDItemFSSize
    contentChangeDate, // kMDItemFSContentChangeDate, kMDItemContentModificationDate
    lastUsedDate,      // kMDItemLastUsedDate
    screenCapture,     // kMDItemIsScreenCapture
    textContent        // kMDItemTextContent
};

MetadataAttribute metadataAttributeNamed(std::string_view name);

// The value of an attribute: absent, a text, several texts, a number of bytes, a point in time. The texts live
// as long as the item that they were asked of.
using MetadataValue =
    std::variant<std::monostate, std::string_view, std::span<const std::string_view>, Bytes, Date>;

// Whether a query is fulfilled: `later` where that depends on what an item does not tell yet.
enum class MetadataAnswer { no, yes, later };

// One thing that a query is asked about. Values are asked for only when the query depends on them.
class MetadataItem {
  public:
    virtual ~MetadataItem() = default;
    // Never called for `unknown`.
    virtual MetadataValue value(MetadataAttribute attribute) = 0;
    // Whether the pattern occurs in what is written in it, which as a text may be long. Unless told otherwise the
    // value of `textContent` is looked at.
    virtual MetadataAnswer occursInContent(const TextPattern& pattern);
};

// A search as the platform writes it, such as
//     kMDItemFSSize >= 1000 && (kMDItemDisplayName == "*report*"cd || kMDItemContentTypeTree = 'public.image')
// Comparisons (= == != < > <= >=), InRange(attribute, from, to), && before ||, !, round brackets; values are
// quoted texts, plain numbers, "$time..." (queryTime()) or a bare "*"; the letters c, d and w stand behind the
// closing quote or in square brackets behind the operator.
// An attribute that is absent fulfils no comparison but !=, which is always the contrary of ==. A list
// fulfils == when one of its members does. Order is for numbers and dates alone. A text that is compared with
// a number counts by its digits; a number that is compared with a date counts seconds of the reference date.
class MetadataQuery {
  public:
    static constexpr std::size_t kLongest = std::size_t{16} << 10U; // bytes of a query
    static constexpr int kDeepest = 64; // brackets and negations within one another

    // Nothing for a text that is not a query, or that is beyond the limits. Times are read at `now`.
    static std::optional<MetadataQuery> parse(std::string_view text, Date now);

    // Asks for as few values as it can, the cheap ones first.
    MetadataAnswer answer(MetadataItem& item) const { return fulfils(m_root, item); }
    // The same for an item that tells everything at once.
    bool matches(MetadataItem& item) const { return answer(item) == MetadataAnswer::yes; }

  private:
    friend class MetadataQueryParser;

    enum class Operator { equal, less, lessOrEqual, greater, greaterOrEqual };

    struct Value {
        TextPattern text;
        std::optional<double> number;
        std::optional<Date> date;
    };

    struct Comparison {
        MetadataAttribute attribute = MetadataAttribute::unknown;
        Operator operation = Operator::equal;
        Value value;
    };

    struct Node {
        enum class Kind { comparison, all, any, negation };
        Kind kind = Kind::all;
        std::optional<Comparison> comparison; // of a comparison
        std::vector<Node> children;           // of the others; one of a negation
        int cost = 0;
    };

    explicit MetadataQuery(Node root)
        : m_root(std::move(root)) {}

    static MetadataAnswer fulfils(const Node& node, MetadataItem& item);
    static MetadataAnswer fulfilsSome(const Node& node, MetadataItem& item, MetadataAnswer decisive);
    static MetadataAnswer fulfils(const Comparison& comparison, MetadataItem& item);
    static bool isFulfilledBy(const MetadataValue& value, const Comparison& comparison);
    static bool isEqual(const Comparison& comparison, const MetadataValue& value);

    Node m_root;
};

} // namespace quillane
