// The user's own files: looking at them through a lens, and what of them can go.
#include "AppLibrary.h"
#include "Characters.h"
#include "Detached.h"
#include "FileFinder.h"
#include "FileSystem.h"
#include "Formatting.h"
#include <set>
#include <string>
#include <utility>

namespace quillane {
namespace {

std::string labelForFiles(const std::vector<UserFile>& files) {
    if (files.size() == 1) {
        return "Remove " + files.front().name();
    }
    return "Remove " + Formatting::number(static_cast<std::int64_t>(files.size())) + " files";
}

std::set<std::string> namesOf(const std::vector<InstalledApp>& apps) {
    std::set<std::string> names;
    for (const auto& app : apps) {
        names.insert(app.name);
    }
    return names;
}

} // namespace

void AppLibrary::setFilesMode(FilesMode mode) {
    if (mode != filesMode()) {
        m_filesMode = mode;
        loadFiles();
    }
}

void AppLibrary::loadFiles() {
    if (const auto& running = *filesTask) {
        running->cancel();
    }
    areFilesStale = false;
    const std::string searched(Text::trimmed(*fileSearchText));
    if (filesMode() == FilesMode::search && searched.empty()) {
        files = std::vector<UserFile>();
        isLoadingFiles = false;
        return;
    }
    isLoadingFiles = true;
    filesTask = m_tasks.start(
        [this, lens = fileLens(searched)](StopToken stop) { return findFiles(lens, std::move(stop)); });
}

// Owns copies of all that the lens looks for: the job may outlive the library.
AppLibrary::FileLens AppLibrary::fileLens(const std::string& searched) const {
    switch (filesMode()) {
    case FilesMode::large:
        return FileFinder::largeAndOld;
    case FilesMode::screenshots:
        return [](const Platform& platform, const StopToken& stop) {
            return FileFinder::collect(platform, std::string(FileFinder::kScreenshotsQuery),
                                       FileFinder::kUserRoots, FileFinder::kNoLimit, stop);
        };
    case FilesMode::installers:
        return [names = namesOf(*apps)](const Platform& platform, const StopToken& stop) {
            return FileFinder::installers(platform, names, stop);
        };
    case FilesMode::search:
        return [searched, kind = *fileSearchKind](const Platform& platform, const StopToken& stop) {
            return FileFinder::search(platform, searched, kind, stop);
        };
    }
    __builtin_unreachable();
}

Task<> AppLibrary::findFiles(FileLens lens, StopToken stop) {
    auto found = co_await detached(
        m_platform.tasks, Priority::userInitiated,
        [platform = m_platform, lens = std::move(lens), stop] { return lens(platform, stop); });
    if (stop.stopRequested()) {
        co_return; // a later load has the word
    }
    foundAnew();
    files = std::move(found);
    isLoadingFiles = false;
    if (!*photosLibraryBytes) {
        const auto measured =
            co_await detached(m_platform.tasks, Priority::userInitiated,
                              [platform = m_platform] { return FileFinder::photosLibraryBytes(platform); });
        photosLibraryBytes = measured;
    }
}

Bytes AppLibrary::totalFileBytes() const {
    return sumOfBytes(*files, [](const UserFile& file) { return file.bytes; });
}

BulkRemoval AppLibrary::removalForFiles(const std::vector<UserFile>& selected) const {
    const auto home = m_platform.files.home();
    SweepPlan plan;
    for (const auto& file : selected) {
        if (!isProtected(file.url)) {
            plan.add(SweepRows::rowFor(file, home));
        }
    }
    return BulkRemoval::make(labelForFiles(selected), plan.takeRows());
}

} // namespace quillane
