#include "DeveloperCacheFinder.h"
#include "Characters.h"
#include "ContentTypes.h"
#include "Crew.h"
#include "FileSystem.h"
#include "FootprintCalculator.h"
#include "VisibleChildren.h"
#include "WalkedPaths.h"
#include <algorithm>
#include <array>
#include <deque>
#include <iterator>
#include <mutex>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

namespace quillane::DeveloperCacheFinder {
namespace {

struct Row {
    std::string_view path; // in the home folder
    std::string_view tool;
    std::string_view kind;
    bool safeToSweep;
    bool oneRowPerChild; // the folder is not offered, its visible children are
    std::string_view consequence;
};

constexpr std::array<Row, 26> kRows = {{
    {"Library/Developer/Xcode/DerivedData", "Xcode", "Derived data", true, false,
     "Next build of each project starts from scratch."},
    {"Library/Developer/Xcode/iOS DeviceSupport", "Xcode", "iOS device support", true, true,
     "Re-downloaded the next time you plug in a device running that iOS version."},
    {"Library/Developer/Xcode/watchOS DeviceSupport", "Xcode", "watchOS device support", true, true,
     "Re-downloaded when a watch with that version connects."},
    {"Library/Developer/Xcode/tvOS DeviceSupport", "Xcode", "tvOS device support", true, true,
     "Re-downloaded when an Apple TV with that version connects."},
    {"Library/Developer/Xcode/Archives", "Xcode", "Archives", false, false,
     "Needed to symbolicate crash reports from builds you shipped."},
    {"Library/Developer/CoreSimulator/Caches", "Simulator", "Simulator caches", true, false,
     "Rebuilt on the next simulator boot."},
    {"Library/Developer/CoreSimulator/Devices", "Simulator", "Simulator devices", false, false,
     "Every simulator and the apps installed on them. Use Xcode's Devices window to remove old ones."},
    {"Library/Caches/Homebrew", "Homebrew", "Download cache", true, false,
     "Formulae are re-downloaded when reinstalled."},
    {"Library/Caches/CocoaPods", "CocoaPods", "Spec and pod cache", true, false,
     "Pods are re-fetched on the next pod install."},
    {"Library/Caches/ms-playwright", "Playwright", "Browser binaries", true, false,
     "Browsers are re-downloaded by the next npx playwright install."},
    {"Library/Caches/Cypress", "Cypress", "Binary cache", true, false,
     "Cypress re-downloads its binary on the next install."},
    {"Library/Caches/pnpm", "pnpm", "Content-addressable store", true, false,
     "Packages are re-fetched on the next install."},
    {"Library/Caches/Yarn", "Yarn", "Package cache", true, false,
     "Packages are re-fetched on the next install."},
    {"Library/Caches/go-build", "Go", "Build cache", true, false,
     "Next go build recompiles everything once."},
    {"Library/Caches/JetBrains", "JetBrains", "IDE caches", true, false,
     "IDEs re-index projects on next open."},
    {"Library/Caches/node-gyp", "node-gyp", "Node headers", true, false,
     "Re-downloaded when a native module next compiles."},
    {"Library/Caches/typescript", "TypeScript", "Type acquisition cache", true, false,
     "Editors re-fetch type definitions as needed."},
    {"Library/Caches/pip", "pip", "Wheel cache", true, false,
     "Packages are re-downloaded on the next install."},
    {".npm/_cacache", "npm", "Package cache", true, false, "Packages are re-fetched on the next install."},
    {".cache", "Various", "XDG cache directory", true, false,
     "Shared by many CLI tools; each rebuilds its own part."},
    {".gradle/caches", "Gradle", "Dependency cache", true, false,
     "Dependencies are re-downloaded on the next build."},
    {".cargo/registry", "Cargo", "Crate registry", true, false,
     "Crates are re-downloaded on the next build."},
    {".m2/repository", "Maven", "Local repository", true, false,
     "Artifacts are re-downloaded on the next build."},
    {".nuget/packages", "NuGet", "Package cache", true, false, "Packages are re-restored on the next build."},
    {".cocoapods/repos", "CocoaPods", "Spec repos", true, false, "Re-cloned on the next pod install."},
    {"Library/Application Support/MobileSync/Backup", "Finder", "iPhone / iPad backup", false, true,
     "A full device backup. Only remove backups of devices you no longer own."},
}};

// Where people keep projects, in the home folder. Names that differ in case alone are different folders on most
// volumes; where they are one, it is walked for each.
constexpr std::array<std::string_view, 14> kProjectRoots = {
    "Desktop", "Documents", "Developer", "Projects", "PersonalProjects",
    "Sites",   "src",       "code",      "repos",    "work",
    "dev",     "Code",      "Repos",     "Work"};

constexpr std::string_view kNodeModules = "node_modules";
constexpr std::array<std::string_view, 3> kDependencyFolderNames = {kNodeModules, ".venv", "venv"};

// Folders that are parts of a project rather than projects: they are told with the folder that holds them.
constexpr std::array<std::string_view, 9> kMonorepoNames = {"client",  "server", "app", "web",     "frontend",
                                                            "backend", "api",    "src", "packages"};

// Folders this far below a project folder are looked at by name and not entered.
constexpr int kDeepestLevel = 5;

// In bytes. A folder that is given away is opened by its path; what has a longer one stays with who came to it,
// below its parent, where depth has no limit. A Mac's limit is 1,024 for the whole path on the machine.
constexpr std::size_t kLongestPathGiven = 512;

// Threads beside the job's own. More than the cores of a small machine, as a cold disk makes them wait.
constexpr int helpersFor(Priority priority) {
    return priority == Priority::background ? 1 : 3;
}

bool contains(const auto& names, std::string_view name) {
    return std::ranges::find(names, name) != names.end();
}

// "shop" for a folder of that name, "shop/frontend" for a part of it.
std::string projectLabel(const FileURL& folder) {
    std::string name(folder.lastPathComponent());
    if (!contains(kMonorepoNames, Text::lowercased(name))) {
        return name;
    }
    return std::string(folder.deletingLastPathComponent().lastPathComponent()) + "/" + name;
}

std::optional<Date> modified(const Platform& platform, const FileURL& url) {
    const auto values = platform.files.resourceValues(url);
    return values ? std::optional(values->contentModified) : std::nullopt;
}

DevCacheItem itemFor(const Row& row, const FileURL& url) {
    DevCacheItem item;
    item.url = url;
    item.tool = row.tool;
    item.kind = row.kind;
    if (row.oneRowPerChild) {
        item.kind += " - " + std::string(url.lastPathComponent());
    }
    item.safeToSweep = row.safeToSweep;
    item.consequence = row.consequence;
    return item;
}

DevCacheItem itemForDependencies(const FileURL& url) {
    const auto name = url.lastPathComponent();
    const auto label = projectLabel(url.deletingLastPathComponent());
    DevCacheItem item;
    item.url = url;
    item.tool = name == kNodeModules ? "npm / yarn / pnpm" : "Python";
    item.kind = std::string(name) + " in " + label;
    item.consequence = "The " + label + " project won't run until you reinstall its dependencies.";
    return item;
}

// What the workers find and measure together.
class Search {
  public:
    Search(const Platform& platform, Priority priority, const StopToken& stop)
        : m_platform(platform)
        , m_priority(priority)
        , m_stop(stop) {}

