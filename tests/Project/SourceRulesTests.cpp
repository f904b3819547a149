// Rules that hold for the whole source tree and that no compiler checks.
#include "SourceTree.h"
#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace {
namespace fs = std::filesystem;

// Blanks out comments and literals, so that prose may name what code may not call.
std::string codeOnly(const std::string& text) {
    enum class State { code, line, block, string, character } state = State::code;
    std::string code;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        const char next = i + 1 < text.size() ? text[i + 1] : '\0';
        switch (state) {
        case State::code:
            if (c == '/' && next == '/') {
                state = State::line;
            } else if (c == '/' && next == '*') {
                state = State::block;
            } else if (c == '"') {
                state = State::string;
                code += c;
            } else if (c == '\'' &&
                       (code.empty() || (std::isalnum(static_cast<unsigned char>(code.back())) == 0))) {
                state = State::character;
                code += c;
            } else {
                code += c;
            }
            break;
        case State::line:
            if (c == '\n') {
                state = State::code;
                code += c;
            }
            break;
        case State::block:
            if (c == '*' && next == '/') {
                state = State::code;
                ++i;
            }
            break;
        case State::string:
        case State::character:
            if (c == '\\') {
                ++i;
            } else if (c == (state == State::string ? '"' : '\'')) {
                state = State::code;
                code += c;
            }
            break;
        }
    }
    return code;
}

// The places where a pattern occurs in code, as "path: match".
std::vector<std::string> occurrences(const std::vector<Source>& sources, const std::regex& pattern,
                                     const std::set<std::string>& allowed = {}) {
    std::vector<std::string> found;
    for (const auto& source : sources) {
        if (allowed.contains(source.path)) {
            continue;
        }
        const std::string code = codeOnly(source.text);
        for (auto it = std::sregex_iterator(code.begin(), code.end(), pattern); it != std::sregex_iterator();
             ++it) {
            found.push_back(source.path + ": " + it->str());
        }
    }
    return found;
}

// Calls of the system and of libraries that rename, move or delete.
const std::regex kMovesOrDeletes(
    R"((^|[^\w.>])(::)?(rename|renameat|renameat2|unlink|unlinkat|rmdir|remove|link|linkat|symlink|truncate|ftruncate)\s*\()"
    R"(|\b(fs|filesystem)::(rename|remove|remove_all|copy|copy_file|resize_file|create_symlink)\b)"
    R"(|\bQFile::(remove|rename|moveToTrash)\b|\bQDir\(\)\.(remove|rename|rmdir|rmpath)\b|removeRecursively|setxattr|SYS_renameat2)",
    std::regex::ECMAScript | std::regex::multiline);

TEST(SourceRules, TheTreeIsReallyRead) {
    EXPECT_GT(sourcesBelow("src").size(), 30U);
}

TEST(SourceRules, TheRuleForMovingAndDeletingFindsEachForbiddenCall) {
    for (const char* call :
         {"::rename(a, b);", " unlinkat(fd, name, 0);", "std::filesystem::remove_all(path);",
          "\nremove(path);", "QFile::moveToTrash(x);", "::syscall(SYS_renameat2, 1);", " ::rmdir(x);"}) {
        EXPECT_EQ(occurrences({{"x.cpp", call}}, kMovesOrDeletes).size(), 1U) << call;
    }
    for (const char* harmless : {"list.remove(x);", "m_fields->remove(o);", "// ::unlink(x)\n",
                                 "f(\"::unlink(x)\");", "observers.link(x);"}) {
        EXPECT_TRUE(occurrences({{"x.cpp", harmless}}, kMovesOrDeletes).empty()) << harmless;
    }
}

