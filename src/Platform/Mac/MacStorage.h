#pragma once
#include "FoundationTrash.h"
#include "PosixFileSystem.h"
#include "SpaceReserve.h"
#include "TaskRunner.h"
#include "UserDefaults.h"

namespace quillane {

// All of a Mac that the program writes to, put together once: the files, the Trash and the settings of this user. Files
// and Trash share the room that is kept for a full disk; settings are written by the system's own server.
struct MacStorage {
    // Takes the user's home folder from the account, and lays nothing.
    explicit MacStorage(SpaceReserve::Size size = {});

    // Lays the reserve in a background job, where there is room for it. The storage must outlive the jobs of `tasks`.
    void keepRoom(TaskRunner& tasks);

    PosixFileSystem files;
    SpaceReserve reserve; // in the program's folder of ~/Library/Application Support
    FoundationTrash trash;
    UserDefaults defaults;
};

} // namespace quillane
