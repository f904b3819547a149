// What only the settings in a file have.
#include "AtomicFile.h"
#include "DefaultsChanges.h"
#include "FileDefaults.h"
#include "TemporaryFolder.h"
#include "Utf8.h"
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <memory>
#include <set>
#include <string>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <variant>
#include <vector>

namespace quillane {
namespace {

struct FileDefaultsTest : testing::Test {
    TemporaryFolder folder;
    std::string path = folder.path() + "/quillane/defaults.plist";
    void write(std::string_view text) { folder.file("quillane/defaults.plist", text); }
};

TEST_F(FileDefaultsTest, ValuesAreThereAtTheNextLaunch) {
    FileDefaults(path).set("flag", true);
    FileDefaults(path).set("paths", std::vector<std::string>{"/a"});
    const FileDefaults next(path);
    EXPECT_TRUE(next.boolean("flag"));
    EXPECT_EQ(next.stringArray("paths"), std::vector<std::string>{"/a"});
}

TEST_F(FileDefaultsTest, RegisteredValuesAreNotWritten) {
    FileDefaults defaults(path);
    defaults.registerDefaults({{"registered", true}});
    defaults.set("stored", true);
    EXPECT_FALSE(FileDefaults(path).boolean("registered"));
}

TEST_F(FileDefaultsTest, AMissingOrDamagedFileCountsAsEmptyAndIsReplacedAtTheNextChange) {
    for (const char* text :
         {"", "garbage", "<plist><dict><key>a</key>", "bplist00\xff\xff", "<plist><array/></plist>"}) {
        write(text);
        FileDefaults defaults(path);
        EXPECT_EQ(defaults.value("a"), std::nullopt) << text;
        defaults.set("a", true);
        EXPECT_TRUE(FileDefaults(path).boolean("a")) << text;
    }
}

TEST_F(FileDefaultsTest, AnArrayWithOneElementThatIsNoTextIsNoArrayOfTexts) {
    write("<plist><dict><key>a</key><array><string>x</string><integer>1</integer></array></dict></plist>");
    EXPECT_EQ(FileDefaults(path).stringArray("a"), std::nullopt);
}

TEST_F(FileDefaultsTest, ValuesOfKindsThatSettingsDoNotHaveAreKept) {
    write("<plist><dict><key>nested</key><dict><key>x</key><integer>1</integer></dict></dict></plist>");
    FileDefaults(path).set("flag", true);
    TemporaryFolder other;
    const FileDefaults next(path);
    EXPECT_TRUE(next.boolean("flag"));
    EXPECT_EQ(next.value("nested"), std::nullopt);
    FileDefaults(path).clear("flag");
    std::string text(4096, '\0');
    FILE* file = std::fopen(path.c_str(), "rb");
    text.resize(std::fread(text.data(), 1, text.size(), file));
    std::fclose(file);
    EXPECT_NE(text.find("<key>nested</key>"), std::string::npos);
}

TEST_F(FileDefaultsTest, PathsOfEveryCharacterAndOfAnyBytesAreThereAtTheNextLaunch) {
    std::vector<std::string> paths;
    for (std::uint32_t character = 1; character <= 0x10FFFF; ++character) {
        if (character % 0x400 == 1) {
            paths.emplace_back("/");
        }
        Utf8::append(paths.back(), character);
    }
    for (int byte = 1; byte < 256; ++byte) {
        paths.push_back("/" + std::string(1, static_cast<char>(byte)) + "\U0010FE00");
    }
    FileDefaults(path).set("protectedPaths", paths);
    EXPECT_TRUE(FileDefaults(path).stringArray("protectedPaths") == paths); // megabytes, if told
}

// Only bytes that XML can't hold were escapes then.
TEST_F(FileDefaultsTest, AFileOfBeforePrivateCharactersWereEscapedIsReadAsWellAsItCanBe) {
    write("<plist><dict><key>paths</key><array><string>/\U0010FEFF\U0010FE01</string>"
          "<string>/\U0010FE41</string><string>/\U0010FEC3\U0010FEA9</string></array></dict></plist>");
    EXPECT_EQ(FileDefaults(path).stringArray("paths"),
              (std::vector<std::string>{"/\xff\x01", "/\U0010FE41", "/\U0010FEC3\U0010FEA9"}));
}

TEST_F(FileDefaultsTest, RewritingChangesNothingInValuesAndKeysThatSettingsDoNotHave) {
    const std::string odd =
        "\U0010FEF4\U0010FE8F\U0010FEB9\U0010FE81"; // what a private character is written as
    const std::string nested = "<key>" + odd + "</key><dict><key>" + odd +
                               "</key><array><integer>1</integer><string>" + odd + "</string></array></dict>";
    write("<plist><dict>" + nested + "</dict></plist>");
    for (int i = 0; i < 3; ++i) {
        FileDefaults(path).set("count", std::int64_t{i});
    }
    std::ifstream file(path);
    std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    std::erase_if(text, [](char c) { return c == '\n' || c == '\t'; });
    EXPECT_NE(text.find(nested), std::string::npos) << text;
}

TEST_F(FileDefaultsTest, ASecondInstancesChangeIsSeenAndNotUndone) {
    FileDefaults first(path);
    FileDefaults second(path);
    first.set("a", std::int64_t{1});
    second.set("b", std::int64_t{2});
    EXPECT_EQ(first.integer("b"), 2);
    EXPECT_EQ(second.integer("a"), 1);
    first.set("a", std::int64_t{3});
    EXPECT_EQ(FileDefaults(path).integer("b"), 2);
    EXPECT_EQ(FileDefaults(path).integer("a"), 3);
}

TEST_F(FileDefaultsTest, AChangeThatCannotBeWrittenStaysTrueForThisProcess) {
    folder.file("quillane", "a file where the folder should be");
    FileDefaults defaults(path);
    defaults.set("flag", true);
    EXPECT_TRUE(defaults.boolean("flag"));
    defaults.clear("flag");
    EXPECT_FALSE(defaults.boolean("flag"));
}

TEST_F(FileDefaultsTest, TheFileIsReadableByItsOwnerAlone) {
    FileDefaults(path).set("a", true);
    struct stat status = {};
    ASSERT_EQ(::stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600);
}

// Over a file of at most 16,000 bytes and 200 values.
struct SmallFileDefaults : FileDefaultsTest {
    static constexpr PropertyList::Limits kLimits{.bytes = 16000, .nodes = 200};
    FileDefaults launch() const { return FileDefaults(path, kLimits); }
    FileDefaults defaults = launch();
};

TEST_F(SmallFileDefaults, AValueTooLargeToBeReadBackStaysInMemoryAndTheOthersAreStored) {
    for (const auto& huge : {Defaults::Value(Defaults::Data(13000, 7)),
                             Defaults::Value(std::vector<std::string>(250, "of too many"))}) {
        defaults.set("paths", std::vector<std::string>{"/protected"});
        defaults.set("operation", Defaults::Data{1});
        defaults.set("operation", huge);
        EXPECT_EQ(defaults.value("operation"), huge);
        EXPECT_EQ(launch().stringArray("paths"), std::vector<std::string>{"/protected"});
        EXPECT_EQ(launch().data("operation"), Defaults::Data{1});
        defaults.set("paths", std::vector<std::string>{"/protected", "/too"});
        EXPECT_EQ(launch().stringArray("paths"), (std::vector<std::string>{"/protected", "/too"}));
        EXPECT_EQ(defaults.value("operation"), huge);
        defaults.set("operation", Defaults::Data{2});
        EXPECT_EQ(launch().data("operation"), Defaults::Data{2});
    }
}

TEST_F(SmallFileDefaults, AnOlderValueThatMisleadsGoesFromTheFileWhenTheNewerIsTooLarge) {
    for (const auto& huge : {Defaults::Value(Defaults::Data(13000, 7)),
                             Defaults::Value(std::vector<std::string>(250, "of too many"))}) {
        defaults.set("paths", std::vector<std::string>{"/protected"});
        defaults.setOrForget("operation", Defaults::Data{1});
        ASSERT_EQ(launch().data("operation"), Defaults::Data{1});
        defaults.setOrForget("operation", huge);
        EXPECT_EQ(defaults.value("operation"), huge);
        EXPECT_EQ(launch().value("operation"), std::nullopt);
        defaults.set("other", true);
        EXPECT_EQ(defaults.value("operation"), huge);
        EXPECT_EQ(launch().value("operation"), std::nullopt);
        EXPECT_EQ(launch().stringArray("paths"), std::vector<std::string>{"/protected"});
        defaults.setOrForget("operation", Defaults::Data{2});
        EXPECT_EQ(launch().data("operation"), Defaults::Data{2});
    }
}

TEST_F(SmallFileDefaults, WhatIsStoredAsAnyOtherAfterwardsKeepsItsOlderValueAgain) {
    defaults.setOrForget("a", Defaults::Data(13000, 7));
    defaults.set("a", Defaults::Data{1});
    defaults.set("a", Defaults::Data(13000, 8));
    EXPECT_EQ(launch().data("a"), Defaults::Data{1});
}

TEST_F(SmallFileDefaults, AHugeValueThatIsTakenAwayAgainIsGone) {
    defaults.set("operation", Defaults::Data{1});
    defaults.set("operation", Defaults::Data(13000, 7));
    defaults.clear("operation");
    EXPECT_EQ(defaults.value("operation"), std::nullopt);
    EXPECT_EQ(launch().value("operation"), std::nullopt);
}

TEST_F(SmallFileDefaults, WhatHadNoRoomIsStoredOnceItHasSome) {
    defaults.set("first", std::string(8000, 'x'));
    defaults.set("second", std::string(9000, 'y'));
    EXPECT_EQ(launch().value("second"), std::nullopt);
    defaults.clear("first");
    EXPECT_EQ(launch().value("second"), Defaults::Value(std::string(9000, 'y')));
}

TEST_F(SmallFileDefaults, AChangeThatFitsIsStoredWhateverElseIsHeldBack) {
    defaults.set("tooMany", std::vector<std::string>(250, "a")); // small in bytes
    defaults.set("larger", std::string(6000, 'x'));
    EXPECT_EQ(launch().value("larger"), Defaults::Value(std::string(6000, 'x')));
    EXPECT_EQ(launch().value("tooMany"), std::nullopt);
    defaults.set("second", std::string(11000, 'y')); // no room beside the other
    EXPECT_EQ(launch().value("second"), std::nullopt);
    defaults.set("larger", std::string(11500, 'z')); // larger than what waits, and alone it fits
    EXPECT_EQ(launch().value("larger"), Defaults::Value(std::string(11500, 'z')));
}

// 11,000 bytes are 14,700 in the file, which would just be read.
TEST_F(SmallFileDefaults, HoweverLargeOneValueIsTheOthersFindRoom) {
    const Defaults::Value paths(std::string(3000, 'p'));
    defaults.set("operation", Defaults::Data(11000, 7));
    defaults.set("paths", paths);
    EXPECT_EQ(launch().value("paths"), paths);
    defaults.set("operation", Defaults::Data(8500, 7));
    EXPECT_EQ(launch().value("operation"), Defaults::Value(Defaults::Data(8500, 7)));
    EXPECT_EQ(launch().value("paths"), paths);
}

TEST_F(FileDefaultsTest, AFileThatIsTooLargeToBeReadIsLeftAlone) {
    folder.sparse("quillane/defaults.plist", std::int64_t{17} << 20);
    FileDefaults defaults(path);
    EXPECT_EQ(defaults.value("a"), std::nullopt);
    defaults.set("a", true);
    EXPECT_TRUE(defaults.boolean("a"));
    struct stat status = {};
    ASSERT_EQ(::stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_size, off_t{17} << 20);
}

TEST_F(FileDefaultsTest, WhatIsNoFileOfBytesIsLeftAlone) {
    folder.fifo("a/defaults.plist")
        .folder("b/defaults.plist")
        .fifo("c/pipe")
        .link("c/defaults.plist", "pipe");
    for (const char* name : {"a/defaults.plist", "b/defaults.plist", "c/pipe"}) {
        const auto place = folder.path() + "/" + std::string(1, name[0]) + "/defaults.plist";
        FileDefaults defaults(place);
        defaults.set("a", true);
        EXPECT_TRUE(defaults.boolean("a"));
        EXPECT_FALSE(AtomicFile::write(place, "text").ok());
        struct stat status = {};
        ASSERT_EQ(::lstat(folder.at(name).c_str(), &status), 0);
        EXPECT_TRUE(S_ISFIFO(status.st_mode) || S_ISDIR(status.st_mode)) << name;
    }
}

TEST_F(FileDefaultsTest, WhatWasReadBeforeStaysKnownWhenSomethingElseTakesThePlaceOfTheFile) {
    FileDefaults defaults(path);
    defaults.set("a", true);
    folder.remove("quillane/defaults.plist").fifo("quillane/defaults.plist");
    EXPECT_TRUE(defaults.boolean("a"));
}

// As the programs do that keep a user's settings in one folder.
TEST_F(FileDefaultsTest, ALinkedFileIsWrittenThroughAndTheLinkStays) {
    folder.file("dots/there.plist").folder("elsewhere");
    for (const char* target : {"../dots/there.plist", "../elsewhere/missing.plist", "second"}) {
        folder.remove("quillane").link("quillane/defaults.plist", target);
        folder.link("quillane/second", folder.at("dots/third.plist"));
        FileDefaults(path).set("a", std::string(target));
        struct stat status = {};
        ASSERT_EQ(::lstat(path.c_str(), &status), 0);
        EXPECT_TRUE(S_ISLNK(status.st_mode)) << target;
        EXPECT_EQ(FileDefaults(path).value("a"), Defaults::Value(std::string(target)));
    }
    EXPECT_TRUE(FileDefaults(folder.at("dots/third.plist")).value("a"));
}

TEST_F(FileDefaultsTest, LinksThatLeadInACircleAreLeftAlone) {
    folder.link("quillane/defaults.plist", "other").link("quillane/other", "defaults.plist");
    FileDefaults defaults(path);
    defaults.set("a", true);
    EXPECT_TRUE(defaults.boolean("a"));
    struct stat status = {};
    ASSERT_EQ(::lstat(path.c_str(), &status), 0);
    EXPECT_TRUE(S_ISLNK(status.st_mode));
}

TEST_F(FileDefaultsTest, AChangeIsMadeOfWhatAnotherInstanceHasStored) {
    FileDefaults defaults(path);
    defaults.update("a", adding("1"));
    FileDefaults(path).update("a", adding("2"));
    defaults.update("a", adding("3"));
    EXPECT_EQ(FileDefaults(path).stringArray("a"), (std::vector<std::string>{"1", "2", "3"}));
}

TEST_F(FileDefaultsTest, AChangeThatLeavesTheValueAsItIsWritesNothing) {
    FileDefaults(path).set("a", true);
    struct stat before = {};
    ASSERT_EQ(::stat(path.c_str(), &before), 0);
    FileDefaults(path).update("a", [](const auto& stored) { return stored; });
    struct stat after = {};
    ASSERT_EQ(::stat(path.c_str(), &after), 0);
    EXPECT_EQ(after.st_ino, before.st_ino); // each writing makes a new file
}

TEST_F(FileDefaultsTest, WhatIsLostWithTheFileIsToldFromWhatAnotherInstanceTakesAway) {
    for (const char* damage : {"", "<plist><dict><key>", "<plist version=\"1.0\"><array/></plist>"}) {
        FileDefaults(path).set("a", true);
        FileDefaults defaults(path);
        EXPECT_TRUE(defaults.boolean("a"));
        FileDefaults(path).clear("a"); // the only one
        EXPECT_FALSE(defaults.value("a"));
        EXPECT_FALSE(defaults.hasLost());
        FileDefaults(path).set("a", true);
        EXPECT_TRUE(defaults.boolean("a"));
        folder.remove("quillane/defaults.plist");
        if (*damage != '\0') {
            folder.file("quillane/defaults.plist", damage);
        }
        EXPECT_TRUE(defaults.hasLost()) << damage;
        defaults.set("b", true); // the file is whole again, without what it had
        EXPECT_TRUE(defaults.hasLost()) << damage;
        EXPECT_FALSE(FileDefaults(path).hasLost());
    }
}

TEST_F(FileDefaultsTest, AFileThatNeverHeldAnythingWasNotLost) {
    FileDefaults defaults(path);
    EXPECT_FALSE(defaults.hasLost());
    folder.file("quillane/defaults.plist", "damaged");
    EXPECT_FALSE(defaults.value("a"));
    EXPECT_FALSE(defaults.hasLost());
}

// A folder in the place of the file can be neither read nor written.
TEST_F(FileDefaultsTest, ChangesThatCouldNotBeWrittenAreMadeAnewOfWhatIsStoredByThen) {
    FileDefaults defaults(path);
    folder.folder("quillane/defaults.plist");
    defaults.update("a", adding("1"));
    defaults.update("a", adding("2"));
    EXPECT_EQ(defaults.stringArray("a"), (std::vector<std::string>{"1", "2"}));
    folder.remove("quillane/defaults.plist");
    FileDefaults(path).update("a", adding("other"));
    EXPECT_EQ(defaults.stringArray("a"), (std::vector<std::string>{"other", "1", "2"}));
    defaults.set("b", true);
    EXPECT_EQ(FileDefaults(path).stringArray("a"), (std::vector<std::string>{"other", "1", "2"}));
    FileDefaults(path).update("a", adding("more"));
    EXPECT_EQ(defaults.stringArray("a"), (std::vector<std::string>{"other", "1", "2", "more"})); // once
}

TEST_F(FileDefaultsTest, HoweverManyChangesCouldNotBeWrittenFewAreKeptAndNoneIsLost) {
    FileDefaults defaults(path);
    folder.folder("quillane/defaults.plist");
    constexpr int kChanges = 200;
    const auto kept = std::make_shared<int>();
    std::vector<std::string> expected;
    for (int i = 0; i < kChanges; ++i) {
        defaults.update("a",
                        [kept, add = adding(std::to_string(i))](const auto& stored) { return add(stored); });
        expected.push_back(std::to_string(i));
    }
    EXPECT_LE(kept.use_count(), 1 + 64);
    folder.remove("quillane/defaults.plist");
    defaults.set("b", true);
    EXPECT_EQ(FileDefaults(path).stringArray("a"), expected);
    EXPECT_EQ(kept.use_count(), 1);
}

TEST_F(FileDefaultsTest, AChangeOfAValueThatCouldNotBeWrittenGoesWithIt) {
    FileDefaults defaults(path);
    folder.folder("quillane/defaults.plist");
    defaults.set("a", std::vector<std::string>{"whole"});
    defaults.update("a", adding("1"));
    folder.remove("quillane/defaults.plist");
    FileDefaults(path).set("a", std::vector<std::string>{"other"});
    defaults.set("b", true);
    EXPECT_EQ(FileDefaults(path).stringArray("a"), (std::vector<std::string>{"whole", "1"}));
}

// Processes change one value at once, each adding its own.
TEST_F(FileDefaultsTest, OfChangesThatProcessesMakeAtOnceNoneIsLost) {
    constexpr int kProcesses = 4;
    constexpr int kChanges = 40;
    std::vector<pid_t> children;
    for (int process = 0; process < kProcesses; ++process) {
        const pid_t child = ::fork();
        if (child == 0) {
            FileDefaults defaults(path);
            for (int i = 0; i < kChanges; ++i) {
                defaults.update("a", adding(std::to_string(process) + "/" + std::to_string(i)));
            }
            ::_exit(0);
        }
        ASSERT_GT(child, 0);
        children.push_back(child);
    }
    for (const auto child : children) {
        int status = 1;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        EXPECT_EQ(status, 0);
    }
    const auto texts = FileDefaults(path).stringArray("a").value_or(std::vector<std::string>());
    EXPECT_EQ(texts.size(), std::size_t{kProcesses * kChanges});
    EXPECT_EQ(std::set<std::string>(texts.begin(), texts.end()).size(), texts.size());
}

// Several processes store at once, and each is killed at a moment that is as good as any.
TEST_F(FileDefaultsTest, AKillAtAnyMomentLeavesTheOldOrTheNewValuesAndNeverHalf) {
    FileDefaults(path).set("before", std::string("kept"));
    for (int round = 0; round < 100; ++round) {
        const pid_t child = ::fork();
        if (child == 0) {
            FileDefaults defaults(path);
            for (int i = 0;; ++i) {
                defaults.set("counter", std::int64_t{i});
                defaults.set("text", std::string(static_cast<std::size_t>(1000 + i % 7 * 1000), 'x'));
            }
        }
        ASSERT_GT(child, 0);
        // A different number of this process's own turns each round lets the child come more or less far.
        for (int turn = 0; turn < round; ++turn) {
            (void)FileDefaults(path).value("counter");
        }
        ASSERT_EQ(::kill(child, SIGKILL), 0);
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        const FileDefaults after(path);
        ASSERT_EQ(after.value("before"), Defaults::Value(std::string("kept"))) << round;
        const auto text = after.value("text");
        if (text) {
            ASSERT_EQ(std::get<std::string>(*text).size() % 1000, 0U) << round;
        }
    }
    FileDefaults(path).set("after", true); // the lock of the dead is gone
    EXPECT_TRUE(FileDefaults(path).boolean("after"));
}

} // namespace
} // namespace quillane
