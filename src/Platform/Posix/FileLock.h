#pragma once
#include "Descriptor.h"
#include <string>

namespace quillane {

// The lock of a file, which other instances heed as long as this lives. It goes with the process that holds it,
// however that ends. The file stays, as taking it away would let two hold locks of two files.
class FileLock {
  public:
    // Makes the file at this path of the machine and the folders above it, and waits until nobody else holds its lock.
    // Where no such file can be made, or nothing can be locked, nobody is waited for.
    explicit FileLock(const std::string& path);

  private:
    Descriptor m_file;
};

} // namespace quillane
