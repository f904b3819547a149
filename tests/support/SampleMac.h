#pragma once
#include "AppSource.h"
#include "Architecture.h"
#include "Bytes.h"
#include "Date.h"
#include "DiskFolder.h"
#include "LeftoverItem.h"
#include "PropertyListWriter.h"
#include "SampleExecutable.h"
#include "SampleFile.h"
#include "SampleIcon.h"
#include "StartupItem.h"
#include <chrono>
#include <compare>
#include <functional>
#include <list>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillane {

constexpr Ago hoursAgo(int count) {
    return std::chrono::hours(count);
}
constexpr Ago daysAgo(int count) {
    return std::chrono::hours(24 * count);
}
constexpr Ago yearsAgo(int count) {
    return daysAgo(365 * count);
}
constexpr Bytes kilobytes(Bytes count) {
    return count * 1'000;
}
constexpr Bytes megabytes(Bytes count) {
    return count * 1'000'000;
}

// What the program must find out about one application, told by the declaration and by our own measuring.
struct ExpectedApp {
    struct Leftover {
        std::string path;
        std::string category;
        LeftoverItem::Confidence confidence = LeftoverItem::Confidence::high;
        Bytes bytes = 0;
        bool requiresAdmin = false;
        bool isCache = false;
        friend bool operator==(const Leftover&, const Leftover&) = default;
    };

    std::string path;
    std::string name;
    std::optional<std::string> identifier;
    std::string version;
    std::string build;
    std::optional<std::string> minimumSystem;
    Architecture architecture = Architecture::unknown;
    AppSource source = AppSource::other;
    bool isStore = false;
    std::optional<Date> lastUsed;
    Bytes bundleBytes = 0;
    std::vector<Leftover> leftovers; // largest first, equal sizes in the order of the Library locations
    friend bool operator==(const ExpectedApp&, const ExpectedApp&) = default;
};

// What the program must find of a removed application.
struct ExpectedOrphan {
    std::string path;
    std::string category;
    std::string identifier;
    std::string vendor;
    Bytes bytes = 0;
    bool requiresAdmin = false;
    friend auto operator<=>(const ExpectedOrphan&, const ExpectedOrphan&) = default;
};

// What the program must find of a tool of developers.
struct ExpectedLocation {
    std::string path;
    std::string tool;
    std::string kind;
    bool safeToSweep = false;
    Bytes bytes = 0;
    friend auto operator<=>(const ExpectedLocation&, const ExpectedLocation&) = default;
};

// What the program must say of something that starts by itself.
struct ExpectedStartupItem {
    std::string path;
    std::string label;
    StartupItem::Kind kind = StartupItem::Kind::agent;
    StartupItem::Health health = StartupItem::Health::ok;
    std::optional<std::string> owner;
    std::optional<bool> isLoaded;
    std::string schedule;
    friend bool operator==(const ExpectedStartupItem&, const ExpectedStartupItem&) = default;
};

// One application of a sample Mac, declared in one chain of words. Made by SampleMac::app().
// Without further words it is an Apple silicon application of a few kilobytes with an XML property list, no
// identifier and no version, in Spotlight's index, never opened, 400 days old.
class SampleApp {
  public:
    explicit SampleApp(std::string path);

    // Its property list. The name is the bundle's own unless told.
    SampleApp& identifier(std::string text);
    SampleApp& displayName(std::string text);
    SampleApp& bundleName(std::string text);
    SampleApp& withoutBundleName();
    SampleApp& version(std::string text);
    SampleApp& build(std::string text);
    SampleApp& minimumSystem(std::string text);
    // Any other key, or one of the above with a value of another kind, which the program takes as missing.
    SampleApp& property(std::string key, Plist value);
    SampleApp& binaryPropertyList();
    // These bytes in the place of the list; "damaged" lists also say notListed().
    SampleApp& rawPropertyList(std::string bytes);
    SampleApp& withoutPropertyList();

    // Its executable: the usual form of that architecture, or these bytes, which show as `shown`.
    SampleApp& architecture(Architecture shown);
    SampleApp& executable(std::string head, Architecture shown);
    // The property list names an executable and none is there, or it names none.
    SampleApp& missingExecutable();
    SampleApp& withoutExecutable();

