// What only the system's settings have. Another instance is a process of its own.
#include "DefaultsChanges.h"
#include "StandIns.h"
#include "TemporaryFolder.h"
#include "UserDefaults.h"
#include <algorithm>
#include <array>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <set>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

extern char** environ; // NOLINT(readability-redundant-declaration): not every system declares it

namespace quillane {
namespace {

struct UserDefaultsTest : testing::Test {
    UserDefaultsTest() { StandIns::forgetDefaults(); }
    ~UserDefaultsTest() override { StandIns::forgetDefaults(); }

    static pid_t begin(std::vector<std::string> words) {
        words.insert(words.begin(), QUILLANE_SECOND_INSTANCE);
        std::vector<char*> arguments;
        for (auto& word : words) {
            arguments.push_back(word.data());
        }
        arguments.push_back(nullptr);
        pid_t process = -1;
        EXPECT_EQ(
            ::posix_spawn(&process, QUILLANE_SECOND_INSTANCE, nullptr, nullptr, arguments.data(), environ),
            0);
        return process;
    }
    static void waitFor(pid_t process) {
        int status = 1;
        EXPECT_EQ(::waitpid(process, &status, 0), process);
        EXPECT_EQ(status, 0);
    }
    static void another(const std::vector<std::string>& words) { waitFor(begin(words)); }
    std::vector<std::string> texts() const {
        return defaults.stringArray("a").value_or(std::vector<std::string>());
    }

