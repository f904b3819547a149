#pragma once
#include "Descriptor.h"
#include <chrono>
#include <string>

namespace quillane {

// Which of a person's starts of the program is the first over one settings file: the one that holds the lock of a file
// beside it. The lock goes with the process that holds it, however that ends, and no program that it starts inherits
// it. The file stays, as taking it away would let two programs hold locks of two files. One thread.
class InstanceLock {
  public:
    enum class Holder {
        self,
        other,
        unknown // no such file can be made, or its file system has no locks
    };

    // `path` is a path of the machine; its folder is made when the lock is first asked for.
    explicit InstanceLock(std::string path);
    // Beside the settings of this path.
    static std::string pathBeside(const std::string& settings);

    // Takes the lock unless another process has it. Returns at once.
    Holder take();
    // The same, and waits until a process that has it lets go of it, but no longer than `patience`.
    Holder takeWithin(std::chrono::milliseconds patience);
    // Names the file on this machine, by whatever path it is reached. Empty before the lock was asked for, and where
    // there is no file.
    const std::string& name() const { return m_name; }

  private:
    bool open();
    // Whether the file is still the one that its path leads to.
    bool isInPlace() const;

    std::string m_path;
    std::string m_name;
    Descriptor m_file;
    bool m_isHeld = false;
};

} // namespace quillane
