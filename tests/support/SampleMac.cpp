#include "SampleMac.h"
#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <sys/stat.h>
#include <utility>

namespace quillane {
namespace {
namespace fs = std::filesystem;
using SampleExecutable::Cpu;

// Where support files may lie, in the order in which equal sizes are told.
struct Place {
    std::string_view folder;
    std::string_view category;
    bool isCache;
};
constexpr std::array kPlaces = {
    Place{"/Users/alex/Library/Application Support", "Application Support", false},
    Place{"/Users/alex/Library/Caches", "Caches", true},
    Place{"/Users/alex/Library/Preferences", "Preferences", false},
    Place{"/Users/alex/Library/Preferences/ByHost", "Preferences (ByHost)", false},
    Place{"/Users/alex/Library/Containers", "Container", false},
    Place{"/Users/alex/Library/Group Containers", "Group Container", false},
    Place{"/Users/alex/Library/Saved Application State", "Saved State", true},
    Place{"/Users/alex/Library/HTTPStorages", "HTTP Storage", false},
    Place{"/Users/alex/Library/WebKit", "WebKit Data", false},
    Place{"/Users/alex/Library/Cookies", "Cookies", false},
    Place{"/Users/alex/Library/Logs", "Logs", true},
    Place{"/Users/alex/Library/LaunchAgents", "Launch Agent", false},
    Place{"/Users/alex/Library/Application Scripts", "Application Scripts", false},
    Place{"/Users/alex/Library/Internet Plug-Ins", "Internet Plug-In", false},
    Place{"/Users/alex/Library/PreferencePanes", "Preference Pane", false},
    Place{"/Library/Application Support", "Application Support (shared)", false},
    Place{"/Library/Caches", "Caches (shared)", true},
    Place{"/Library/Preferences", "Preferences (shared)", false},
    Place{"/Library/LaunchAgents", "Launch Agent (shared)", false},
    Place{"/Library/LaunchDaemons", "Launch Daemon", false},
    Place{"/Library/PrivilegedHelperTools", "Privileged Helper", false},
};

const Place* placeOf(std::string_view path) {
    const auto folder = path.substr(0, path.rfind('/'));
    const auto* found = std::ranges::find(kPlaces, folder, &Place::folder);
    return found == kPlaces.end() ? nullptr : found;
}

std::string usualExecutable(Architecture architecture) {
    switch (architecture) {
    case Architecture::universal:
        return SampleExecutable::fat({Cpu::x86_64, Cpu::arm64});
    case Architecture::appleSilicon:
        return SampleExecutable::thin(Cpu::arm64);
    case Architecture::intel:
        return SampleExecutable::thin(Cpu::x86_64);
    case Architecture::intel32:
        return SampleExecutable::thin(Cpu::i386);
    case Architecture::powerPC:
        return SampleExecutable::byteSwapped(Cpu::powerPC);
    case Architecture::unknown:
        return SampleExecutable::script();
    }
    __builtin_unreachable();
}

AppSource sourceOf(std::string_view path) {
    if (path.starts_with("/System/")) {
        return AppSource::system;
    }
    if (path.starts_with("/Applications/")) {
        return AppSource::applications;
    }
    return path.starts_with(SampleMac::kHome) ? AppSource::userApplications : AppSource::other;
}

void layTree(DiskFolder& disk, const std::string& path, Bytes bytes) {
    disk.folder(path);
    disk.allocated(path + "/Data/Store.db", bytes / 2);
    disk.allocated(path + "/Data/Blobs/0/7/f3a1.bin", bytes / 4);
    disk.allocated(path + "/.index", bytes / 8);
    disk.allocated(path + "/session.log", bytes - bytes / 2 - bytes / 4 - bytes / 8);
}

} // namespace

SampleApp::SampleApp(std::string path)
    : m_path(std::move(path)) {}

SampleApp& SampleApp::identifier(std::string text) {
    m_identifier = std::move(text);
    return *this;
}

SampleApp& SampleApp::displayName(std::string text) {
    m_displayName = std::move(text);
    return *this;
}

SampleApp& SampleApp::bundleName(std::string text) {
    m_bundleName = std::move(text);
    return *this;
}

SampleApp& SampleApp::withoutBundleName() {
    m_bundleName.reset();
    return *this;
}

SampleApp& SampleApp::version(std::string text) {
    m_version = std::move(text);
    return *this;
}

SampleApp& SampleApp::build(std::string text) {
    m_build = std::move(text);
    return *this;
}

SampleApp& SampleApp::minimumSystem(std::string text) {
    m_minimumSystem = std::move(text);
    return *this;
}

SampleApp& SampleApp::property(std::string key, Plist value) {
    m_properties.emplace_back(std::move(key), std::move(value));
    return *this;
}

SampleApp& SampleApp::binaryPropertyList() {
    m_listForm = ListForm::binary;
    return *this;
}

SampleApp& SampleApp::rawPropertyList(std::string bytes) {
    m_listForm = ListForm::raw;
    m_rawList = std::move(bytes);
    return *this;
}

SampleApp& SampleApp::withoutPropertyList() {
    m_listForm = ListForm::none;
    return *this;
}

SampleApp& SampleApp::architecture(Architecture shown) {
    return executable(usualExecutable(shown), shown);
}

SampleApp& SampleApp::executable(std::string head, Architecture shown) {
    m_head = std::move(head);
    m_architecture = shown;
    return *this;
}

SampleApp& SampleApp::missingExecutable() {
    m_head.reset();
    m_architecture = Architecture::unknown;
    return *this;
}

SampleApp& SampleApp::withoutExecutable() {
    m_namesExecutable = false;
    return missingExecutable();
}

SampleApp& SampleApp::size(Bytes bytes) {
    m_size = bytes;
    return *this;
}

SampleApp& SampleApp::icon(std::uint32_t rgb, SampleIcon::Shape shape) {
    m_icon = SampleIcon{rgb, shape};
    return *this;
}

SampleApp& SampleApp::storeReceipt() {
    m_isStore = true;
    return *this;
}

SampleApp& SampleApp::deep(int levels) {
    m_levels = levels;
    return *this;
}

SampleApp& SampleApp::sparseFile(Bytes length) {
    m_sparse = length;
    return *this;
}

SampleApp& SampleApp::helper(std::string name) {
    m_helpers.push_back(std::move(name));
    return *this;
}

SampleApp& SampleApp::lastUsed(Ago ago) {
    m_lastUsed = ago;
    return *this;
}

SampleApp& SampleApp::modified(Ago ago) {
    m_modified = ago;
    return *this;
}

SampleApp& SampleApp::outsideTheIndex() {
    m_indexed = false;
    return *this;
}

SampleApp& SampleApp::seenThroughLink(std::string path) {
    m_link = std::move(path);
    return *this;
}

SampleApp& SampleApp::notListed() {
    m_isListed = false;
    return *this;
}

SampleApp& SampleApp::support(std::string path, Bytes bytes) {
    m_support.push_back({std::move(path), bytes, false, LeftoverItem::Confidence::high});
    return *this;
}

SampleApp& SampleApp::supportFile(std::string path, Bytes bytes) {
    m_support.push_back({std::move(path), bytes, true, LeftoverItem::Confidence::high});
    return *this;
}

SampleApp& SampleApp::supportByName(std::string path, Bytes bytes) {
    m_support.push_back({std::move(path), bytes, false, LeftoverItem::Confidence::medium});
    return *this;
}

SampleApp& SampleApp::supportList(std::string path, const Plist& list) {
    std::erase_if(m_support, [&](const Support& other) { return other.path == path; });
    m_support.push_back({std::move(path), 0, true, LeftoverItem::Confidence::high, xmlPropertyList(list)});
    return *this;
}

std::string SampleApp::stem() const {
    auto name = m_path.substr(m_path.rfind('/') + 1);
    return name.ends_with(".app") ? name.substr(0, name.size() - 4) : name;
}

Plist SampleApp::propertyList() const {
    Plist::Dictionary entries = {{"CFBundlePackageType", "APPL"}, {"CFBundleInfoDictionaryVersion", "6.0"}};
    const auto add = [&](const char* key, const std::optional<std::string>& text) {
        if (text) {
            entries.emplace_back(key, *text);
        }
    };
    add("CFBundleIdentifier", m_identifier);
    add("CFBundleDisplayName", m_displayName);
    add("CFBundleName", m_bundleName);
    add("CFBundleShortVersionString", m_version);
    add("CFBundleVersion", m_build);
    add("LSMinimumSystemVersion", m_minimumSystem);
    if (m_namesExecutable) {
        entries.emplace_back("CFBundleExecutable", executableName());
    }
    if (m_icon) {
        entries.emplace_back("CFBundleIconFile", "AppIcon");
    }
    entries.insert(entries.end(), m_properties.begin(), m_properties.end());
    return Plist::dictionary(std::move(entries));
}

void SampleApp::layPropertyList(DiskFolder& disk) const {
    const auto path = m_path + "/Contents/Info.plist";
    switch (m_listForm) {
    case ListForm::xml:
        disk.file(path, xmlPropertyList(propertyList()));
        break;
    case ListForm::binary:
        disk.file(path, quillane::binaryPropertyList(propertyList()));
        break;
    case ListForm::raw:
        disk.file(path, m_rawList);
        break;
    case ListForm::none:
        break;
    }
}

void SampleApp::layPayload(DiskFolder& disk) const {
    const auto contents = m_path + "/Contents";
    if (m_size > 0) {
        const auto framework = contents + "/Frameworks/Engine.framework";
        disk.allocated(contents + "/Resources/Assets.car", m_size / 2);
        disk.allocated(framework + "/Versions/A/Engine", m_size / 4);
        disk.link(framework + "/Versions/Current", "A");
        disk.link(framework + "/Engine", "Versions/Current/Engine");
        disk.allocated(contents + "/Resources/.prefetch", m_size - m_size / 2 - m_size / 4);
    }
    if (m_sparse > 0) {
        disk.sparse(contents + "/Resources/Image.sparse", m_sparse);
    }
    std::string folder = contents + "/Resources/Library";
    for (int level = 1; level <= m_levels; ++level) {
        folder += "/Level " + std::to_string(level);
        disk.file(folder + "/.hidden", "level " + std::to_string(level));
    }
}

void SampleApp::layHelpers(DiskFolder& disk) const {
    for (const auto& name : m_helpers) {
        SampleApp helper(m_path + "/Contents/Frameworks/" + name + ".app");
        helper.bundleName(name).architecture(Architecture::universal);
        if (m_identifier) {
            helper.identifier(*m_identifier + ".helper");
        }
        helper.layContent(disk, false);
    }
}

void SampleApp::layContent(DiskFolder& disk, bool largeIcons) const {
    const auto contents = m_path + "/Contents";
    disk.folder(contents);
    layPropertyList(disk);
    if (m_listForm != ListForm::none) {
        disk.file(contents + "/PkgInfo", "APPL????");
    }
    if (m_head) {
        const auto executable = contents + "/MacOS/" + executableName();
        disk.file(executable, *m_head).executable(executable);
    }
    if (m_icon) {
        disk.file(contents + "/Resources/AppIcon.icns", icnsOf(*m_icon, largeIcons));
    }
    if (m_isStore) {
        disk.file(contents + "/_MASReceipt/receipt", "receipt");
    }
    layPayload(disk);
    layHelpers(disk);
}

SampleMac::SampleMac(Date now)
    : m_now(now) {
    for (const char* path : {"/Applications", "Library", ".Trash"}) {
        folder(path);
    }
}

SampleMac& SampleMac::usualFolders() {
    for (const auto& place : kPlaces) {
        folder(std::string(place.folder));
    }
    for (const char* path : {"/Applications/Utilities", "/System/Applications/Utilities", "/Volumes",
                             "Applications", "Desktop", "Documents", "Downloads", "Pictures"}) {
        folder(path);
    }
    return *this;
}

SampleApp& SampleMac::app(std::string path) {
    auto& app = m_apps.emplace_back(absolute(std::move(path)));
    return app.bundleName(app.stem()).architecture(Architecture::appleSilicon);
}

SampleApp& SampleMac::declared(std::string path) {
    const auto wanted = absolute(std::move(path));
    const auto found = std::ranges::find(m_apps, wanted, &SampleApp::m_path);
    if (found == m_apps.end()) {
        std::abort(); // a sample that is not what it says would prove nothing
    }
    return *found;
}

SampleMac& SampleMac::step(std::function<void(DiskFolder&)> step) {
    m_steps.push_back(std::move(step));
    return *this;
}

SampleMac& SampleMac::folder(std::string path) {
    return step([path = absolute(std::move(path))](DiskFolder& disk) { disk.folder(path); });
}

SampleMac& SampleMac::file(std::string path, std::string content) {
    return step([path = absolute(std::move(path)), content = std::move(content)](DiskFolder& disk) {
        disk.file(path, content);
    });
}

SampleMac& SampleMac::allocated(std::string path, Bytes bytes) {
    return step([path = absolute(std::move(path)), bytes](DiskFolder& disk) { disk.allocated(path, bytes); });
}

SampleMac& SampleMac::sparse(std::string path, Bytes length) {
    return step([path = absolute(std::move(path)), length](DiskFolder& disk) { disk.sparse(path, length); });
}

SampleMac& SampleMac::link(std::string path, std::string target) {
    return step([path = absolute(std::move(path)), target = std::move(target)](DiskFolder& disk) {
        disk.link(path, target);
    });
}

SampleMac& SampleMac::tree(std::string path, Bytes bytes) {
    return step([path = absolute(std::move(path)), bytes](DiskFolder& disk) { layTree(disk, path, bytes); });
}

SampleMac& SampleMac::orphan(std::string path, std::string identifier, std::string vendor, Bytes bytes,
                             Ago ago) {
    path = absolute(std::move(path));
    const auto* place = placeOf(path);
    m_orphans.push_back({path, place ? std::string(place->category) : std::string(), std::move(identifier),
                         std::move(vendor), 0, !path.starts_with(kHome)});
    return tree(path, bytes).modified(path, ago);
}

SampleMac& SampleMac::location(std::string path, std::string tool, std::string kind, bool safeToSweep,
                               Bytes bytes, Ago ago) {
    path = absolute(std::move(path));
    m_locations.push_back({path, std::move(tool), std::move(kind), safeToSweep, 0});
    return tree(path, bytes).modified(path, ago);
}

SampleMac& SampleMac::startupItem(ExpectedStartupItem expected) {
    expected.path = absolute(std::move(expected.path));
    if (expected.isLoaded.value_or(false)) {
        loaded(expected.label);
    }
    m_startupItems.push_back(std::move(expected));
    return *this;
}

SampleMac& SampleMac::startupItem(ExpectedStartupItem expected, const Plist& list) {
    file(expected.path, xmlPropertyList(list));
    return startupItem(std::move(expected));
}

SampleMac& SampleMac::loaded(std::string label) {
    m_loaded.push_back(std::move(label));
    return *this;
}

SampleFile& SampleMac::ownFile(std::string path, UserFile::Kind kind) {
    return m_ownFiles.emplace_back(absolute(std::move(path)), kind);
}

SampleMac& SampleMac::searchFinds(std::string words, std::vector<std::string> paths) {
    std::ranges::transform(paths, paths.begin(), [&](const std::string& path) { return absolute(path); });
    std::ranges::sort(paths);
    m_searches[std::move(words)] = std::move(paths);
    return *this;
}

SampleMac& SampleMac::modified(std::string path, Ago ago) {
    m_dates.emplace_back(absolute(std::move(path)), ago);
    return *this;
}

SampleMac& SampleMac::indexed(std::string path) {
    m_indexed.push_back(absolute(std::move(path)));
    return *this;
}

SampleMac& SampleMac::largeIcons(bool large) {
    m_largeIcons = large;
    return *this;
}

std::string SampleMac::absolute(std::string path) const {
    return path.starts_with('/') ? std::move(path) : std::string(kHome) + "/" + path;
}

void SampleMac::buildApplication(DiskFolder& disk, const SampleApp& app) const {
    app.layContent(disk, m_largeIcons);
    disk.modified(app.m_path, date(app.m_modified));
    if (app.m_link) {
        disk.link(*app.m_link, app.m_path).modified(*app.m_link, date(app.m_modified));
    }
    for (const auto& item : app.m_support) {
        const auto path = absolute(item.path);
        if (!item.content.empty()) {
            disk.file(path, item.content);
        } else if (item.isFile) {
            disk.allocated(path, item.bytes);
        } else {
            layTree(disk, path, item.bytes);
        }
        disk.modified(path, date(app.m_lastUsed.value_or(app.m_modified)));
    }
}

void SampleMac::build(const std::string& hostFolder) const {
    DiskFolder disk(hostFolder);
    for (const auto& step : m_steps) {
        step(disk);
    }
    for (const auto& file : m_ownFiles) {
        file.lay(disk, m_now);
    }
    for (const auto& app : m_apps) {
        buildApplication(disk, app);
    }
    for (const auto& [path, ago] : m_dates) {
        disk.modified(path, date(ago));
    }
}

std::string SampleMac::spotlightOutput() const {
    std::string output;
    const auto add = [&](const std::string& path) { output.append(path).append("\n"); };
    for (const auto& app : m_apps) {
        if (!app.m_indexed) {
            continue;
        }
        add(app.m_path);
        for (const auto& name : app.m_helpers) {
            add(app.m_path + "/Contents/Frameworks/" + name + ".app");
        }
    }
    std::ranges::for_each(m_indexed, add);
    return output;
}

std::map<std::string, Date> SampleMac::lastUses() const {
    std::map<std::string, Date> uses;
    for (const auto& app : m_apps) {
        if (app.m_lastUsed) {
            uses[app.listedPath()] = date(*app.m_lastUsed);
        }
    }
    for (const auto& file : m_ownFiles) {
        if (file.m_lastUsed) {
            uses[file.path()] = date(*file.m_lastUsed);
        }
    }
    return uses;
}

ExpectedApp SampleMac::expected(const SampleApp& app, const std::string& hostFolder) const {
    ExpectedApp expected;
    expected.path = app.listedPath();
    expected.name = app.m_displayName.value_or(app.m_bundleName.value_or(app.stem()));
    expected.identifier = app.m_identifier;
    expected.version = app.m_version.value_or("-");
    expected.build = app.m_build.value_or("-");
    expected.minimumSystem = app.m_minimumSystem;
    expected.architecture = app.m_architecture;
    expected.source = sourceOf(expected.path);
    expected.isStore = app.m_isStore;
    expected.lastUsed = date(app.m_lastUsed.value_or(app.m_modified));
    expected.bundleBytes = allocatedOnDisk(hostFolder + expected.path);
    for (const auto& item : app.m_support) {
        const auto path = absolute(item.path);
        if (const auto* place = placeOf(path)) {
            expected.leftovers.push_back({path, std::string(place->category), item.confidence,
                                          allocatedOnDisk(hostFolder + path), !path.starts_with(kHome),
                                          place->isCache});
        }
    }
    std::ranges::sort(expected.leftovers, [](const auto& a, const auto& b) {
        return std::pair(b.bytes, placeOf(a.path)) < std::pair(a.bytes, placeOf(b.path));
    });
    return expected;
}

std::vector<ExpectedApp> SampleMac::expectedApplications(const std::string& hostFolder) const {
    std::vector<ExpectedApp> applications;
    for (const auto& app : m_apps) {
        if (app.m_isListed) {
            applications.push_back(expected(app, hostFolder));
        }
    }
    std::ranges::sort(applications, {}, &ExpectedApp::path);
    return applications;
}

namespace {

// As they were declared, with what they take below the folder.
template <class Expected>
std::vector<Expected> measuredBelow(const std::string& hostFolder, std::vector<Expected> declared) {
    for (auto& expected : declared) {
        expected.bytes = allocatedOnDisk(hostFolder + expected.path);
    }
    std::ranges::sort(declared, {}, &Expected::path);
    return declared;
}

} // namespace

std::vector<ExpectedOrphan> SampleMac::expectedOrphans(const std::string& hostFolder) const {
    return measuredBelow(hostFolder, m_orphans);
}

std::vector<ExpectedLocation> SampleMac::expectedLocations(const std::string& hostFolder) const {
    return measuredBelow(hostFolder, m_locations);
}

std::vector<ExpectedStartupItem> SampleMac::expectedStartupItems() const {
    auto items = m_startupItems;
    std::ranges::sort(items, {}, &ExpectedStartupItem::path);
    return items;
}

std::vector<ExpectedFiles::Group> SampleMac::expectedDuplicates(const std::string& hostFolder) const {
    std::map<std::string, std::vector<const SampleFile*>> copies;
    for (const auto& file : m_ownFiles) {
        if (file.m_copyOf) {
            copies[*file.m_copyOf].push_back(&file);
        }
    }
    std::vector<ExpectedFiles::Group> groups;
    for (const auto& [word, files] : copies) {
        auto& group = groups.emplace_back();
        group.bytesEach = files.front()->expected(hostFolder, m_now).logicalBytes;
        // Opened last; of those, the shortest path.
        const auto rank = [&](const SampleFile* file) {
            return std::pair(m_now.secondsSince1970() - file->lastUsedDate(m_now).secondsSince1970(),
                             file->path().size());
        };
        group.keeper = (*std::ranges::min_element(files, {}, rank))->path();
        for (const auto* const file : files) {
            group.paths.push_back(file->path());
        }
        std::ranges::sort(group.paths);
    }
    std::ranges::sort(groups);
    return groups;
}

ExpectedFiles SampleMac::expectedFiles(const std::string& hostFolder) const {
    const auto those = [&](auto isThat) {
        std::vector<UserFile> files;
        for (const auto& file : m_ownFiles) {
            if (file.*isThat) {
                files.push_back(file.expected(hostFolder, m_now));
            }
        }
        std::ranges::sort(files, {}, [](const UserFile& file) { return file.url.path(); });
        return files;
    };
    ExpectedFiles expected;
    expected.large = those(&SampleFile::m_isLarge);
    expected.screenshots = those(&SampleFile::m_isCapture);
    expected.installers = those(&SampleFile::m_isInstaller);
    expected.searches = m_searches;
    expected.duplicates = expectedDuplicates(hostFolder);
    expected.photosLibraryBytes =
        allocatedOnDisk(hostFolder + absolute("Pictures/Photos Library.photoslibrary"));
    return expected;
}

Bytes allocatedOnDisk(const std::string& hostPath) {
    struct stat status = {};
    if (::lstat(hostPath.c_str(), &status) != 0) {
        return 0;
    }
    if (S_ISREG(status.st_mode)) {
        return Bytes{status.st_blocks} * 512;
    }
    Bytes sum = 0;
    if (S_ISDIR(status.st_mode)) {
        std::error_code ignored;
        for (const auto& entry : fs::directory_iterator(hostPath, ignored)) {
            sum += allocatedOnDisk(entry.path().string());
        }
    }
    return sum;
}

} // namespace quillane
