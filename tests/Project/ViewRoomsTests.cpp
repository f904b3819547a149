// The rooms of the views: the compiler finds the headers of all of them, so this says which includes are wrong.
#include "SourceTree.h"
#include <filesystem>
#include <gtest/gtest.h>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace {
namespace fs = std::filesystem;

// A room, and those that it may include: what it names in its CMakeLists.txt, and what those may include.
using Rooms = std::map<std::string, std::set<std::string>>;

const fs::path kViews = fs::path(QUILLANE_SOURCE_DIR) / "src/Views";
const std::string kGround = "Components"; // names no other room

std::vector<std::string> matches(const std::string& text, const std::regex& pattern) {
    std::vector<std::string> found;
    for (auto it = std::sregex_iterator(text.begin(), text.end(), pattern); it != std::sregex_iterator();
         ++it) {
        found.push_back((*it)[1].str());
    }
    return found;
}

// As src/Views/CMakeLists.txt lists them, from the ground up.
std::vector<std::string> roomsInOrder() {
    return matches(readFile(kViews / "CMakeLists.txt"), std::regex(R"(add_subdirectory\((\w+)\))"));
}

// What a room names itself.
std::set<std::string> namedBy(const std::string& room) {
    const auto lists = matches(readFile(kViews / room / "CMakeLists.txt"),
                               std::regex(R"(quillane_room\(\w+ DEPENDS ([\w\s]+)\))"));
    const auto names = matches(lists.empty() ? "" : lists.front(), std::regex(R"((\w+))"));
    return {names.begin(), names.end()};
}

Rooms readRooms() {
    Rooms rooms;
    for (const auto& room : roomsInOrder()) {
        auto& mayInclude = rooms[room];
        for (const auto& name : namedBy(room)) {
            mayInclude.insert(name);
            mayInclude.insert(rooms[name].begin(), rooms[name].end());
        }
    }
    return rooms;
}

std::vector<std::string> includesOf(const Source& source) {
    return matches(source.text, std::regex(R"re(#include "([^"]+)")re"));
}

// "src/Views/Panes/DetailPane.h" lies in Panes.
std::string roomOf(const std::string& path) {
    std::smatch match;
    return std::regex_search(path, match, std::regex("^src/Views/(\\w+)/")) ? match[1].str() : "";
}

std::vector<std::string> wrongArrows(const std::vector<Source>& sources, const Rooms& rooms) {
    std::vector<std::string> wrong;
    for (const auto& source : sources) {
        const std::string room = roomOf(source.path);
        for (const auto& include : includesOf(source)) {
            const std::string other = include.substr(0, include.find('/'));
            if (rooms.contains(other) && other != room && !rooms.at(room).contains(other)) {
                wrong.push_back(source.path + " includes " + include);
            }
        }
    }
    return wrong;
}

// Headers of the views that are included by their name alone. `headers` are names without their rooms.
std::vector<std::string> withoutRoom(const std::vector<Source>& sources,
                                     const std::set<std::string>& headers) {
    std::vector<std::string> found;
    for (const auto& source : sources) {
        for (const auto& include : includesOf(source)) {
            if (headers.contains(include)) {
                found.push_back(source.path + " includes " + include);
            }
        }
    }
    return found;
}

// A room with a screen, which is made by a header of the room's name.
bool isScreen(const std::string& room) {
    return fs::exists(kViews / room / (room + "Screen.h"));
}

TEST(ViewRooms, EveryFolderIsARoomAndEverySourceLiesInOne) {
    const auto rooms = roomsInOrder();
    std::set<std::string> folders;
    for (const auto& source : sourcesBelow("src/Views")) {
        EXPECT_NE(roomOf(source.path), "") << source.path;
        folders.insert(roomOf(source.path));
    }
    EXPECT_EQ(folders, std::set<std::string>(rooms.begin(), rooms.end()));
}

TEST(ViewRooms, ARoomNamesOnlyRoomsBelowIt) {
    std::set<std::string> below;
    for (const auto& room : roomsInOrder()) {
        const auto named = namedBy(room);
        EXPECT_EQ(named.empty(), room == kGround) << room;
        for (const auto& name : named) {
            EXPECT_TRUE(below.contains(name)) << room << " names " << name;
        }
        below.insert(room);
    }
}

TEST(ViewRooms, OnlyTheShellNamesAScreen) {
    std::size_t screens = 0;
    for (const auto& room : roomsInOrder()) {
        for (const auto& name : namedBy(room)) {
            EXPECT_TRUE(room == "Shell" || !isScreen(name)) << room << " names " << name;
        }
        screens += isScreen(room) ? 1 : 0;
    }
    EXPECT_GE(screens, 4U);
}

TEST(ViewRooms, AWrongArrowIsFound) {
    const Rooms rooms = {{"Components", {}}, {"Panes", {"Components"}}, {"Review", {"Components"}}};
    const auto arrowsOf = [&](const char* text) {
        return wrongArrows({{"src/Views/Panes/DetailPane.cpp", text}}, rooms).size();
    };
    EXPECT_EQ(arrowsOf("#include \"Review/Sheet.h\"\n"), 1U);
    EXPECT_EQ(arrowsOf("#include \"Components/Label.h\"\n#include \"Panes/DetailPane.h\"\n"), 0U);
    EXPECT_EQ(arrowsOf("#include \"AppLibrary.h\"\n#include <Review/Sheet.h>\n"), 0U);
}

TEST(ViewRooms, ARoomIncludesOnlyItselfAndWhatItNames) {
    const auto wrong = wrongArrows(sourcesBelow("src/Views"), readRooms());
    EXPECT_TRUE(wrong.empty()) << joined(wrong);
}

TEST(ViewRooms, AnIncludeWithoutItsRoomIsFound) {
    EXPECT_EQ(withoutRoom({{"x.cpp", "#include \"Label.h\"\n"}}, {"Label.h"}).size(), 1U);
    EXPECT_EQ(withoutRoom({{"x.cpp", "#include \"Components/Label.h\"\n"}}, {"Label.h"}).size(), 0U);
}

TEST(ViewRooms, AnIncludeSaysInWhichRoomTheHeaderIs) {
    std::set<std::string> headers;
    for (const auto& source : sourcesBelow("src/Views")) {
        headers.insert(fs::path(source.path).filename().string());
    }
    for (const char* folder : {"src", "tests", "tools", "benchmarks"}) {
        const auto found = withoutRoom(sourcesBelow(folder), headers);
        EXPECT_TRUE(found.empty()) << joined(found);
    }
}

} // namespace
