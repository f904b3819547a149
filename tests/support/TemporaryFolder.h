#pragma once
#include "DiskFolder.h"

namespace quillane {

// A new empty folder that a test fills and that goes with all it holds when the test ends, whatever its depth
// and permissions. It lies where TMPDIR says; a disk can take a millisecond for each small file, memory does not.
class TemporaryFolder : public DiskFolder {
  public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
};

} // namespace quillane
