// What the scripts do on a Mac, seen without one: they run in a copy of the checkout whose path has blanks, and find
// nothing in their PATH but what macOS has, its own programs replaced by one that notes each call.
#include "SourceTree.h"
#include "TemporaryFolder.h"
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace {
namespace fs = std::filesystem;
using quillane::TemporaryFolder;

// Programs of a Mac that do the same here, as long as their options are those of both.
const std::vector<std::string> kOfBoth = {"awk", "bash", "cat",  "cp",   "cut",  "df",    "dirname",
                                          "env", "find", "grep", "head", "ln",   "mkdir", "mktemp",
                                          "od",  "rm",   "sed",  "sort", "tail", "tr",    "wc"};
const std::vector<std::string> kOfTheMac = {"brew",    "cmake", "codesign",    "ctest",        "getconf",
                                            "hdiutil", "lipo",  "macdeployqt", "open",         "otool",
                                            "plutil",  "spctl", "uname",       "xcode-select", "xcrun"};

class MacScripts : public ::testing::Test {
  protected:
    MacScripts() {
        const fs::path tree = QUILLANE_SOURCE_DIR;
        for (const char* name : {"run", "test", "CMakePresets.json", "cmake", "packaging/mac", "tools/build",
                                 "tools/package", "tools/setup", "tools/mac"}) {
            fs::create_directories((checkout() / name).parent_path());
            fs::copy(tree / name, checkout() / name, fs::copy_options::recursive);
        }
        fs::create_directories(programs());
        fs::create_directories(m_disk.at("for a while"));
        for (const auto& name : kOfBoth) {
            fs::create_symlink(whereIs(name), programs() / name);
        }
        for (const auto& name : kOfTheMac) {
            fs::create_symlink(tree / "tests/Project/mac/record", programs() / name);
        }
    }

    fs::path checkout() const { return m_disk.at("a checkout with blanks"); }

    // Runs a script of the checkout from elsewhere, with words of the environment before it: its exit status.
    int run(const std::string& script, const std::string& environment = {}) {
        const std::string command = "cd / && env -i PATH='" + programs().string() + "' TMPDIR='" +
                                    m_disk.at("for a while") + "' CALLS='" + m_disk.at("calls") + "' " +
                                    environment + " '" + checkout().string() + "'/" + script + " >'" +
                                    m_disk.at("words") + "' 2>&1";
        const int status = std::system(command.c_str());
        return WEXITSTATUS(status);
    }

    std::string words() const { return readFile(m_disk.at("words")); }

    // The calls of a program, or all of them, with the places that are new each time by their last words.
    std::vector<std::string> calls(const std::string& program = {}) const {
        std::istringstream stream(readFile(m_disk.at("calls")));
        std::vector<std::string> found;
        for (std::string line; std::getline(stream, line);) {
            if (line.starts_with(program)) {
                found.push_back(shortened(line));
            }
        }
        return found;
    }

    // From here on a program that is the same on both systems only notes its calls, and fails if the test says so.
    void onlyNotes(const std::string& program) {
        fs::remove(programs() / program);
        fs::create_symlink(fs::path(QUILLANE_SOURCE_DIR) / "tests/Project/mac/record", programs() / program);
    }

    bool isCalled(const std::string& call) const { return std::ranges::count(calls(), call) > 0; }

  private:
    fs::path programs() const { return m_disk.at("programs"); }

    static fs::path whereIs(const std::string& program) {
        for (const char* folder : {"/usr/bin", "/bin"}) {
            if (fs::exists(fs::path(folder) / program)) {
                return fs::path(folder) / program;
            }
        }
        return "/nowhere";
    }

    std::string shortened(std::string line) const {
        const std::pair<std::string, std::string> words[] = {{checkout().string(), "CHECKOUT"},
                                                             {fs::canonical(m_disk.path()).string(), "DISK"},
                                                             {m_disk.path(), "DISK"}};
        for (const auto& [place, word] : words) {
            for (auto at = line.find(place); at != std::string::npos; at = line.find(place)) {
                line.replace(at, place.size(), word);
            }
        }
        return std::regex_replace(line, std::regex(R"(DISK/for a while/quillane\.\w+)"), "WORK");
    }

    const TemporaryFolder m_disk;
};

using Calls = std::vector<std::string>;

TEST_F(MacScripts, RunBuildsTheBundleAndOpensItAsTheFinderWould) {
    ASSERT_EQ(run("run"), 0) << words();
    EXPECT_TRUE(isCalled("cmake|--preset|mac|--fresh"));
    EXPECT_TRUE(isCalled("cmake|--build|build/mac|--target|quillane|--target|quillane-sample"));
    EXPECT_EQ(calls("open"), Calls{"open|-W|build/mac/src/Quillane.app"});
}

TEST_F(MacScripts, RunRefusesWhatItDoesNotKnow) {
    EXPECT_EQ(run("run --smaple"), 2);
    EXPECT_NE(words().find("Usage: ./run"), std::string::npos) << words();
    EXPECT_TRUE(calls().empty());
}

TEST_F(MacScripts, TestBuildsAndRunsAllTestsUnderTheSanitizers) {
    ASSERT_EQ(run("test -R views"), 0) << words();
    EXPECT_TRUE(isCalled("cmake|--preset|mac-asan|--fresh"));
    EXPECT_TRUE(isCalled("cmake|--build|build/mac-asan"));
    EXPECT_EQ(calls("ctest"), Calls{"ctest|--test-dir|build/mac-asan|--output-on-failure|-j|8|-R|views"});
}

TEST_F(MacScripts, WhatIsConfiguredIsNotConfiguredAgain) {
    ASSERT_EQ(run("test"), 0) << words();
    ASSERT_EQ(run("test"), 0) << words();
    EXPECT_EQ(calls("cmake|--preset").size(), 1U);
}

TEST_F(MacScripts, TheSetupInstallsOnlyWhatIsMissingAndSaysNothingWhenAllIsThere) {
    ASSERT_EQ(run("tools/setup"), 0) << words();
    EXPECT_EQ(words(), "");
    EXPECT_TRUE(calls("brew|install").empty());
    ASSERT_EQ(run("tools/setup package", "ABSENT='qt icu4c'"), 0) << words();
    EXPECT_EQ(calls("brew|install"), Calls{"brew|install|--quiet|icu4c|qt"});
    EXPECT_EQ(words(), "Installing 2 packages: icu4c qt\n");
}

TEST_F(MacScripts, TheSetupSaysThatTheCompilerIsMissing) {
    EXPECT_EQ(run("tools/setup", "FAILING=xcode-select"), 1);
    EXPECT_NE(words().find("xcode-select --install"), std::string::npos) << words();
}

TEST_F(MacScripts, AFailedBuildOfThePackageLeavesNoImage) {
    EXPECT_NE(run("tools/package", "FAILING=macdeployqt"), 0);
    EXPECT_TRUE(calls("codesign").empty());
    EXPECT_TRUE(calls("hdiutil").empty());
}

// The place of each call among those of a program; -1 where it is none.
std::ptrdiff_t placeOf(const Calls& calls, const std::string& end) {
    const auto found = std::ranges::find_if(calls, [&](const auto& call) { return call.ends_with(end); });
    return found == calls.end() ? -1 : found - calls.begin();
}

TEST_F(MacScripts, CodeIsSignedFromTheInsideOutAndTheBundleLast) {
    ASSERT_EQ(run("tools/package", "QUILLANE_SIGN_IDENTITY='Developer ID Application: Alex (AB12)'"), 0)
        << words();
    const std::string how =
        "codesign|--force|--options|runtime|--timestamp|--sign|Developer ID Application: Alex (AB12)|";
    const std::string inner = how + "--preserve-metadata=entitlements|WORK/image/Quillane.app/Contents/";
    const Calls signatures = calls("codesign");
    EXPECT_EQ(signatures, (Calls{inner + "PlugIns/platforms/libqcocoa.dylib",
                                 inner + "Frameworks/QtCore.framework", inner + "Frameworks/libfmt 1.dylib",
                                 how + "--entitlements|CHECKOUT/tools/mac/../../packaging/mac/"
                                       "Quillane.entitlements|WORK/image/Quillane.app",
                                 "codesign|--verify|--strict|--deep|WORK/image/Quillane.app",
                                 "codesign|--force|--timestamp|--sign|Developer ID Application: Alex "
                                 "(AB12)|CHECKOUT/build/package/Quillane-1.2.3.dmg"}));
}

TEST_F(MacScripts, NothingIsSignedDeepAndNothingWithoutTheHardenedRuntimeForOthers) {
    ASSERT_EQ(run("tools/package", "QUILLANE_SIGN_IDENTITY=me"), 0) << words();
    for (const auto& call : calls("codesign|--force")) {
        EXPECT_EQ(call.find("--deep"), std::string::npos) << call;
        EXPECT_TRUE(call.find("|--options|runtime|") != std::string::npos || call.ends_with(".dmg")) << call;
        EXPECT_NE(call.find("|--timestamp|"), std::string::npos) << call;
    }
    EXPECT_EQ(calls("codesign|--force").size(), 5U);
}

TEST_F(MacScripts, WithoutAnIdentityItIsSignedForNobodyAndSaysSo) {
    ASSERT_EQ(run("tools/package"), 0) << words();
    for (const auto& call : calls("codesign|--force")) {
        EXPECT_TRUE(call.starts_with("codesign|--force|--timestamp=none|--sign|-|")) << call;
    }
    EXPECT_EQ(calls("codesign|--force").size(), 4U);
    EXPECT_NE(words().find("Signed ad hoc"), std::string::npos) << words();
    EXPECT_TRUE(calls("xcrun|notarytool").empty());
}

TEST_F(MacScripts, WhereOneSignatureFailsThereIsNoImage) {
    EXPECT_NE(run("tools/package", "FAILING=codesign"), 0);
    EXPECT_EQ(calls("codesign").size(), 1U);
    EXPECT_TRUE(calls("hdiutil").empty());
}

TEST_F(MacScripts, TheImageHoldsTheBundleAndAWayToTheApplications) {
    ASSERT_EQ(run("tools/package"), 0) << words();
    EXPECT_EQ(calls("hdiutil"),
              Calls{"hdiutil|create|-volname|Quillane|-srcfolder|WORK/image|-fs|HFS+|-format|UDZO|-ov|"
                    "CHECKOUT/build/package/Quillane-1.2.3.dmg"});
    const Calls held = calls("image holds ");
    EXPECT_EQ(held.front(), "image holds Applications");
    EXPECT_EQ(std::ranges::count(held, "image holds Quillane.app/Contents/MacOS/Quillane"), 1);
    EXPECT_EQ(std::ranges::count(held, "image holds Quillane.app/Contents/PlugIns/platforms/libqcocoa.dylib"),
              1);
    EXPECT_NE(words().find("Quillane-1.2.3.dmg: 6 bytes"), std::string::npos) << words();
}

TEST_F(MacScripts, TheImageIsLeftWhereItIsWanted) {
    ASSERT_EQ(run("tools/package 'to give away'"), 0) << words();
    EXPECT_TRUE(fs::exists(checkout() / "to give away/Quillane-1.2.3.dmg"));
}

TEST_F(MacScripts, TheNotaryGetsTheSignedImageWhichIsThenStapled) {
    ASSERT_EQ(run("tools/package", "QUILLANE_SIGN_IDENTITY=me QUILLANE_NOTARY_PROFILE='my profile'"), 0)
        << words();
    const Calls all = calls();
    const std::string image = "CHECKOUT/build/package/Quillane-1.2.3.dmg";
    const auto signature = placeOf(all, "codesign|--force|--timestamp|--sign|me|" + image);
    const auto notary =
        placeOf(all, "xcrun|notarytool|submit|" + image + "|--keychain-profile|my profile|--wait");
    const auto staple = placeOf(all, "xcrun|stapler|staple|" + image);
    EXPECT_GE(signature, 0);
    EXPECT_LT(signature, notary);
    EXPECT_LT(notary, staple);
}

TEST_F(MacScripts, TheNotaryIsNotAskedAboutWhatIsSignedForNobody) {
    EXPECT_EQ(run("tools/package", "QUILLANE_NOTARY_PROFILE=mine"), 2);
    EXPECT_TRUE(calls("cmake").empty());
}

TEST_F(MacScripts, ALibraryOfThisMachineThatTheBundleStillNeedsIsAFailure) {
    EXPECT_EQ(run("tools/package", "NEEDS=/opt/homebrew/opt/icu4c/lib/libicuuc.dylib"), 1);
    EXPECT_NE(words().find("Contents/MacOS/Quillane needs /opt/homebrew/opt/icu4c/lib/libicuuc.dylib"),
              std::string::npos)
        << words();
    EXPECT_EQ(run("tools/package", "NEEDS=@executable_path/../Frameworks/nothing.dylib"), 1);
    EXPECT_EQ(run("tools/package", "NEEDS=@rpath/nothing.dylib"), 1);
    EXPECT_TRUE(calls("codesign").empty());
}

TEST_F(MacScripts, ALibraryThatTheBundleCarriesIsFoundThere) {
    EXPECT_EQ(run("tools/package", "NEEDS=@executable_path/../Frameworks/QtCore.framework/Versions/A/QtCore"),
              0)
        << words();
    EXPECT_EQ(run("tools/package", "NEEDS=@rpath/QtCore.framework/Versions/Current/QtCore"), 0) << words();
}

auto startsWith(const std::string& words) {
    return [words](const std::string& line) { return line.starts_with(words); };
}

// Homebrew's libraries are built for the macOS of the machine that they are installed on.
TEST_F(MacScripts, TheBundleAsksForTheOldestMacOnWhichItsLibrariesRun) {
    ASSERT_EQ(run("tools/package", "MINOS=15.2"), 0) << words();
    EXPECT_EQ(calls("plutil|-replace"), Calls{"plutil|-replace|LSMinimumSystemVersion|-string|15.2|WORK/"
                                              "image/Quillane.app/Contents/Info.plist"});
    const Calls all = calls();
    const auto asked = std::ranges::find_if(all, startsWith("plutil|-replace|"));
    EXPECT_TRUE(std::none_of(all.begin(), asked, startsWith("codesign|--force"))) << "before it is signed";
    ASSERT_EQ(run("tools/package", "MINOS=11.0"), 0) << words();
    EXPECT_EQ(calls("plutil|-replace").size(), 1U) << "an older one is no reason";
}

TEST_F(MacScripts, TheUniversalBundleIsThereForBothKindsOfProcessor) {
    ASSERT_EQ(run("tools/package --universal"), 0) << words();
    EXPECT_TRUE(isCalled("cmake|--build|build/mac-universal|--target|quillane"));
    EXPECT_EQ(run("tools/package --universal", "KINDS=arm64"), 1);
    EXPECT_NE(words().find("libqcocoa.dylib is not there for x86_64"), std::string::npos) << words();
}

const std::string kFeed = "QUILLANE_UPDATE_FEED=https://nowhere.invalid/feed";
const std::string kKey = "QUILLANE_UPDATE_KEY=AAAA=";

// A list that could not be made is not one without faults.
TEST_F(MacScripts, ABundleThatCannotBeReadOrHoldsNoCodeIsNotFoundInOrder) {
    const fs::path bundle = checkout() / "Other.app";
    const Calls both = {"tools/mac/self-contained", "tools/mac/universal"};
    for (const auto& script : both) {
        EXPECT_NE(run(script + " /nowhere/Other.app"), 0) << script;
        fs::create_directories(bundle / "Contents/MacOS");
        std::ofstream(bundle / "Contents/MacOS/Other") << "#!/bin/sh\n";
        EXPECT_EQ(run(script + " '" + bundle.string() + "'"), 1) << script;
        EXPECT_NE(words().find("no code"), std::string::npos) << words();
        std::ofstream(bundle / "Contents/MacOS/Other") << "\xCF\xFA\xED\xFE code";
        EXPECT_EQ(run(script + " '" + bundle.string() + "'"), 0) << script << words();
        EXPECT_NE(run(script + " '" + bundle.string() + "'", "FAILING='otool lipo'"), 0) << script;
        fs::remove_all(bundle);
    }
    // A file that can't be read; some may read all, so that it is the reader that fails.
    onlyNotes("od");
    fs::create_directories(bundle / "Contents/MacOS");
    std::ofstream(bundle / "Contents/MacOS/Other") << "\xCF\xFA\xED\xFE code";
    for (const auto& script : both) {
        EXPECT_NE(run(script + " '" + bundle.string() + "'", "FAILING=od"), 0) << script;
        EXPECT_EQ(words().find("no code"), std::string::npos) << words();
    }
}

TEST_F(MacScripts, CodeIsFoundByEachWayInWhichItBegins) {
    const fs::path code = checkout() / "Other.app/Contents/MacOS";
    fs::create_directories(code);
    std::ofstream(code / "one") << "\xCF\xFA\xED\xFE";
    std::ofstream(code / "several") << "\xCA\xFE\xBA\xBE";
    std::ofstream(code / "several large") << "\xCA\xFE\xBA\xBF";
    std::ofstream(code / "text") << "cafebabe";
    std::ofstream(code / "empty") << "";
    ASSERT_EQ(run("tools/mac/code-in '" + (checkout() / "Other.app").string() + "'"), 0) << words();
    std::istringstream lines(words());
    std::set<std::string> found;
    for (std::string line; std::getline(lines, line);) {
        found.insert(fs::path(line).filename().string());
    }
    EXPECT_EQ(found, (std::set<std::string>{"one", "several", "several large"}));
}

TEST_F(MacScripts, FeedKeyAndWhatReadsThemGoIntoThePackageTogetherOrNotAtAll) {
    const std::string sparkle = "QUILLANE_SPARKLE='" + (checkout() / "Sparkle.framework").string() + "'";
    fs::create_directories(checkout() / "Sparkle.framework");
    for (const auto& some : {kFeed, kKey, sparkle, kFeed + " " + kKey, kFeed + " " + sparkle,
                             "QUILLANE_UPDATE_FEED='' " + kKey + " " + sparkle}) {
        EXPECT_EQ(run("tools/package", some), 2) << some;
    }
    EXPECT_EQ(run("tools/package", kFeed + " " + kKey + " QUILLANE_SPARKLE=/nowhere"), 2);
    EXPECT_TRUE(calls().size() == calls("uname").size()) << "nothing is built of it";
    EXPECT_EQ(run("tools/package", kFeed + " " + kKey + " " + sparkle), 0) << words();
}

TEST_F(MacScripts, FeedAndKeyReachEachKindOfBuildAlsoOneThatIsConfigured) {
    fs::create_directories(checkout() / "Sparkle.framework");
    const std::string all =
        kFeed + " " + kKey + " QUILLANE_SPARKLE='" + (checkout() / "Sparkle.framework").string() + "'";
    ASSERT_EQ(run("run"), 0) << words();
    for (const std::string preset : {"mac", "mac-universal"}) {
        ASSERT_EQ(run(preset == "mac" ? "tools/package" : "tools/package --universal", all), 0) << words();
        EXPECT_TRUE(isCalled("cmake|--preset|" + preset + "|--fresh|-D" + kFeed + "|-D" + kKey)) << preset;
    }
}

TEST_F(MacScripts, AFeedThatABuildWasGivenOtherwiseIsNotDroppedWithoutAWord) {
    ASSERT_EQ(run("tools/build mac -D" + kFeed), 0) << words();
    EXPECT_EQ(run("tools/package"), 2);
    EXPECT_NE(words().find("QUILLANE_UPDATE_FEED"), std::string::npos) << words();
    EXPECT_TRUE(calls("hdiutil").empty());
}

// As Sparkle is laid out: programs within a framework, each a bundle with entitlements of its own.
TEST_F(MacScripts, TheHelpersOfTheUpdatesAreSignedBeforeTheFrameworkAndKeepTheirEntitlements) {
    const fs::path sparkle = checkout() / "Sparkle.framework/Versions/B";
    for (const char* code : {"Sparkle", "Autoupdate", "Updater.app/Contents/MacOS/Updater",
                             "XPCServices/Downloader.xpc/Contents/MacOS/Downloader"}) {
        fs::create_directories((sparkle / code).parent_path());
        fs::copy_file(checkout() / "run", sparkle / code);
        std::ofstream(sparkle / code) << "\xCA\xFE\xBA\xBE";
    }
    ASSERT_EQ(run("tools/package", kFeed + " " + kKey + " QUILLANE_SIGN_IDENTITY=me QUILLANE_SPARKLE='" +
                                       (checkout() / "Sparkle.framework").string() + "'"),
              0)
        << words();
    Calls helpers;
    for (const auto& call : calls(
             "codesign|--force|--options|runtime|--timestamp|--sign|me|--preserve-metadata=entitlements|")) {
        if (const auto at = call.find("/Sparkle.framework"); at != std::string::npos) {
            helpers.push_back(call.substr(at + 1));
        }
    }
    EXPECT_EQ(helpers, (Calls{"Sparkle.framework/Versions/B/XPCServices/Downloader.xpc",
                              "Sparkle.framework/Versions/B/Autoupdate",
                              "Sparkle.framework/Versions/B/Updater.app", "Sparkle.framework"}));
}

} // namespace
