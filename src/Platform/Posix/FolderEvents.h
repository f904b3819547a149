#pragma once
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quillane {

// The system's word on what happens directly inside folders, and one thread's wait for it.
class FolderEvents {
  public:
    // Stands for a folder. A folder that is added twice may have the same mark twice. None is used again soon.
    using Mark = int;
    struct Happened {
        std::vector<Mark> marks; // in no order, some perhaps twice
        bool anywhere = false;   // it was more than the system keeps: any folder may have changed
    };

    FolderEvents();
    ~FolderEvents();
    FolderEvents(const FolderEvents&) = delete;
    FolderEvents& operator=(const FolderEvents&) = delete;

    // From now on tells what is made, removed or renamed directly in the folder, and what becomes of the folder
    // itself. Links at the end of the path are followed. Nothing when that can't be: no folder, refused, no room for
    // another. One thread at a time, as is drop().
    std::optional<Mark> add(const std::string& path);
    // What happens from now on is not told of this mark; that it has ended may be. The folder may have gone.
    void drop(Mark mark);

    // Blocks, without using CPU, until something has happened. Nothing once interrupt() was called, and when the
    // system will tell no more. One thread at a time, beside the one that adds.
    std::optional<Happened> wait();
    // Any thread. For good.
    void interrupt();

  private:
    struct System;
    std::unique_ptr<System> m_system;
};

} // namespace quillane
