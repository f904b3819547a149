#include "FileFinder.h"
#include "Characters.h"
#include "Crew.h"
#include "FileSystem.h"
#include "FootprintCalculator.h"
#include "Metadata.h"
#include "SearchProgram.h"
#include <algorithm>
#include <functional>
#include <unordered_set>
#include <utility>

namespace quillane::FileFinder {
namespace {

std::string largeQuery() {
    return "kMDItemFSSize >= " + std::to_string(UserFile::kLargeBytes) +
           " && kMDItemContentType != 'public.folder'";
}
constexpr const char* kInstallersQuery = "kMDItemContentTypeTree == 'com.apple.disk-image' || "
                                         "kMDItemContentTypeTree == 'com.apple.installer-package-archive' || "
                                         "kMDItemContentTypeTree == 'public.zip-archive'";
constexpr std::array<std::string_view, 2> kInstallerRoots = {"Downloads", "Desktop"};
constexpr std::size_t kMostSearched = 300;

// A file of this length or less is never taken for a placeholder by what it allocates.
constexpr Bytes kLongestWithoutPlaceholder = 1'000'000;
// What allocates less than this part of its length has its content elsewhere.
constexpr Bytes kPlaceholderPart = 50;

// Threads beside the job's own, and the files that one of them describes at a time.
constexpr int kHelpers = 3;
constexpr std::size_t kFilesAtOnce = 64;

std::vector<std::string> mdfind(const Platform& platform, const std::string& query, const FileURL& folder,
                                const StopToken& stop) {
    return SearchProgram::lines(platform, {"-onlyin", folder.path(), query}, stop);
}

bool isListed(std::string_view path) {
    return path.find(".photoslibrary/") == std::string_view::npos &&
           path.find("/.") == std::string_view::npos;
}

std::vector<FileURL> found(const Platform& platform, const std::string& query,
                           std::span<const std::string_view> roots, std::size_t limit,
                           const StopToken& stop) {
    std::unordered_set<std::string> seen;
    std::vector<FileURL> urls;
    for (const auto root : roots) {
        const auto folder = platform.files.home().appending(root);
        if (stop.stopRequested() || !platform.files.exists(folder)) {
            continue;
        }
        SearchProgram::Below below(platform, folder);
        for (auto& path : mdfind(platform, query, folder, stop)) {
            if (!below.holds(path) || !seen.insert(path).second || !isListed(path)) {
                continue;
            }
            urls.emplace_back(std::move(path));
            if (urls.size() >= limit) {
                return urls;
            }
        }
    }
    return urls;
}

// Each worker writes places of its own, so that the order stays that of the search whoever is first.
std::vector<UserFile> described(const Platform& platform, const std::vector<FileURL>& urls,
                                const StopToken& stop) {
    std::vector<std::optional<UserFile>> places(urls.size());
    std::vector<std::size_t> beginnings;
    for (std::size_t begin = 0; begin < urls.size(); begin += kFilesAtOnce) {
        beginnings.push_back(begin);
    }
    const auto work = [&](std::size_t begin, const auto& /*others*/) {
        const auto end = std::min(begin + kFilesAtOnce, urls.size());
        for (auto i = begin; i < end && !stop.stopRequested(); ++i) {
            places[i] = describe(platform, urls[i]);
        }
    };
    Crew<std::size_t>::run(platform.tasks, Priority::userInitiated, kHelpers, std::move(beginnings), work);

    std::vector<UserFile> files;
    for (auto& place : places) {
        if (place) {
            files.push_back(std::move(*place));
        }
    }
    return files;
}

bool isPlaceholder(const Platform& platform, const UserFile& file) {
    return platform.files.isAwaitingDownload(file.url) || (file.logicalBytes > kLongestWithoutPlaceholder &&
                                                           file.bytes < file.logicalBytes / kPlaceholderPart);
}

std::string withQuotesEscaped(const std::string& text) {
    std::string escaped;
    for (const char c : text) {
        if (c == '"') {
            escaped += '\\';
        }
        escaped += c;
    }
    return escaped;
}

} // namespace

bool isInUserFolders(const FileURL& url, const FileURL& home) {
    return std::ranges::any_of(kUserRoots, [&](std::string_view root) {
        return SearchProgram::liesBelow(url.path(), home.appending(root));
    });
}

std::vector<UserFile> largeAndOld(const Platform& platform, const StopToken& stop) {
    return collect(platform, largeQuery(), kUserRoots, kNoLimit, stop);
}

std::vector<UserFile> installers(const Platform& platform, const std::set<std::string>& installedAppNames,
                                 const StopToken& stop) {
    std::set<std::string> names;
    for (const auto& name : installedAppNames) {
        names.insert(Text::lowercasedLettersAndNumbers(name));
    }
    names.erase(""); // would begin every name
    auto files = collect(platform, kInstallersQuery, kInstallerRoots, kNoLimit, stop);
    for (auto& file : files) {
        const auto name =
            Text::lowercasedLettersAndNumbers(file.url.deletingPathExtension().lastPathComponent());
        file.installsAnInstalledApp = std::ranges::any_of(
            names, [&](const std::string& installed) { return name.starts_with(installed); });
    }
    return files;
}

std::vector<UserFile> search(const Platform& platform, const std::string& text,
                             std::optional<UserFile::Kind> kind, const StopToken& stop) {
    const auto pattern = "\"*" + withQuotesEscaped(text) + "*\"cd";
    auto query = "(kMDItemDisplayName == " + pattern + " || kMDItemTextContent == " + pattern + ")";
    if (const auto clause = kind ? contentTypeTree(*kind) : std::nullopt) {
        query.append(" && ").append(*clause);
    }
    return collect(platform, query, kUserRoots, kMostSearched, stop);
}

std::optional<Bytes> photosLibraryBytes(const Platform& platform) {
    const auto library = platform.files.home().appending("Pictures/Photos Library.photoslibrary");
    return platform.files.exists(library) ? std::optional(FootprintCalculator::size(platform, library))
                                          : std::nullopt;
}

std::vector<UserFile> collect(const Platform& platform, const std::string& query,
                              std::span<const std::string_view> roots, std::size_t limit,
                              const StopToken& stop) {
    auto files = described(platform, found(platform, query, roots, limit, stop), stop);
    std::ranges::stable_sort(files, std::ranges::greater(), &UserFile::bytes);
    return files;
}

std::optional<UserFile> describe(const Platform& platform, const FileURL& url) {
    auto file = describeOnThisDisk(platform, url);
    if (file) {
        file->isCloudPlaceholder = isPlaceholder(platform, *file);
    }
    return file;
}

std::optional<UserFile> describeOnThisDisk(const Platform& platform, const FileURL& url) {
    const auto values = platform.files.resourceValues(url);
    if (!values || values->type != EntryType::regular) {
        return std::nullopt;
    }
    UserFile file;
    file.url = url;
    file.kind = UserFile::kindOf(url);
    file.logicalBytes = values->fileSize;
    file.bytes = values->totalAllocated.value_or(file.logicalBytes);
    const auto used = platform.metadata.lastUsed(url);
    file.lastUsed = used ? used : values->contentModified;
    return file;
}

std::optional<std::string_view> contentTypeTree(UserFile::Kind kind) {
    switch (kind) {
    case UserFile::Kind::image:
        return "kMDItemContentTypeTree == 'public.image'";
    case UserFile::Kind::video:
        return "kMDItemContentTypeTree == 'public.movie'";
    case UserFile::Kind::audio:
        return "kMDItemContentTypeTree == 'public.audio'";
    case UserFile::Kind::pdf:
        return "kMDItemContentTypeTree == 'com.adobe.pdf'";
    case UserFile::Kind::document:
        return "(kMDItemContentTypeTree == 'public.text' || "
               "kMDItemContentTypeTree == 'public.composite-content')";
    case UserFile::Kind::archive:
        return "kMDItemContentTypeTree == 'public.archive'";
    case UserFile::Kind::diskImage:
        return "kMDItemContentTypeTree == 'com.apple.disk-image'";
    case UserFile::Kind::installer:
        return "kMDItemContentTypeTree == 'com.apple.installer-package-archive'";
    case UserFile::Kind::other:
        return std::nullopt;
    }
    __builtin_unreachable();
}

} // namespace quillane::FileFinder