    // Its content. `bytes` more are really allocated, spread over resources, a framework with its links, and
    // a hidden file.
    SampleApp& size(Bytes bytes);
    SampleApp& icon(std::uint32_t rgb, SampleIcon::Shape shape);
    SampleApp& storeReceipt();
    SampleApp& deep(int levels);
    SampleApp& sparseFile(Bytes length);
    // An application inside this one, which Spotlight knows too and nothing may list.
    SampleApp& helper(std::string name);

    // Its age: when it was opened last as the index knows it, and when the bundle changed.
    SampleApp& lastUsed(Ago ago);
    SampleApp& modified(Ago ago);
    SampleApp& outsideTheIndex();
    // A link elsewhere; the program sees the application there.
    SampleApp& seenThroughLink(std::string path);
    // The program must not list it.
    SampleApp& notListed();

    // Its support files, below the home folder unless the path begins with a slash. What is told here is
    // found by the identifier; `byName` by the application's name.
    SampleApp& support(std::string path, Bytes bytes);
    SampleApp& supportFile(std::string path, Bytes bytes);
    SampleApp& supportByName(std::string path, Bytes bytes);
    // A property list as a support file, in the place of one that was told before.
    SampleApp& supportList(std::string path, const Plist& list);

    const std::string& path() const { return m_path; }

  private:
    friend class SampleMac;

    enum class ListForm { xml, binary, raw, none };
    struct Support {
        std::string path;
        Bytes bytes;
        bool isFile;
        LeftoverItem::Confidence confidence;
        std::string content = {}; // in the place of so many bytes, unless empty
    };

    std::string stem() const;
    std::string listedPath() const { return m_link.value_or(m_path); }
    std::string executableName() const { return stem().empty() ? "main" : stem(); }
    Plist propertyList() const;
    void layContent(DiskFolder& disk, bool largeIcons) const;
    void layPropertyList(DiskFolder& disk) const;
    void layPayload(DiskFolder& disk) const;
    void layHelpers(DiskFolder& disk) const;

    std::string m_path;
    std::optional<std::string> m_identifier;
    std::optional<std::string> m_displayName;
    std::optional<std::string> m_bundleName;
    std::optional<std::string> m_version;
    std::optional<std::string> m_build;
    std::optional<std::string> m_minimumSystem;
    Plist::Dictionary m_properties;
    std::string m_rawList;
    std::optional<std::string> m_head;
    Bytes m_size = 0;
    Bytes m_sparse = 0;
    std::vector<std::string> m_helpers;
    std::optional<Ago> m_lastUsed;
    Ago m_modified = daysAgo(400);
    std::optional<std::string> m_link;
    std::vector<Support> m_support;
    std::optional<SampleIcon> m_icon;
    ListForm m_listForm = ListForm::xml;
    Architecture m_architecture = Architecture::appleSilicon;
    int m_levels = 0;
    bool m_namesExecutable = true;
    bool m_isStore = false;
    bool m_indexed = true;
    bool m_isListed = true;
};

