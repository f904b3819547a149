#pragma once
#include "FakeMetadata.h"
#include "FakeRunningApplications.h"
#include "FakeWorkspace.h"
#include "FaultFileSystem.h"
#include "FaultTrash.h"
#include "FolderTrash.h"
#include "ManualClock.h"
#include "MemoryDefaults.h"
#include "Platform.h"
#include "PosixFileSystem.h"
#include "ScriptedCommandRunner.h"
#include "StepTaskRunner.h"
#include "TemporaryFolder.h"

namespace quillane {

// A small volume on disk with a Trash in which each step can be made to fail, and with time and threads in
// the test's hand.
struct RemovalWorld {
    TemporaryFolder disk;
    PosixFileSystem realFiles{disk.path(), FileURL("/Users/alex")};
    FaultFileSystem files{realFiles};
    ScriptedCommandRunner commands; // nothing can be started
    FakeMetadata metadata;
    StepTaskRunner runner;
    ManualClock clock{runner};
    FakeWorkspace workspace;
    FolderTrash realTrash{disk.path(), FileURL("/Users/alex")};
    FaultTrash trash{realTrash};
    FakeRunningApplications running;
    MemoryDefaults defaults;
    const Platform platform{files, commands, metadata, clock, runner, workspace, trash, running, defaults};

    RemovalWorld() { disk.folder("Users/alex"); }
    bool isThere(const FileURL& url) const { return realFiles.resourceValues(url).ok(); }
    std::string content(const FileURL& url) const {
        return realFiles.read(url, 1 << 20).valueOr("(unreadable)");
    }
};

} // namespace quillane