TEST(SourceRules, OnlyTheMoverMovesAndOnlyTheRemoverDeletes) {
    // One source moves, for each system, and one deletes.
    const auto found =
        occurrences(sourcesBelow("src"), kMovesOrDeletes,
                    {"src/Platform/Posix/FileMover.cpp", "src/Platform/Posix/Linux/FileMover.cpp",
                     "src/Platform/Posix/Mac/FileMover.cpp", "src/Platform/Posix/FileRemover.cpp"});
    EXPECT_TRUE(found.empty()) << joined(found);
}

// The system's own ways to move may copy, delete and overwrite. One is left, into its Trash.
TEST(SourceRules, OnlyTheMacsTrashHasTheSystemMove) {
    const std::regex call(
        R"(\b(trashItem|moveItem|copyItem|linkItem|removeItem|replaceItem|evictUbiquitousItem)\w*:|\brecycleURLs:)");
    for (const char* forbidden :
         {"[files moveItemAtURL:a toURL:b error:&e]", "[files removeItemAtPath:path error:nil]",
          "[workspace recycleURLs:urls completionHandler:nil]"}) {
        EXPECT_EQ(occurrences({{"x.mm", forbidden}}, call).size(), 1U) << forbidden;
    }
    EXPECT_EQ(occurrences(sourcesBelow("src"), call),
              std::vector<std::string>{"src/Platform/Mac/FoundationTrash.mm: trashItemAtURL:"});
}

TEST(SourceRules, QtBeginsAtTheViews) {
    std::vector<std::string> found;
    const std::regex include(R"(#include\s*<Q\w+)");
    const std::regex entry("src/((Linux|Mac)/)?[^/]+"); // the entry type and its programs
    for (const auto& source : sourcesBelow("src")) {
        const bool mayUseQt = source.path.starts_with("src/Views/") ||
                              source.path.starts_with("src/Platform/Qt/") ||
                              std::regex_match(source.path, entry);
        if (!mayUseQt && std::regex_search(source.text, include)) {
            found.push_back(source.path);
        }
    }
    EXPECT_TRUE(found.empty()) << joined(found);
}

TEST(SourceRules, TheCoreUsesNothingThatTheMacsStandardLibraryLacks) {
    const auto found = occurrences(
        sourcesBelow("src"),
        std::regex(
            R"(std::(jthread|stop_token|stop_source|format|expected|chrono::(zoned_time|time_zone))\b)"));
    EXPECT_TRUE(found.empty()) << joined(found);
}

// The functions that a header declares and leaves to a source.
std::set<std::string> declaredIn(const fs::path& header) {
    const std::string code = codeOnly(readFile(header));
    const std::regex declaration(R"(\b(\w+)\s*\([^()]*\)\s*(const|noexcept)?\s*;)");
    std::set<std::string> names;
    for (auto it = std::sregex_iterator(code.begin(), code.end(), declaration); it != std::sregex_iterator();
         ++it) {
        names.insert((*it)[1].str());
    }
    return names;
}

// No machine builds the files of both systems, so that what one of them lacks shows late. What neither has stands
// in a source for both.
TEST(SourceRules, WhatAHeaderDeclaresEachSystemDefines) {
    std::size_t checked = 0;
    for (const auto& source : sourcesBelow("src")) {
        const fs::path file = fs::path(QUILLANE_SOURCE_DIR) / source.path;
        if (file.parent_path().filename() != "Linux" || file.extension() != ".cpp") {
            continue;
        }
        const fs::path room = file.parent_path().parent_path();
        std::string twin;
        for (const char* place : {"Mac/x.cpp", "Mac/x.mm", "Portable/x.cpp"}) {
            const fs::path name =
                fs::path(place).replace_filename(file.stem().string() + fs::path(place).extension().string());
            twin = twin.empty() ? readFile(room / name) : twin;
        }
        EXPECT_FALSE(twin.empty()) << source.path << " has no twin, or an empty one";
        for (const auto& name : declaredIn(room / file.filename().replace_extension(".h"))) {
            const std::regex definition("(\\w::|[^:\\w])" + name + "\\s*\\("); // and no call of the system
            const bool here = std::regex_search(codeOnly(source.text), definition);
            const bool there = std::regex_search(codeOnly(twin), definition);
            EXPECT_EQ(here, there) << name << " in " << source.path << " and in its twin";
            ++checked;
        }
    }
    EXPECT_GT(checked, 10U);
}