    // The items with their sizes, in their order, less those that take no space.
    std::vector<DevCacheItem> measured(std::vector<DevCacheItem> items) {
        m_found.assign(std::make_move_iterator(items.begin()), std::make_move_iterator(items.end()));
        std::vector<Piece> pieces;
        pieces.reserve(m_found.size());
        for (auto& item : m_found) {
            pieces.emplace_back(Measuring{&item, item.url});
        }
        return run(std::move(pieces));
    }

    // The dependency folders below the roots, those of the first root first.
    std::vector<DevCacheItem> dependencyFolders(const std::vector<FileURL>& roots) {
        std::vector<Piece> pieces;
        for (const auto& root : roots) {
            if (m_platform.files.exists(root)) {
                pieces.emplace_back(Looking{root, 0});
            }
        }
        auto items = run(std::move(pieces));
        const auto isBelow = [](std::string_view path, std::string_view root) {
            return path.size() > root.size() && path.starts_with(root) && path[root.size()] == '/';
        };
        const auto place = [&](const DevCacheItem& item) {
            const std::string_view path = item.url.path();
            const auto root = std::ranges::find_if(
                roots, [&](const FileURL& candidate) { return isBelow(path, candidate.path()); });
            return std::pair(root - roots.begin(), path);
        };
        // Whichever worker was first: the same folders give the same list.
        std::ranges::sort(items, {}, place);
        return items;
    }

