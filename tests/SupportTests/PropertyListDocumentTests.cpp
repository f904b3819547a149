#include "PropertyListDocument.h"
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <optional>

namespace quillane {
namespace {

PropertyList::Dictionary with(Date date) {
    return PropertyList::Dictionary({{"a", PropertyList::Value("before")},
                                     {"date", PropertyList::Value(date)},
                                     {"z", PropertyList::Value(std::int64_t{7})}});
}

PropertyList::Value readBack(const PropertyList::Dictionary& root) {
    return PropertyList::parse(PropertyListDocument::text(root)).value();
}

// The date that is read back; nothing when it was left out.
std::optional<Date> readBack(Date date) {
    const auto list = readBack(with(date));
    return PropertyList::asDate(PropertyList::asDictionary(&list)->find("date"));
}

TEST(PropertyListDocument, DatesOfAllYearsAreReadBackToTheSecond) {
    struct Row {
        const char* text;
        double seconds;
    };
    for (const auto& row :
         {Row{"2001-01-01T00:00:00Z", 0}, Row{"2000-12-31T23:59:59Z", -1},
          Row{"0001-01-01T00:00:00Z", -63113904000}, Row{"2024-02-29T12:34:56Z", 730902896},
          Row{"32767-12-31T23:59:59Z", 970912655999}, Row{"32768-01-01T00:00:00Z", 970912656000},
          Row{"999999-02-28T01:02:03Z", 31493779952523}, Row{"-044-03-15T00:00:00Z", -64527667200}}) {
        const auto text = PropertyListDocument::text(with(Date{row.seconds}));
        EXPECT_NE(text.find(std::string("<date>") + row.text + "</date>"), std::string::npos) << text;
        EXPECT_EQ(readBack(Date{row.seconds}), Date{row.seconds}) << row.text;
        EXPECT_EQ(readBack(Date{row.seconds + 0.75}), Date{row.seconds}) << row.text;
    }
}

TEST(PropertyListDocument, ADateThatNoTextCanTellIsLeftOutAndNothingElse) {
    const double infinity = std::numeric_limits<double>::infinity();
    for (const double seconds : {1e300, -1e300, 4e16, -4e16, infinity, -infinity, std::nan("")}) {
        const auto list = readBack(with(Date{seconds}));
        const auto* root = PropertyList::asDictionary(&list);
        EXPECT_EQ(root->find("date"), nullptr) << seconds;
        EXPECT_EQ(PropertyList::asString(root->find("a")), "before") << seconds;
        EXPECT_EQ(PropertyList::asInt(root->find("z")), 7) << seconds;
    }
}

} // namespace
} // namespace quillane