// The concerns of the library, by the names of its source files.
std::vector<std::string> concernsOfTheLibrary() {
    const std::regex name(R"(.*/AppLibrary\+(\w+)\.cpp)");
    std::set<std::string> concerns;
    for (const auto& source : sourcesBelow("src/ViewModels")) {
        std::smatch match;
        if (std::regex_match(source.path, match, name)) {
            concerns.insert(match[1]);
        }
    }
    return {concerns.begin(), concerns.end()};
}

// What the pattern's first group matches, in order.
std::vector<std::string> groupsIn(const std::string& text, const std::regex& pattern) {
    std::vector<std::string> groups;
    for (auto it = std::sregex_iterator(text.begin(), text.end(), pattern); it != std::sregex_iterator();
         ++it) {
        groups.push_back((*it)[1]);
    }
    return groups;
}

TEST(SourceRules, TheLibrarysHeaderListsItsConcernsInTheOrderOfTheirFiles) {
    const auto header = readFile(fs::path(QUILLANE_SOURCE_DIR) / "src/ViewModels/AppLibrary.h");
    const auto concerns = concernsOfTheLibrary();
    EXPECT_GT(concerns.size(), 5U);
    EXPECT_EQ(groupsIn(header, std::regex(R"(//   AppLibrary\+(\w+)\.cpp )")), concerns);
}

TEST(SourceRules, TheLibrarysFieldsAndOperationsStandByConcern) {
    const auto header = readFile(fs::path(QUILLANE_SOURCE_DIR) / "src/ViewModels/AppLibrary.h");
    const auto half = header.find("  private:\n    friend");
    ASSERT_NE(half, std::string::npos);
    const std::regex heading(R"(\n    // (\w+)\n\n)");
    const std::regex withSpace(R"(\n\n    // (\w+)\n\n)");
    EXPECT_EQ(groupsIn(header, heading), groupsIn(header, withSpace)) << "an empty line stands before each";
    const auto concerns = concernsOfTheLibrary();
    std::set<std::string> seen;
    for (const auto& headings :
         {groupsIn(header.substr(0, half), heading), groupsIn(header.substr(half), heading)}) {
        EXPECT_TRUE(std::ranges::is_sorted(headings)) << joined(headings);
        seen.insert(headings.begin(), headings.end());
    }
    EXPECT_EQ(std::vector(seen.begin(), seen.end()), concerns);
}

// A document that names what has moved leads a newcomer astray. A name may leave out its ending.
TEST(SourceRules, WhatTheDocumentsNameIsThere) {
    const fs::path root = QUILLANE_SOURCE_DIR;
    std::vector<fs::path> documents = {root / "README.md", root / "CONTRIBUTING.md"};
    for (const auto& entry : fs::recursive_directory_iterator(root / "docs")) {
        if (entry.path().extension() == ".md") {
            documents.push_back(entry.path());
        }
    }
    const std::regex place("`((src|tests|docs|tools|fuzz|benchmarks|resources|\\.ci)/[\\w./+-]*\\w)");
    std::vector<std::string> missing;
    std::size_t named = 0;
    for (const auto& document : documents) {
        const std::string text = readFile(document);
        for (auto it = std::sregex_iterator(text.begin(), text.end(), place); it != std::sregex_iterator();
             ++it) {
            const fs::path path = root / (*it)[1].str();
            if (!fs::exists(path) && !fs::exists(path.string() + ".h")) {
                missing.push_back(document.filename().string() + ": " + (*it)[1].str());
            }
            ++named;
        }
    }
    EXPECT_TRUE(missing.empty()) << joined(missing);
    EXPECT_GT(named, 50U);
}

