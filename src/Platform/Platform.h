#pragma once

namespace quillane {

class Clock;
class CommandRunner;
class Defaults;
class FileSystem;
class Metadata;
class Previews;
class RunningApplications;
class TaskRunner;
class Trash;
class Workspace;

// Pictures nothing, and has no state: what stands in a platform that names no previews.
Previews& absentPreviews();

// The ports of the program, bundled. Passed by const reference; there is no global. Whoever builds it owns
// the adapters and keeps them alive for as long as anything holds the bundle.
struct Platform {
    FileSystem& files;
    CommandRunner& commands;
    Metadata& metadata;
    Clock& clock;
    TaskRunner& tasks;
    Workspace& workspace;
    Trash& trash;
    RunningApplications& runningApplications;
    Defaults& defaults;
    Previews& previews = absentPreviews();
};

} // namespace quillane
