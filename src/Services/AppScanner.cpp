#include "AppScanner.h"
#include "FileSystem.h"
#include "MachOInspector.h"
#include "Metadata.h"
#include "PropertyList.h"
#include "SearchProgram.h"
#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>

namespace quillane::AppScanner {
namespace {

constexpr std::string_view kBundleExtension = "app";
constexpr std::string_view kBundleSuffix = ".app";

std::vector<FileURL> spotlightResults(const Platform& platform) {
    std::vector<FileURL> found;
    for (auto& path :
         SearchProgram::lines(platform, {"kMDItemContentType == 'com.apple.application-bundle'"})) {
        found.emplace_back(std::move(path));
    }
    return found;
}

// Appends the bundles that lie directly in a folder; its other entries without an extension, which may be a
// vendor's folders, go to `folders`.
void collectBundles(const Platform& platform, const FileURL& folder, std::vector<FileURL>& bundles,
                    std::vector<FileURL>* folders) {
    const auto entries = platform.files.list(folder);
    if (!entries) {
        return;
    }
    for (const auto& entry : *entries) {
        const auto extension = pathExtensionOf(entry.name);
        if (extension == kBundleExtension) {
            bundles.push_back(folder.appending(entry.name));
        } else if (extension.empty() && folders != nullptr) {
            folders->push_back(folder.appending(entry.name));
        }
    }
}

std::vector<FileURL> standardDirectoryResults(const Platform& platform) {
    const std::array<FileURL, 5> roots = {
        FileURL("/Applications"), FileURL("/Applications/Utilities"), FileURL("/System/Applications"),
        FileURL("/System/Applications/Utilities"), platform.files.home().appending("Applications")};
    std::vector<FileURL> bundles;
    for (const auto& root : roots) {
        std::vector<FileURL> folders;
        collectBundles(platform, root, bundles, &folders);
        for (const auto& folder : folders) {
            collectBundles(platform, folder, bundles, nullptr);
        }
    }
    return bundles;
}

bool contains(std::string_view text, std::string_view part) {
    return text.find(part) != std::string_view::npos;
}

bool isTopLevelApp(const FileURL& url, const FileURL& home) {
    static constexpr std::array<std::string_view, 5> kHiddenRoots = {
        "/System/Library/", "/Library/Apple/System/", "/Library/Image Capture/", "/usr/",
        "/private/var/folders/"};
    static constexpr std::array<std::string_view, 6> kHiddenParts = {"/.Trash/",
                                                                     ".framework/",
                                                                     "/Library/Developer/Xcode/DerivedData/",
                                                                     "/Library/Developer/CoreSimulator/",
                                                                     "/.Spotlight-V100/",
                                                                     "/Backups.backupdb/"};

    const std::string_view path = url.path();
    if (!path.ends_with(kBundleSuffix)) {
        return false;
    }
    if (contains(path.substr(0, path.size() - kBundleSuffix.size()), ".app/")) {
        return false; // inside another bundle
    }
    if (path.starts_with(home.appending("Library").path() + "/")) {
        return false;
    }
    for (const auto root : kHiddenRoots) {
        if (path.starts_with(root)) {
            return false;
        }
    }
    for (const auto part : kHiddenParts) {
        if (contains(path, part)) {
            return false;
        }
    }
    return true;
}

// Each bundle once, under the path that named it first: a link to a bundle and the bundle are one.
std::vector<FileURL> deduplicated(const Platform& platform, const std::vector<FileURL>& candidates) {
    std::unordered_set<FileURL> known;
    std::vector<FileURL> kept;
    for (const auto& candidate : candidates) {
        auto standardized = platform.files.standardized(candidate);
        if (known.insert(platform.files.resolvingSymlinks(standardized)).second) {
            kept.push_back(std::move(standardized));
        }
    }
    return kept;
}

AppSource sourceOf(const FileURL& url, const FileURL& home) {
    const std::string_view path = url.path();
    if (path.starts_with("/System/")) {
        return AppSource::system;
    }
    if (path.starts_with("/Applications/")) {
        return AppSource::applications;
    }
    if (path.starts_with(home.path())) {
        return AppSource::userApplications;
    }
    return AppSource::other;
}

std::optional<Date> lastUsedDate(const Platform& platform, const FileURL& url) {
    if (const auto used = platform.metadata.lastUsed(url)) {
        return used;
    }
    const auto values = platform.files.resourceValues(url);
    return values ? std::optional(values->contentModified) : std::nullopt;
}

Architecture architectureOf(const Platform& platform, const FileURL& contents,
                            const std::optional<std::string>& executable) {
    if (!executable || executable->find('\0') != std::string::npos) {
        return Architecture::unknown;
    }
    return MachOInspector::architecture(platform, contents.appending("MacOS").appending(*executable));
}

// What a bundle says of itself.
Result<PropertyList::Value> readInfo(const Platform& platform, const FileURL& bundle) {
    // One byte beyond the limit, so that a list that is too large is seen to be.
    const auto bytes =
        platform.files.read(bundle.appending("Contents/Info.plist"), PropertyList::Limits().bytes + 1);
    return bytes ? PropertyList::parse(*bytes) : Result<PropertyList::Value>(bytes.error());
}

std::optional<InstalledApp> readMetadata(const Platform& platform, const FileURL& url) {
    const auto parsed = readInfo(platform, url);
    const auto* info = parsed ? PropertyList::asDictionary(&*parsed) : nullptr;
    if (info == nullptr) {
        return std::nullopt;
    }
    const auto contents = url.appending("Contents");
    const auto text = [&](std::string_view key) { return PropertyList::asString(info->find(key)); };

    InstalledApp app;
    app.url = url;
    auto name = text("CFBundleDisplayName");
    if (!name) {
        name = text("CFBundleName");
    }
    app.name = name ? std::move(*name) : std::string(url.deletingPathExtension().lastPathComponent());
    app.bundleIdentifier = text("CFBundleIdentifier");
    app.version = text("CFBundleShortVersionString").value_or("-");
    app.buildVersion = text("CFBundleVersion").value_or("-");
    app.minimumSystemVersion = text("LSMinimumSystemVersion");
    app.architecture = architectureOf(platform, contents, text("CFBundleExecutable"));
    app.source = sourceOf(url, platform.files.home());
    app.isMacAppStore = platform.files.exists(contents.appending("_MASReceipt/receipt"));
    app.lastUsed = lastUsedDate(platform, url);
    return app;
}

} // namespace

std::vector<InstalledApp> scanMetadata(const Platform& platform) {
    auto candidates = spotlightResults(platform);
    const auto standard = standardDirectoryResults(platform);
    candidates.insert(candidates.end(), standard.begin(), standard.end());

    const auto home = platform.files.home();
    std::vector<InstalledApp> apps;
    for (const auto& url : deduplicated(platform, candidates)) {
        if (!isTopLevelApp(url, home)) {
            continue;
        }
        if (auto app = readMetadata(platform, url)) {
            apps.push_back(std::move(*app));
        }
    }
    return apps;
}

std::optional<std::string> bundleIdentifier(const Platform& platform, const FileURL& bundle) {
    const auto parsed = readInfo(platform, bundle);
    const auto* info = parsed ? PropertyList::asDictionary(&*parsed) : nullptr;
    return info == nullptr ? std::nullopt : PropertyList::asString(info->find("CFBundleIdentifier"));
}

} // namespace quillane::AppScanner