  private:
    // A folder of an item to be measured.
    struct Measuring {
        DevCacheItem* item;
        FileURL folder;
    };
    // A folder to be looked through, this many levels below its root.
    struct Looking {
        FileURL folder;
        int level;
    };
    using Piece = std::variant<Measuring, Looking>;
    using Others = Crew<Piece>::Others;

    std::vector<DevCacheItem> run(std::vector<Piece> pieces) {
        const auto work = [this](const Piece& piece, const Others& others) {
            std::visit([&](const auto& part) { handle(part, others); }, piece);
        };
        Crew<Piece>::run(m_platform.tasks, m_priority, helpersFor(m_priority), std::move(pieces), work);

        std::vector<DevCacheItem> items;
        for (auto& item : std::exchange(m_found, {})) {
            if (item.bytes > 0) {
                item.lastModified = modified(m_platform, item.url);
                items.push_back(std::move(item));
            }
        }
        return items;
    }

    void handle(const Measuring& piece, const Others& others) {
        const auto leavesOut = [&](const FileURL& folder) {
            const bool gives = isWanted(folder, others);
            if (gives) {
                others.give(Measuring{piece.item, folder});
            }
            return gives;
        };
        const auto bytes = FootprintCalculator::sizeOfRest(m_platform, piece.folder, m_stop, leavesOut);
        const std::lock_guard lock(m_mutex);
        piece.item->bytes = checkedSum(piece.item->bytes, bytes);
    }

    void handle(const Looking& piece, const Others& others) {
        WalkedPaths paths(piece.folder);
        const auto look = [&](const WalkEntry& entry) {
            if (m_stop.stopRequested()) {
                return WalkAnswer::stop;
            }
            if (entry.type != EntryType::directory) {
                return WalkAnswer::proceed;
            }
            const auto url = paths.told(entry);
            const int level = piece.level + entry.level;
            if (contains(kDependencyFolderNames, entry.name)) {
                const Measuring found{add(itemForDependencies(url)), url};
                if (isWanted(url, others)) {
                    others.give(found);
                } else {
                    handle(found, others);
                }
                return WalkAnswer::skipBelow;
            }
            if (!isEntered(entry, level)) {
                return WalkAnswer::skipBelow;
            }
            if (isWanted(url, others)) {
                others.give(Looking{url, level});
                return WalkAnswer::skipBelow;
            }
            return WalkAnswer::proceed;
        };
        // What can't be read holds nothing.
        static_cast<void>(m_platform.files.walk(piece.folder, {.readsMarks = true}, look));
    }

    static bool isWanted(const FileURL& folder, const Others& others) {
        return others.want() && folder.path().size() <= kLongestPathGiven;
    }

    // Whether dependency folders are looked for inside a folder.
    static bool isEntered(const WalkEntry& folder, int level) {
        return !folder.name.starts_with('.') && folder.name != "Library" && level < kDeepestLevel &&
               !folder.isMarkedAsPackage && !ContentTypes::ofFolder(pathExtensionOf(folder.name)).isPackage();
    }

    DevCacheItem* add(DevCacheItem item) {
        const std::lock_guard lock(m_mutex);
        return &m_found.emplace_back(std::move(item));
    }

    const Platform m_platform;
    const Priority m_priority;
    const StopToken m_stop;
    std::mutex m_mutex;               // guards what follows
    std::deque<DevCacheItem> m_found; // items keep their place
};

std::vector<DevCacheItem> itemsAtKnownPlaces(const Platform& platform, const FileURL& home) {
    std::vector<DevCacheItem> items;
    for (const auto& row : kRows) {
        const auto url = home.appending(row.path);
        if (!platform.files.exists(url)) {
            continue;
        }
        for (const auto& target : row.oneRowPerChild ? visibleChildren(platform, url) : std::vector{url}) {
            items.push_back(itemFor(row, target));
        }
    }
    return items;
}

} // namespace

std::vector<DevCacheItem> find(const Platform& platform, Priority priority, const StopToken& stop) {
    const auto home = platform.files.home();
    Search search(platform, priority, stop);
    auto items = search.measured(itemsAtKnownPlaces(platform, home));

    std::vector<FileURL> roots;
    roots.reserve(kProjectRoots.size());
    for (const auto name : kProjectRoots) {
        roots.push_back(home.appending(name));
    }
    std::ranges::move(search.dependencyFolders(roots), std::back_inserter(items));
    std::ranges::stable_sort(items, std::ranges::greater(), &DevCacheItem::bytes);
    return items;
}

} // namespace quillane::DeveloperCacheFinder