// They are C, and an update of them may be no C++ any more. What libc does not wrap stands in KernelCalls.h.
TEST(SourceRules, NoSourceTakesAHeaderOfTheKernel) {
    const std::regex include(R"(#\s*include\s*[<"](linux|asm|asm-generic)/)");
    std::vector<std::string> found;
    for (const char* folder : {"src", "tests", "tools", "benchmarks", "fuzz"}) {
        for (const auto& source : sourcesBelow(folder)) {
            if (std::regex_search(source.text, include)) {
                found.push_back(source.path);
            }
        }
    }
    EXPECT_TRUE(found.empty()) << joined(found);
}

// Formatting::number() and counted() are how a number is shown; other ways know nothing of groups.
TEST(SourceRules, NoNumberIsShownWithoutItsGroups) {
    const std::regex plain(
        R"(\bstd::to_string\b|\bQString::number\b|\bsetNum\b|\.arg\([^()]*\b(size|count)\(\))");
    for (const char* call : {"std::to_string(n)", "QString::number(n)", "text.arg(list.size())"}) {
        EXPECT_EQ(occurrences({{"x.cpp", call}}, plain).size(), 1U) << call;
    }
    std::vector<std::string> found;
    for (const char* room : {"src/Models", "src/Services", "src/ViewModels", "src/Views"}) {
        // The status of a search for copies is a plain text; its number has no groups. Nor has that of a query, nor
        // that of a user, nor that in the identifier of a notification.
        const auto here = occurrences(sourcesBelow(room), plain,
                                      {"src/ViewModels/StoredRecords.cpp", "src/Services/DuplicateFinder.cpp",
                                       "src/Services/FileFinder.cpp", "src/Services/StartupFinder.cpp",
                                       "src/ViewModels/AppLibrary+Nudges.cpp"});
        found.insert(found.end(), here.begin(), here.end());
    }
    EXPECT_TRUE(found.empty()) << joined(found);
}

TEST(SourceRules, NothingIsPrintedOrLogged) {
    const auto found = occurrences(
        sourcesBelow("src"),
        std::regex(
            R"(std::(cout|cerr|clog)\b|\b(f|v|vf)?printf\s*\(|\bputs\s*\(|\bq(Debug|Warning|Info|Critical)\b)"));
    EXPECT_TRUE(found.empty()) << joined(found);
}

TEST(SourceRules, NoTestSleepsOrIsSkipped) {
    const auto found = occurrences(
        sourcesBelow("tests"),
        std::regex(
            R"(sleep_for|sleep_until|\bu?sleep\s*\(|nanosleep|QTest::q(Wait|Sleep)\b|GTEST_SKIP|DISABLED_)"),
        {"tests/Project/SourceRulesTests.cpp"});
    EXPECT_TRUE(found.empty()) << joined(found);
}

// A property runs where its library does, so that the build knows it by its name; see quillane_test.
TEST(SourceRules, ATestStandsInAFileThatIsNamedAfterItsKind) {
    const std::regex test(R"(^(TEST|TEST_F|TEST_P|TYPED_TEST|RC_GTEST_PROP|RC_GTEST_FIXTURE_PROP)\()",
                          std::regex::ECMAScript | std::regex::multiline);
    const std::regex name(R"((Tests|Contract|Properties)\.(cpp|mm)$)");
    std::vector<std::string> found;
    std::size_t tests = 0;
    for (const auto& source : sourcesBelow("tests")) {
        if (std::regex_search(source.text, test)) {
            ++tests;
            if (!std::regex_search(source.path, name)) {
                found.push_back(source.path);
            }
        }
    }
    EXPECT_TRUE(found.empty()) << joined(found);
    EXPECT_GT(tests, 100U);
}