    UserDefaults defaults{QUILLANE_DEFAULTS_LOCK};
};

TEST_F(UserDefaultsTest, ABooleanAndTheNumberThatTheSystemTakesForItAreStoredAsWhatTheyAre) {
    const std::vector<Defaults::Value> values{false, std::int64_t{0}, 0.0, true, std::int64_t{1}, 1.0, false};
    for (const auto& value : values) {
        defaults.set("a", value);
        EXPECT_EQ(defaults.value("a"), value);
        defaults.updateOrForget("b", [&](const auto&) { return std::optional(value); });
        EXPECT_EQ(defaults.value("b"), value);
    }
}

// Another instance must not see it missing, and it must not be lost where this one is killed.
TEST_F(UserDefaultsTest, AnOlderValueIsTakenAwayOnlyWhereTheSystemWouldKeepItInsteadOfTheNewOne) {
    std::vector<std::string> removed;
    StandIns::watchRemoving([&](const std::string& key) { removed.push_back(key); });
    const std::vector<Defaults::Value> values{"text",
                                              std::int64_t{7},
                                              7.5,
                                              Defaults::Data{1},
                                              Defaults::Data{2},
                                              std::vector<std::string>{"1"},
                                              true,
                                              false};
    for (const auto& value : values) {
        defaults.set("a", value);
        defaults.update("b", [&](const auto&) { return std::optional(value); });
    }
    EXPECT_TRUE(removed.empty());
    defaults.set("a", std::int64_t{0}); // over false
    EXPECT_EQ(removed, std::vector<std::string>{"a"});
    EXPECT_EQ(defaults.value("a"), Defaults::Value(std::int64_t{0}));
    StandIns::watchRemoving({});
}

TEST_F(UserDefaultsTest, TheLockLiesInTheProgramsFolderWhichIsMadeWhenMissing) {
    const TemporaryFolder folder;
    const auto path = UserDefaults::lockPath(FileURL(folder.at("home")));
    EXPECT_EQ(path, folder.at("home/Library/Application Support/org.quillane.Quillane/defaults.lock"));
    UserDefaults(path).set("a", true);
    EXPECT_EQ(::access(path.c_str(), F_OK), 0);
}

TEST_F(UserDefaultsTest, WholeNumbersThatAreTooLargeReadAsAboutWhatTheyAre) {
    StandIns::storeUnsigned("a", std::numeric_limits<std::uint64_t>::max());
    EXPECT_EQ(defaults.value("a"), Defaults::Value(18446744073709551615.0));
    StandIns::storeUnsigned("a", std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(defaults.value("a"), Defaults::Value(std::numeric_limits<std::int64_t>::max()));
    defaults.set("a", std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(defaults.value("a"), Defaults::Value(std::numeric_limits<std::int64_t>::min()));
}

TEST_F(UserDefaultsTest, ATextThatNoBytesStandForReadsAsNothingAndSpoilsItsArray) {
    StandIns::answerHalfCharacter("a", "b");
    ASSERT_TRUE(StandIns::isStored("a"));
    ASSERT_TRUE(StandIns::isStored("b"));
    EXPECT_EQ(defaults.value("a"), std::nullopt);
    EXPECT_EQ(defaults.value("b"), std::nullopt);
}

// The first handing over reads what others have stored.
TEST_F(UserDefaultsTest, WhatMisleadsOnceItIsOldIsGoneBeforeTheNewValueIsStored) {
    using Stored = std::vector<std::optional<Defaults::Value>>;
    const Defaults::Value before = Defaults::Data{1};
    const Defaults::Value after = Defaults::Data{2};
    defaults.set("a", before);
    defaults.set("b", before);
    Stored stored;
    StandIns::watchStoring([&] { stored.push_back(defaults.value("a")); });
    defaults.setOrForget("a", after);
    EXPECT_EQ(stored, (Stored{before, std::nullopt, after}));
    stored.clear();
    StandIns::watchStoring([&] { stored.push_back(defaults.value("b")); });
    defaults.set("b", after); // another instance must not see it missing
    EXPECT_EQ(stored, (Stored{before, after}));
    StandIns::watchStoring({});
}

TEST_F(UserDefaultsTest, ValuesOfKindsThatSettingsDoNotHaveReadAsNothingAndStayUntilTheyAreReplaced) {
    StandIns::storeDictionary("a");
    defaults.registerDefaults({{"a", true}});
    EXPECT_EQ(defaults.value("a"), std::nullopt);
    defaults.update("a", nothing);
    EXPECT_TRUE(StandIns::isStored("a"));
    defaults.clear("a");
    EXPECT_FALSE(StandIns::isStored("a"));
    EXPECT_TRUE(defaults.boolean("a"));
}

TEST_F(UserDefaultsTest, RegisteredValuesAreThisObjectsAlone) {
    defaults.registerDefaults({{"a", true}});
    EXPECT_FALSE(StandIns::isStored("a"));
    EXPECT_FALSE(UserDefaults(QUILLANE_DEFAULTS_LOCK).boolean("a"));
}

TEST_F(UserDefaultsTest, AChangeIsMadeOfWhatAnotherInstanceHasStored) {
    defaults.update("a", adding("1"));
    another({"add", "a", "other"});
    defaults.update("a", adding("2"));
    another({"add", "a", "last"});
    defaults.set("b", true);
    EXPECT_EQ(texts(), (std::vector<std::string>{"1", "other0", "2", "last0"}));
}

TEST_F(UserDefaultsTest, OfChangesThatInstancesMakeAtOnceNoneIsLost) {
    std::vector<pid_t> processes;
    for (const char* name : {"x", "y", "z"}) {
        processes.push_back(begin({"add", "a", name, "10"}));
    }
    for (int i = 0; i < 10; ++i) {
        defaults.update("a", adding("own" + std::to_string(i)));
    }
    std::ranges::for_each(processes, waitFor);
    defaults.set("b", true);
    const auto all = texts();
    EXPECT_EQ(all.size(), 40U);
    EXPECT_EQ(std::set<std::string>(all.begin(), all.end()).size(), 40U);
}

TEST_F(UserDefaultsTest, WhatIsLostIsToldFromWhatAnotherInstanceTakesAway) {
    EXPECT_FALSE(defaults.hasLost()); // never held anything
    defaults.set("a", true);
    EXPECT_FALSE(defaults.hasLost());
    another({"clear", "a"}); // the only one
    defaults.set("b", true);
    EXPECT_FALSE(defaults.value("a"));
    EXPECT_FALSE(defaults.hasLost());
    StandIns::forgetDefaults();
    EXPECT_TRUE(defaults.hasLost());
    defaults.set("b", true);
    EXPECT_TRUE(defaults.hasLost());
    EXPECT_FALSE(UserDefaults(QUILLANE_DEFAULTS_LOCK).hasLost());
}

TEST_F(UserDefaultsTest, WhatIsLostIsToldAlsoWhenAnotherInstanceHasStoredSinceThen) {
    defaults.set("a", true);
    StandIns::forgetDefaults();
    another({"add", "a", "other"});
    defaults.set("b", true);
    EXPECT_TRUE(defaults.hasLost());
}

} // namespace
} // namespace quillane
