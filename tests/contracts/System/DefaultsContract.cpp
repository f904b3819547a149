// What settings keep, over those of this system and over the fake.
#include "DefaultsChanges.h"
#include "DefaultsKinds.h"
#include "TemporaryFolder.h"
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <memory>
#include <string>
#include <vector>

namespace quillane {
namespace {

template <class Kind>
struct DefaultsContract : testing::Test {
    TemporaryFolder folder;
    std::unique_ptr<Defaults> defaults = Kind::make(folder);
};

TYPED_TEST_SUITE(DefaultsContract, DefaultsKinds);

TYPED_TEST(DefaultsContract, WhatWasNeverStoredReadsAsNothing) {
    auto& defaults = *this->defaults;
    EXPECT_EQ(defaults.value("x"), std::nullopt);
    EXPECT_FALSE(defaults.boolean("x"));
    EXPECT_EQ(defaults.integer("x"), 0);
    EXPECT_EQ(defaults.stringArray("x"), std::nullopt);
    EXPECT_EQ(defaults.data("x"), std::nullopt);
    EXPECT_EQ(defaults.date("x"), std::nullopt);
}

TYPED_TEST(DefaultsContract, EachKindOfValueReadsBackAsItIs) {
    for (const Defaults::Value& value : std::vector<Defaults::Value>{
             true, false, std::int64_t{0}, std::numeric_limits<std::int64_t>::min(),
             std::numeric_limits<std::int64_t>::max(), 0.5, -1e300, std::string("a <b> & \"c\" é\n\t "),
             std::string(), Date{738000000}, Defaults::Data{}, Defaults::Data{0, 1, 254, 255},
             std::vector<std::string>{}, std::vector<std::string>{"/a b", "/é", ""}}) {
        this->defaults->set("key", value);
        EXPECT_EQ(this->defaults->value("key"), value);
    }
}

TYPED_TEST(DefaultsContract, PathsOfAnyBytesReadBackByteForByte) {
    std::string bytes;
    for (int byte = 1; byte < 256; ++byte) {
        bytes += static_cast<char>(byte);
    }
    const std::vector<std::string> paths{"/" + bytes, "/new\nline", "/\xff\xfe"};
    this->defaults->set("protectedPaths", paths);
    EXPECT_EQ(this->defaults->stringArray("protectedPaths"), paths);
}

TYPED_TEST(DefaultsContract, AStoredValueBeatsARegisteredOneAndRemovingItBringsThatBack) {
    this->defaults->registerDefaults({{"flag", true}, {"hours", std::int64_t{24}}});
    EXPECT_TRUE(this->defaults->boolean("flag"));
    EXPECT_EQ(this->defaults->integer("hours"), 24);
    this->defaults->set("flag", false);
    EXPECT_FALSE(this->defaults->boolean("flag"));
    this->defaults->clear("flag");
    EXPECT_TRUE(this->defaults->boolean("flag"));
}

TYPED_TEST(DefaultsContract, LaterRegistrationsWinKeyByKey) {
    this->defaults->registerDefaults({{"a", std::int64_t{1}}, {"b", std::int64_t{2}}});
    this->defaults->registerDefaults({{"b", std::int64_t{3}}});
    EXPECT_EQ(this->defaults->integer("a"), 1);
    EXPECT_EQ(this->defaults->integer("b"), 3);
}

TYPED_TEST(DefaultsContract, SubscribersHearOfEachChangeUntilTheyLeave) {
    std::vector<std::string> heard;
    const auto id = this->defaults->subscribe([&](const std::string& key) { heard.push_back(key); });
    this->defaults->set("a", true);
    this->defaults->clear("a");
    this->defaults->unsubscribe(id);
    this->defaults->set("b", true);
    EXPECT_EQ(heard, (std::vector<std::string>{"a", "a"}));
}

TYPED_TEST(DefaultsContract, AValueThatMisleadsOnceItIsOldIsStoredAndToldAsAnyOther) {
    std::vector<std::string> heard;
    this->defaults->subscribe([&](const std::string& key) { heard.push_back(key); });
    this->defaults->setOrForget("a", Defaults::Data{1});
    this->defaults->setOrForget("a", Defaults::Data{2});
    EXPECT_EQ(this->defaults->data("a"), Defaults::Data{2});
    EXPECT_EQ(heard, (std::vector<std::string>{"a", "a"}));
}

TYPED_TEST(DefaultsContract, AChangeIsMadeOfWhatIsStoredAndTold) {
    std::vector<std::string> heard;
    this->defaults->subscribe([&](const std::string& key) { heard.push_back(key); });
    this->defaults->update("a", adding("1"));
    this->defaults->update("a", adding("2"));
    this->defaults->updateOrForget("a", adding("3"));
    EXPECT_EQ(this->defaults->stringArray("a"), (std::vector<std::string>{"1", "2", "3"}));
    EXPECT_EQ(heard, (std::vector<std::string>{"a", "a", "a"}));
}

TYPED_TEST(DefaultsContract, AChangeSeesNoRegisteredValueAndMayTakeTheStoredOneAway) {
    this->defaults->registerDefaults({{"a", std::vector<std::string>{"registered"}}});
    this->defaults->update("a", adding("1"));
    EXPECT_EQ(this->defaults->stringArray("a"), std::vector<std::string>{"1"});
    this->defaults->update("a", nothing);
    EXPECT_EQ(this->defaults->stringArray("a"), std::vector<std::string>{"registered"});
}

TYPED_TEST(DefaultsContract, AChangeThatLeavesTheValueAsItIsIsNotTold) {
    this->defaults->set("a", true);
    int heard = 0;
    this->defaults->subscribe([&](const std::string&) { ++heard; });
    this->defaults->update("a", [](const auto& stored) { return stored; });
    this->defaults->update("b", nothing);
    this->defaults->updateOrForget("b", nothing);
    EXPECT_EQ(heard, 0);
    EXPECT_TRUE(this->defaults->boolean("a"));
}

struct Coercion {
    Defaults::Value value;
    std::int64_t integer;
    bool boolean;
};

TYPED_TEST(DefaultsContract, ValuesOfOtherKindsAreReadWithThePlatformsCoercions) {
    for (const auto& [value, integer, boolean] :
         std::vector<Coercion>{{std::int64_t{2}, 2, true},
                               {-1.9, -1, true},
                               {0.5, 0, true},
                               {true, 1, true},
                               {false, 0, false},
                               {std::string("5"), 5, true},
                               {std::string(" -7 "), -7, true},
                               {std::string("5abc"), 5, true},
                               {std::string("1.9"), 1, true},
                               {std::string("YES"), 0, true},
                               {std::string("yes"), 0, true},
                               {std::string("Y"), 0, true},
                               {std::string("true"), 0, true},
                               {std::string("T"), 0, true},
                               {std::string("1"), 1, true},
                               {std::string("NO"), 0, false},
                               {std::string("false"), 0, false},
                               {std::string("0"), 0, false},
                               {std::string("abc"), 0, false},
                               {std::string(), 0, false},
                               {Date{1}, 0, false},
                               {Defaults::Data{1}, 0, false},
                               {std::vector<std::string>{"1"}, 0, false}}) {
        this->defaults->set("key", value);
        EXPECT_EQ(this->defaults->integer("key"), integer);
        EXPECT_EQ(this->defaults->boolean("key"), boolean);
    }
}

TYPED_TEST(DefaultsContract, AValueOfAnotherKindIsNoArrayNoDataAndNoDate) {
    this->defaults->set("key", std::string("x"));
    EXPECT_EQ(this->defaults->stringArray("key"), std::nullopt);
    EXPECT_EQ(this->defaults->data("key"), std::nullopt);
    EXPECT_EQ(this->defaults->date("key"), std::nullopt);
}

} // namespace
} // namespace quillane
