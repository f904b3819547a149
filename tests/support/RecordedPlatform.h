#pragma once
#include "Platform.h"
#include "RecordingFileSystem.h"

namespace quillane {

// The same platform, but for its files.
inline Platform withFiles(const Platform& platform, FileSystem& files) {
    return {files,
            platform.commands,
            platform.metadata,
            platform.clock,
            platform.tasks,
            platform.workspace,
            platform.trash,
            platform.runningApplications,
            platform.defaults,
            platform.previews,
            platform.directories,
            platform.notifications,
            platform.power};
}

// The same platform, but for the programs that it runs.
inline Platform withCommands(const Platform& platform, CommandRunner& commands) {
    return {platform.files,    commands,           platform.metadata,    platform.clock,
            platform.tasks,    platform.workspace, platform.trash,       platform.runningApplications,
            platform.defaults, platform.previews,  platform.directories, platform.notifications,
            platform.power};
}

// The same platform, but for its threads.
inline Platform withTasks(const Platform& platform, TaskRunner& tasks) {
    return {platform.files,
            platform.commands,
            platform.metadata,
            platform.clock,
            tasks,
            platform.workspace,
            platform.trash,
            platform.runningApplications,
            platform.defaults,
            platform.previews,
            platform.directories,
            platform.notifications,
            platform.power};
}

// A platform with a record of what is asked of its files. The other one outlives this.
struct RecordedPlatform {
    explicit RecordedPlatform(const Platform& other)
        : files(other.files)
        , platform(withFiles(other, files)) {}

    RecordingFileSystem files;
    const Platform platform;
};

} // namespace quillane