TEST(SourceRules, NoProductCodeBranchesOnTheSystemItRunsOn) {
    const auto found = occurrences(
        sourcesBelow("src"), std::regex(R"(#\s*(if|ifdef|ifndef|elif)[^\n]*(__APPLE__|__linux__|Q_OS_))"));
    EXPECT_TRUE(found.empty()) << joined(found);
}

TEST(SourceRules, NoNameGoesThroughAShell) {
    const auto found =
        occurrences(sourcesBelow("src"), std::regex(R"((^|[^\w.>])(::|std::)?(system|popen)\s*\()"));
    EXPECT_TRUE(found.empty()) << joined(found);
}

// An assistive tool toggles what can be checked: `toggled` tells of that, `clicked` does not. So only a button that
// is pressed is heard by its clicks; that none such can be checked the tests of the views say.
const std::regex kHearsClicks(
    R"(\b(?!QPushButton::|BrandButton::)(\w+)::(clicked|pressed|released)\b|\b(button|id)(Clicked|Pressed|Released)\b|SIGNAL\s*\()");

TEST(SourceRules, TheRuleForClicksFindsEachThatIsForbidden) {
    for (const char* heard : {"connect(b, &QCheckBox::clicked, f);", "connect(b, &Switch::clicked, f);",
                              "connect(b, &QAbstractButton::clicked, f);", "&QToolButton::pressed",
                              "&QButtonGroup::idClicked", "connect(b, SIGNAL(clicked()), f);"}) {
        EXPECT_FALSE(occurrences({{"x.cpp", heard}}, kHearsClicks).empty()) << heard;
    }
    for (const char* allowed : {"&QPushButton::clicked", "&BrandButton::clicked", "&QCheckBox::toggled",
                                "// &QCheckBox::clicked\n"}) {
        EXPECT_TRUE(occurrences({{"x.cpp", allowed}}, kHearsClicks).empty()) << allowed;
    }
}

TEST(SourceRules, WhatCanBeCheckedIsHeardByItsTogglesAndNotByClicks) {
    const auto found = occurrences(sourcesBelow("src/Views"), kHearsClicks);
    EXPECT_TRUE(found.empty()) << joined(found);
}

// What is told of a release stands in the files of the package too, and nothing builds them from one another.
TEST(SourceRules, TheVersionIsTheSameWhereverItStands) {
    const fs::path root = QUILLANE_SOURCE_DIR;
    const auto first = [&](const char* file, const char* pattern) {
        const auto found = groupsIn(readFile(root / file), std::regex(pattern));
        return found.empty() ? std::string("none in ") + file : found.front();
    };
    const std::string version = first("CMakeLists.txt", R"(project\(Quillane VERSION ([\d.]+))");
    EXPECT_TRUE(std::regex_match(version, std::regex(R"(\d+(\.\d+)+)"))) << version;
    EXPECT_EQ(first("packaging/changelog", R"(quillane \(([^)]*)\))"), version);
    EXPECT_EQ(first("packaging/quillane.1", R"(\.TH QUILLANE 1 "[^"]*" "Quillane ([^"]*)\")"), version);
    EXPECT_EQ(first("packaging/org.quillane.Quillane.metainfo.xml", R"re(<release version="([^"]*)")re"),
              version);
}

TEST(SourceRules, EverySymbolFileIsAnImageOfItsOwnAndHoldsNoScript) {
    std::size_t count = 0;
    for (const auto& entry : fs::directory_iterator(fs::path(QUILLANE_SOURCE_DIR) / "resources/symbols")) {
        const std::string text = readFile(entry.path());
        EXPECT_NE(text.find("<svg"), std::string::npos) << entry.path();
        for (const char* forbidden : {"<script", "<use", "<mask", "<clipPath", "href"}) {
            EXPECT_EQ(text.find(forbidden), std::string::npos) << entry.path() << " holds " << forbidden;
        }
        ++count;
    }
    EXPECT_GT(count, 50U);
}

} // namespace