// A Mac's volume, declared in words and then laid on disk below any folder. The home folder is "/Users/alex".
// What the program must find on it is told too, so that tests and the tour can compare. A value: declare,
// copy, build as often as needed.
class SampleMac {
  public:
    static constexpr std::string_view kHome = "/Users/alex";
    // A fixed moment for tests: 2024-05-15 12:00:00 UTC.
    static constexpr Date kNow = Date::fromUnix(1'715'774'400);

    // A volume with an empty home folder, Trash and folder of applications.
    explicit SampleMac(Date now = kNow);

    // The believable Mac of the tour: some sixty applications and what a person has, about 4 GB allocated.
    static SampleMac full(Date now = kNow);
    // The same cast and every odd case in a few megabytes: for tests.
    static SampleMac small(Date now = kNow);
    // `count` plain applications with a few support files each: for benchmarks.
    static SampleMac manyApplications(int count, Date now = kNow);

    // Declares an application. The reference is good until the Mac goes; go on declaring through it.
    SampleApp& app(std::string path);
    // One that was declared before.
    SampleApp& declared(std::string path);

    // The folders that every Mac has, empty: those of the Library, of the system and of the user.
    SampleMac& usualFolders();

    // Plain entries. A path without a leading slash lies in the home folder; bytes are really allocated.
    SampleMac& folder(std::string path);
    SampleMac& file(std::string path, std::string content);
    SampleMac& allocated(std::string path, Bytes bytes);
    SampleMac& sparse(std::string path, Bytes length);
    SampleMac& link(std::string path, std::string target);
    // A folder with so many bytes in several files, at several depths, one of them hidden.
    SampleMac& tree(std::string path, Bytes bytes);
    // A tree that a removed application left in a Library location, untouched for so long.
    SampleMac& orphan(std::string path, std::string identifier, std::string vendor, Bytes bytes, Ago ago);
    // A tree that a tool of developers keeps, shown with these words.
    SampleMac& location(std::string path, std::string tool, std::string kind, bool safeToSweep, Bytes bytes,
                        Ago ago);
    // Something that starts by itself: a property list, or what was laid there otherwise. When launchd is said to have
    // it, it has it loaded.
    SampleMac& startupItem(ExpectedStartupItem expected);
    SampleMac& startupItem(ExpectedStartupItem expected, const Plist& list);
    // A job of the user that launchd has loaded and no list in the folders describes.
    SampleMac& loaded(std::string label);
    // A file of the person's own, shown as that kind. The reference is good until the Mac goes; go on declaring
    // through it.
    SampleFile& ownFile(std::string path, UserFile::Kind kind);
    // These files, and no others, must be found by a search for the words.
    SampleMac& searchFinds(std::string words, std::vector<std::string> paths);
    // The date of an entry, set when everything is laid.
    SampleMac& modified(std::string path, Ago ago);
    // Anything else, done when the volume is laid. `step` gets absolute paths of the volume.
    SampleMac& step(std::function<void(DiskFolder&)> step);
    // A path that Spotlight names although no application was declared there.
    SampleMac& indexed(std::string path);
    // Whether icons hold a picture of 128 pixels, or only one of 32.
    SampleMac& largeIcons(bool large);

    // Lays the volume below a folder of the machine, which is made when it is missing.
    void build(const std::string& hostFolder) const;

    Date now() const { return m_now; }
    Date date(Ago ago) const { return m_now.addingSeconds(-static_cast<double>(ago.count())); }
    // What `mdfind` prints for applications, one path to a line.
    std::string spotlightOutput() const;
    // What the metadata index knows of last uses, by path.
    std::map<std::string, Date> lastUses() const;
    // The applications that must be found, sorted by path, measured below the folder where this was built.
    std::vector<ExpectedApp> expectedApplications(const std::string& hostFolder) const;
    // What must be found of removed applications and of tools, sorted by path, measured there.
    std::vector<ExpectedOrphan> expectedOrphans(const std::string& hostFolder) const;
    std::vector<ExpectedLocation> expectedLocations(const std::string& hostFolder) const;
    // What must be found of what starts by itself, sorted by path.
    std::vector<ExpectedStartupItem> expectedStartupItems() const;
    // The labels of the user's jobs that launchd has loaded.
    const std::vector<std::string>& loadedLabels() const { return m_loaded; }
    // What must be found of the person's own files, measured there.
    ExpectedFiles expectedFiles(const std::string& hostFolder) const;

  private:
    std::string absolute(std::string path) const;
    ExpectedApp expected(const SampleApp& app, const std::string& hostFolder) const;
    void buildApplication(DiskFolder& disk, const SampleApp& app) const;
    std::vector<ExpectedFiles::Group> expectedDuplicates(const std::string& hostFolder) const;

    Date m_now;
    bool m_largeIcons = true;
    std::list<SampleApp> m_apps;
    std::list<SampleFile> m_ownFiles;
    std::map<std::string, std::vector<std::string>> m_searches;
    std::vector<std::function<void(DiskFolder&)>> m_steps;
    std::vector<std::pair<std::string, Ago>> m_dates;
    std::vector<std::string> m_indexed;
    std::vector<ExpectedOrphan> m_orphans;     // without sizes
    std::vector<ExpectedLocation> m_locations; // without sizes
    std::vector<ExpectedStartupItem> m_startupItems;
    std::vector<std::string> m_loaded;
};

// The bytes that the regular files at or below a path of the machine have allocated, each counted once for
// each name, links not followed. Knows nothing of the program's own measuring.
Bytes allocatedOnDisk(const std::string& hostPath);

} // namespace quillane
