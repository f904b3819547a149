#include "RealHome.h"
#include "TrashInfo.h"
#include <algorithm>
#include <fstream>
#include <sstream>

namespace quillane {
namespace {

namespace fs = std::filesystem;

std::string contentOf(const fs::path& path) {
    std::ifstream stream(path, std::ios::binary);
    std::stringstream text;
    text << stream.rdbuf();
    return text.str();
}

fs::path recordOf(const fs::path& inTrash) {
    return inTrash.parent_path().parent_path() / "info" / (inTrash.filename().string() + ".trashinfo");
}

std::vector<fs::path> entriesOf(const fs::path& folder) {
    std::error_code missing;
    std::vector<fs::path> entries;
    for (const auto& entry : fs::directory_iterator(folder, missing)) {
        entries.push_back(entry.path());
    }
    std::ranges::sort(entries);
    return entries;
}

} // namespace

std::string everythingAt(const fs::path& path) {
    const auto status = fs::symlink_status(path);
    if (fs::is_symlink(status)) {
        return "link to " + fs::read_symlink(path).string();
    }
    if (!fs::is_directory(status)) {
        return contentOf(path);
    }
    std::string all = "folder";
    for (const auto& entry : entriesOf(path)) {
        all += "\n" + entry.filename().string() + ": " + everythingAt(entry);
    }
    return all;
}

const std::vector<std::string>& RealHome::rows() {
    static const std::vector<std::string> rows = {"Library/Caches/com.example.a",
                                                  "Library/Caches/com.example.b",
                                                  "Library/Logs/com.example.b",
                                                  "Downloads/é 100% \xff.txt",
                                                  "Downloads/link",
                                                  kDeep,
                                                  "Applications/One.app"};
    return rows;
}

RealHome::RealHome() {
    for (const char* folder :
         {"XDG_CONFIG_HOME", "XDG_DATA_HOME"}) { // would lead to the folders of who tests
        ::unsetenv(folder);                      // NOLINT(concurrency-mt-unsafe): before threads
    }
    for (const char* file : {"Library/Caches/com.example.a/one", "Library/Caches/com.example.a/deep/.two",
                             "Library/Caches/com.example.b", "Library/Logs/com.example.b",
                             "Downloads/é 100% \xff.txt", kDeep, "Applications/One.app/Contents/MacOS/One",
                             "Library/Caches/earlier", "Downloads/by hand", kProtected, kBystander}) {
        disk.file(std::string("home/") + file, std::string(3000, 'x') + file);
    }
    disk.link("home/Library/Caches/com.example.a/link", "../com.example.b");
    disk.link("home/Downloads/link", "nowhere");
    for (const auto& item : rows()) {
        m_items[item] = everythingAt(path(item));
    }
    for (const char* item : {"Library/Caches/earlier", "Downloads/by hand", kProtected, kBystander}) {
        m_items[item] = everythingAt(path(item));
    }
}

bool RealHome::isHome(const std::string& item) const {
    return everythingAt(path(item)) == m_items.at(item);
}

std::multimap<std::string, fs::path> RealHome::itemsIn(const fs::path& folder) const {
    std::multimap<std::string, fs::path> found;
    for (const auto& entry : entriesOf(folder)) {
        const auto all = everythingAt(entry);
        const auto item = std::ranges::find_if(m_items, [&](const auto& laid) { return laid.second == all; });
        found.emplace(item == m_items.end() ? "no item: " + entry.string() : item->first, entry);
    }
    return found;
}

std::optional<std::string> recordedOrigin(const fs::path& inTrash) {
    return TrashInfo::originalPath(contentOf(recordOf(inTrash)));
}

std::set<std::string> recordsWithoutItem(const fs::path& trashFolder) {
    std::set<std::string> stray;
    for (const auto& record : entriesOf(trashFolder.parent_path() / "info")) {
        if (!fs::exists(fs::symlink_status(trashFolder / record.stem()))) {
            stray.insert(record.filename().string());
        }
    }
    return stray;
}

} // namespace quillane
