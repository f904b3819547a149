#pragma once
#include "Descriptor.h"
#include <chrono>
#include <cstddef>
#include <string>

namespace quillane {

// Which of a person's starts of the program is the first over one settings file: the one that holds the lock of a file
// beside it. The lock goes with the process that holds it, however that ends, and no program that it starts inherits
// it. The file stays, as taking it away would let two programs hold locks of two files. It is this user's alone, and
// says under which name whoever holds it can be told something. One thread.
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
    // Writes into the file under which name this start can be told something, for the others. False when it could not
    // be written. For the one that holds the lock; where there are no locks, for whoever goes on.
    bool writeName(const std::string& name);
    // The name with which the file begins now: of whoever holds the lock, or has held it. Empty when there is no such name. A file of
    // another user's names nobody.
    std::string readName() const;
    // Letters from a to f and digits.
    static constexpr std::size_t kLengthOfName = 32;

  private:
    bool open();
    // Whether the file is still the one that its path leads to.
    bool isInPlace() const;

    std::string m_path;
    Descriptor m_file;
    bool m_isHeld = false;
};

} // namespace quillane
