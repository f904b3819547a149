#include "MetadataQuery.h"
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <vector>

namespace quillane {
namespace {

constexpr Date kNow{800'000'000};

// An item whose values are a table, and which notes what it was asked for.
class TableItem final : public MetadataItem {
  public:
    std::map<MetadataAttribute, MetadataValue> values;
    std::vector<MetadataAttribute> asked;

    MetadataValue value(MetadataAttribute attribute) override {
        asked.push_back(attribute);
        const auto found = values.find(attribute);
        return found == values.end() ? MetadataValue() : found->second;
    }
};

constexpr std::string_view kTree[] = {"public.jpeg", "public.image", "public.data"};

TableItem photo() {
    TableItem item;
    item.values = {{MetadataAttribute::contentType, "public.jpeg"},
                   {MetadataAttribute::contentTypeTree, std::span<const std::string_view>(kTree)},
                   {MetadataAttribute::displayName, "Caf\u00E9 5.jpg"},
                   {MetadataAttribute::fileName, "Caf\u00E9 5.jpg"},
                   {MetadataAttribute::size, Bytes(1000)},
                   {MetadataAttribute::contentChangeDate, kNow.addingSeconds(-100)}};
    return item;
}

bool matches(std::string_view text, TableItem item = photo()) {
    const auto query = MetadataQuery::parse(text, kNow);
    EXPECT_TRUE(query) << text;
    return query && query->matches(item);
}

bool isQuery(std::string_view text) {
    return MetadataQuery::parse(text, kNow).has_value();
}

struct Row {
    const char* query;
    bool matches;
};

class QueryTable : public testing::TestWithParam<Row> {};

TEST_P(QueryTable, IsFulfilledOrNot) {
    EXPECT_EQ(matches(GetParam().query), GetParam().matches) << GetParam().query;
}

INSTANTIATE_TEST_SUITE_P(
    Numbers, QueryTable,
    testing::Values(Row{"kMDItemFSSize = 1000", true}, Row{"kMDItemFSSize == 1000", true},
                    Row{"kMDItemFSSize==1000", true}, Row{"kMDItemFSSize == 999", false},
                    Row{"kMDItemFSSize != 1000", false}, Row{"kMDItemFSSize != 999", true},
                    Row{"kMDItemFSSize > 1000", false}, Row{"kMDItemFSSize > 999", true},
                    Row{"kMDItemFSSize >= 1000", true}, Row{"kMDItemFSSize >= 1001", false},
                    Row{"kMDItemFSSize < 1000", false}, Row{"kMDItemFSSize < 1000.5", true},
                    Row{"kMDItemFSSize <= 1000", true}, Row{"kMDItemFSSize <= 999", false},
                    Row{"kMDItemFSSize > -1", true}, Row{"kMDItemFSSize == \"1000\"", true},
                    Row{"kMDItemFSSize == \"some\"", false}, Row{"kMDItemFSSize = *", true},
                    Row{"kMDItemFSSize == \"*\"", true}));

INSTANTIATE_TEST_SUITE_P(
    Texts, QueryTable,
    testing::Values(
        Row{"kMDItemDisplayName == \"Caf\u00E9 5.jpg\"", true},
        Row{"kMDItemDisplayName == 'Caf\u00E9 5.jpg'", true}, Row{"kMDItemDisplayName == \"cafe*\"", false},
        Row{"kMDItemDisplayName == \"cafe*\"cd", true}, Row{"kMDItemDisplayName == \"cafe*\"dc", true},
        Row{"kMDItemDisplayName ==[cd] \"cafe*\"", true}, Row{"kMDItemDisplayName ==[c]\"cafe*\"d", true},
        Row{"kMDItemDisplayName == \"Cafe\"dw", true}, Row{"kMDItemDisplayName == \"Caf\"w", false},
        Row{"kMDItemDisplayName != \"x\"", true}, Row{"kMDItemDisplayName > \"A\"", false},
        Row{"kMDItemDisplayName < \"Z\"", false}, Row{"kMDItemDisplayName == 5", false}));

INSTANTIATE_TEST_SUITE_P(Lists, QueryTable,
                         testing::Values(Row{"kMDItemContentTypeTree == 'public.image'", true},
                                         Row{"kMDItemContentTypeTree = 'public.jpeg'", true},
                                         Row{"kMDItemContentTypeTree == 'PUBLIC.Image'", true},
                                         Row{"kMDItemContentTypeTree == 'public.movie'", false},
                                         Row{"kMDItemContentTypeTree != 'public.movie'", true},
                                         Row{"kMDItemContentTypeTree != 'public.image'", false},
                                         Row{"kMDItemContentTypeTree == 'public.*'", true},
                                         Row{"kMDItemContentType == 'public.JPEG'", true},
                                         Row{"kMDItemContentType == 'public.image'", false}));

INSTANTIATE_TEST_SUITE_P(
    Dates, QueryTable,
    testing::Values(Row{"kMDItemFSContentChangeDate >= $time.now(-100)", true},
                    Row{"kMDItemFSContentChangeDate > $time.now(-100)", false},
                    Row{"kMDItemFSContentChangeDate < $time.now", true},
                    Row{"kMDItemFSContentChangeDate == $time.now(-100)", true},
                    Row{"kMDItemContentModificationDate == $time.now(-100)", true},
                    Row{"kMDItemFSContentChangeDate > 799999899", true},
                    Row{"kMDItemFSContentChangeDate > 799999900", false},
                    Row{"kMDItemFSContentChangeDate > $time.iso(2026-05-01T00:00:00Z)", true},
                    Row{"kMDItemFSContentChangeDate > $time.iso(2026-05-10T00:00:00Z)", false},
                    Row{"kMDItemFSContentChangeDate == \"2026\"", false}));

INSTANTIATE_TEST_SUITE_P(Ranges, QueryTable,
                         testing::Values(Row{"InRange(kMDItemFSSize,1000,2000)", true},
                                         Row{"InRange(kMDItemFSSize, 500, 1000)", true},
                                         Row{"InRange( kMDItemFSSize , 1001 , 2000 )", false},
                                         Row{"InRange(kMDItemFSSize,0,999)", false},
                                         Row{"InRange(kMDItemFSContentChangeDate,$time.now(-200),$time.now)",
                                             true},
                                         Row{"!InRange(kMDItemFSSize,0,999) && kMDItemFSSize > 1", true}));

INSTANTIATE_TEST_SUITE_P(
    AbsentAttributes, QueryTable,
    testing::Values(Row{"kMDItemIsScreenCapture == 1", false}, Row{"kMDItemIsScreenCapture != 1", true},
                    Row{"kMDItemIsScreenCapture == *", false}, Row{"kMDItemIsScreenCapture != *", true},
                    Row{"kMDItemLastUsedDate < $time.now", false}, Row{"kMDItemLastUsedDate > 0", false},
                    Row{"kMDItemLastUsedDate != *", true}, Row{"com_example_own == \"*\"", false}));

// t and f stand for a comparison that holds and one that does not.
class QueryLogic : public testing::TestWithParam<Row> {};

TEST_P(QueryLogic, JoinsComparisons) {
    std::string text;
    for (const char c : std::string_view(GetParam().query)) {
        text += c == 't' ? "kMDItemFSSize=1000" : c == 'f' ? "kMDItemFSSize=1" : std::string(1, c);
    }
    EXPECT_EQ(matches(text), GetParam().matches) << text;
}

INSTANTIATE_TEST_SUITE_P(Table, QueryLogic,
                         testing::Values(Row{"t && t", true}, Row{"t && f", false}, Row{"f && t", false},
                                         Row{"t || f", true}, Row{"f || t", true}, Row{"f || f", false},
                                         Row{"t || f && f", true}, Row{"f && f || t", true},
                                         Row{"(t || f) && f", false}, Row{"f && (f || t)", false},
                                         Row{"t&&t&&f", false}, Row{"f||f||t", true}, Row{"!t", false},
                                         Row{"!f", true}, Row{"!!t", true}, Row{"! (t && f)", true},
                                         Row{"!t || t", true}, Row{"!f && f", false},
                                         Row{" ( ( t ) ) ", true}, Row{"\t(t)\n||\r\n(f)", true}));

TEST(MetadataQuery, QuotesInAValueAreEscapedByABackslash) {
    TableItem item;
    item.values = {{MetadataAttribute::displayName, "say \"hi\" it's"}};
    EXPECT_TRUE(matches(R"(kMDItemDisplayName == "*say \"hi\"*"cd)", item));
    EXPECT_TRUE(matches(R"(kMDItemDisplayName == "*it's*")", item));
    EXPECT_TRUE(matches(R"(kMDItemDisplayName == '*it\'s*')", item));
}

TEST(MetadataQuery, TheFilesSearchWithEveryKindOfTextIsReadOrRefused) {
    const auto search = [](const std::string& text) {
        return "(kMDItemDisplayName == \"*" + text + "*\"cd || kMDItemTextContent == \"*" + text +
               "*\"cd) && kMDItemContentTypeTree == 'public.image'";
    };
    EXPECT_TRUE(matches(search("CAFE")));
    EXPECT_FALSE(matches(search("tea")));
    EXPECT_TRUE(matches(search("C?FE")));
    EXPECT_FALSE(matches(search("cafe\\")));     // the backslash takes the star for itself
    EXPECT_FALSE(isQuery(search("cafe\\\\\""))); // and here the quote: what follows is no query
    EXPECT_FALSE(matches(search("caf\\\" || kMDItemFSSize > 0 || \\\"")));
}

TEST(MetadataQuery, APlainWordIsLookedForInContentAndTheWholeOfNames) {
    TableItem item;
    item.values = {{MetadataAttribute::textContent, "the invoice of May"}};
    EXPECT_TRUE(matches("kMDItemTextContent == \"invoice\"", item));
    item.values = {{MetadataAttribute::displayName, "the invoice of May"}};
    EXPECT_FALSE(matches("kMDItemDisplayName == \"invoice\"", item));
}

TEST(MetadataQuery, DearValuesAreAskedForLastAndOnlyWhenNeeded) {
    const auto query =
        MetadataQuery::parse("(kMDItemTextContent == \"*x*\" || kMDItemDisplayName == \"nothing\") && "
                             "kMDItemFSSize > 1 && kMDItemContentType == 'public.movie'",
                             kNow);
    ASSERT_TRUE(query);
    auto item = photo();
    EXPECT_FALSE(query->matches(item));
    EXPECT_EQ(item.asked, std::vector{MetadataAttribute::contentType});
}

TEST(MetadataQuery, AnUnknownAttributeIsNeverAskedFor) {
    const auto query = MetadataQuery::parse("kMDItemIsScreenCapture == 1 || kMDItemNothing != 2", kNow);
    ASSERT_TRUE(query);
    TableItem item;
    EXPECT_TRUE(query->matches(item));
    EXPECT_TRUE(item.asked.empty());
}

class Unreadable : public testing::TestWithParam<const char*> {};

TEST_P(Unreadable, IsNoQuery) {
    EXPECT_FALSE(isQuery(GetParam())) << GetParam();
}

INSTANTIATE_TEST_SUITE_P(
    Table, Unreadable,
    testing::Values("", " ", "invoice", "two words", "kMDItemFSSize",
                    "kMDItemFSSize ==", "kMDItemFSSize == ==", "== 5", "kMDItemFSSize 5",
                    "kMDItemFSSize => 5", "kMDItemFSSize === 5", "kMDItemFSSize == five",
                    "kMDItemFSSize == 5 5", "kMDItemFSSize == 5 &&", "&& kMDItemFSSize == 5",
                    "kMDItemFSSize == 5 & kMDItemFSSize == 5", "kMDItemFSSize == 5 kMDItemFSSize == 5",
                    "(kMDItemFSSize == 5", "kMDItemFSSize == 5)", "()", "!", "(", ")", "\"", "'", "\\",
                    "kMDItemFSName == \"open", "kMDItemFSName == \"open\\\"", "kMDItemFSName == \"x'",
                    "kMDItemFSName == \"x\"q", "kMDItemFSName == \"x\"c1", "kMDItemFSName ==[z] \"x\"",
                    "kMDItemFSName ==[c \"x\"", "kMDItemFSName == \"x\" cd", "kMDItemFSSize == 1.2.3",
                    "kMDItemFSSize == -", "kMDItemFSSize == .", "kMDItemFSSize == 1e5",
                    "kMDItemFSContentChangeDate > $time.tomorrow", "kMDItemFSContentChangeDate > $time",
                    "kMDItemFSContentChangeDate > $", "InRange", "InRange(", "InRange(kMDItemFSSize)",
                    "InRange(kMDItemFSSize,1)", "InRange(kMDItemFSSize,1,2", "InRange(kMDItemFSSize,1,2,3)",
                    "InRange(,1,2)", "kMDItemFSSize == 5;", "kMDItem-FSSize == 5"));

TEST(MetadataQuery, NestingBeyondTheLimitIsRefusedAndUpToItRead) {
    const auto nested = [](int depth, const std::string& open, const std::string& close) {
        std::string text;
        for (int i = 0; i < depth; ++i) {
            text += open;
        }
        text += "kMDItemFSSize=1000";
        for (int i = 0; i < depth; ++i) {
            text += close;
        }
        return text;
    };
    EXPECT_TRUE(matches(nested(MetadataQuery::kDeepest, "(", ")")));
    EXPECT_FALSE(isQuery(nested(MetadataQuery::kDeepest + 1, "(", ")")));
    EXPECT_TRUE(matches(nested(MetadataQuery::kDeepest, "!", "")));
    EXPECT_FALSE(isQuery(nested(MetadataQuery::kDeepest + 1, "!", "")));
    EXPECT_FALSE(isQuery(nested(8000, "(", "")));
    EXPECT_FALSE(isQuery(nested(8000, "!", "")));
}

TEST(MetadataQuery, AQueryBeyondTheLongestIsRefused) {
    std::string text = "kMDItemFSName == \"";
    text += std::string(MetadataQuery::kLongest - text.size() - 1, 'x') + "\"";
    EXPECT_TRUE(isQuery(text));
    EXPECT_FALSE(isQuery(text + " "));
}

TEST(MetadataQuery, BytesThatAreNoTextAreReadInValuesAndRefusedElsewhere) {
    EXPECT_TRUE(isQuery("kMDItemFSName == \"\xFF\xFE\""));
    EXPECT_TRUE(isQuery(std::string("kMDItemFSName == \"a\0b\"", 22)));
    EXPECT_FALSE(isQuery("\xFF == 5"));
    EXPECT_FALSE(isQuery(std::string("kMDItemFSSize\0 == 5", 19)));
}

TEST(MetadataQuery, NoPieceOfAQueryCrashesTheReader) {
    const std::string text =
        "(kMDItemDisplayName ==[cd] \"*a\\\"b*\"cdw || !InRange(kMDItemFSSize,1,$time.now(-5))) && "
        "kMDItemContentType != 'x' || kMDItemFSSize = *";
    ASSERT_TRUE(isQuery(text));
    for (std::size_t begin = 0; begin < text.size(); ++begin) {
        for (std::size_t length = 0; begin + length <= text.size(); ++length) {
            auto item = photo();
            if (const auto query = MetadataQuery::parse(std::string_view(text).substr(begin, length), kNow)) {
                (void)query->matches(item);
            }
        }
    }
}

TEST(MetadataQuery, EveryAttributeOfTheTableHasItsName) {
    EXPECT_EQ(metadataAttributeNamed("kMDItemFSSize"), MetadataAttribute::size);
    EXPECT_EQ(metadataAttributeNamed("kMDItemLastUsedDate"), MetadataAttribute::lastUsedDate);
    EXPECT_EQ(metadataAttributeNamed("kmditemfssize"), MetadataAttribute::unknown);
    EXPECT_EQ(metadataAttributeNamed(""), MetadataAttribute::unknown);
}

// An item whose content is told later.
class UnreadItem final : public MetadataItem {
  public:
    MetadataValue value(MetadataAttribute attribute) override {
        return attribute == MetadataAttribute::size ? MetadataValue(Bytes{5}) : MetadataValue();
    }
    MetadataAnswer occursInContent(const TextPattern& /*pattern*/) override { return MetadataAnswer::later; }
};

TEST(MetadataQuery, WhatDependsOnUnreadContentIsAnsweredLaterAndAllElseAtOnce) {
    const auto later = MetadataAnswer::later;
    const std::string content = "kMDItemTextContent == 'x'";
    const std::string yes = "kMDItemFSSize == 5";
    const std::string no = "kMDItemFSSize == 6";
    const std::vector<std::pair<std::string, MetadataAnswer>> rows = {
        {content, later},
        {"!(" + content + ")", later},
        {"kMDItemTextContent != 'x'", later},
        {"kMDItemTextContent > 'x'", MetadataAnswer::no},
        {yes + " || " + content, MetadataAnswer::yes},
        {no + " || " + content, later},
        {yes + " && " + content, later},
        {no + " && " + content, MetadataAnswer::no},
        {"!(" + no + " && " + content + ")", MetadataAnswer::yes},
        {content + " && " + content + " && " + no, MetadataAnswer::no},
    };
    for (const auto& [text, expected] : rows) {
        UnreadItem item;
        const auto query = MetadataQuery::parse(text, kNow);
        ASSERT_TRUE(query) << text;
        EXPECT_EQ(query->answer(item), expected) << text;
    }
}

} // namespace
} // namespace quillane
