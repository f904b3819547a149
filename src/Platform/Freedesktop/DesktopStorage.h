#pragma once
#include "FileDefaults.h"
#include "FreedesktopTrash.h"
#include "PosixFileSystem.h"
#include "SpaceReserve.h"
#include "TaskRunner.h"

namespace quillane {

// All of a Linux machine that the program writes to, put together once: the files, the Trash and the settings of this
// user, which share the room that is kept for a full disk.
struct DesktopStorage {
    // Takes the user's folders from the environment and the account, and lays nothing. `clock` must outlive it.
    explicit DesktopStorage(const Clock& clock, SpaceReserve::Size size = {});

    // Lays the reserve in a background job, where there is room for it. The storage must outlive the jobs of `tasks`.
    void keepRoom(TaskRunner& tasks);

    PosixFileSystem files;
    SpaceReserve reserve; // beside the settings
    FreedesktopTrash trash;
    FileDefaults defaults;
};

} // namespace quillane
