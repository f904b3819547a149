// What tests write as property lists must read as what they meant.
#include "PropertyList.h"
#include "PropertyListWriter.h"
#include <gtest/gtest.h>

namespace quillane {
namespace {

Plist everyKind() {
    return Plist::dictionary({{"text", "a < b & c > d"},
                              {"unicode", "Café 𝄞"},
                              {"long", std::string(70'000, 'x')},
                              {"integer", -5},
                              {"real", 60.5},
                              {"yes", true},
                              {"no", false},
                              {"date", Date{700'000'000}},
                              {"data", Plist::Data{std::string("\x00\x01\xff\x7f", 4)}},
                              {"array", Plist::array({"one", 2, Plist::array({})})}});
}

void expectEveryKind(const std::string& bytes) {
    const auto parsed = PropertyList::parse(bytes);
    ASSERT_TRUE(parsed.ok());
    const auto* list = PropertyList::asDictionary(&*parsed);
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->entries().size(), 10U);
    EXPECT_EQ(PropertyList::asString(list->find("text")), "a < b & c > d");
    EXPECT_EQ(PropertyList::asString(list->find("unicode")), "Café 𝄞");
    EXPECT_EQ(PropertyList::asString(list->find("long")), std::string(70'000, 'x'));
    EXPECT_EQ(PropertyList::asInt(list->find("integer")), -5);
    EXPECT_EQ(PropertyList::asDouble(list->find("real")), 60.5);
    EXPECT_EQ(PropertyList::asBool(list->find("yes")), true);
    EXPECT_EQ(PropertyList::asBool(list->find("no")), false);
    EXPECT_EQ(PropertyList::asDate(list->find("date")), Date{700'000'000});
    const auto* data = PropertyList::asData(list->find("data"));
    ASSERT_NE(data, nullptr);
    EXPECT_EQ(data->bytes, std::string("\x00\x01\xff\x7f", 4));
    const auto* array = PropertyList::asArray(list->find("array"));
    ASSERT_NE(array, nullptr);
    ASSERT_EQ(array->size(), 3U);
    EXPECT_EQ(PropertyList::asString(array->data()), "one");
    EXPECT_EQ(PropertyList::asInt(&(*array)[1]), 2);
    EXPECT_NE(PropertyList::asArray(&(*array)[2]), nullptr);
}

TEST(PropertyListWriter, EveryKindReadsBackFromXml) {
    const auto bytes = xmlPropertyList(everyKind());
    EXPECT_TRUE(bytes.starts_with("<?xml"));
    expectEveryKind(bytes);
}

TEST(PropertyListWriter, EveryKindReadsBackFromTheBinaryForm) {
    const auto bytes = binaryPropertyList(everyKind());
    EXPECT_TRUE(bytes.starts_with("bplist00"));
    expectEveryKind(bytes);
}

TEST(PropertyListWriter, ARootOfAnyKindIsWritten) {
    for (const auto& bytes : {xmlPropertyList("root"), binaryPropertyList("root")}) {
        const auto parsed = PropertyList::parse(bytes);
        ASSERT_TRUE(parsed.ok());
        EXPECT_EQ(PropertyList::asString(&*parsed), "root");
    }
}

} // namespace
} // namespace quillane
