#pragma once
#include "Bytes.h"
#include "Date.h"
#include "FileURL.h"
#include <string>
#include <string_view>
#include <sys/types.h>

namespace quillane {

// A folder for one test, with words to fill it. Removed with everything below it at the end, whatever its
// permissions and depth. TMPDIR says where; without it, it may lie in memory. Paths are relative to it; folders on the way are made. A step that fails ends the
// test program, because nothing that follows would mean anything.
class TemporaryFolder {
  public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    // Absolute, links resolved. "" is the folder itself.
    FileURL url(std::string_view path = "") const;
    const std::string& path() const { return m_path; }

    FileURL folder(std::string_view path) const;
    FileURL file(std::string_view path, std::string_view bytes = "") const;
    // A file of this logical length that takes no space for its content.
    FileURL sparse(std::string_view path, Bytes length) const;
    // A symbolic link with this very text.
    FileURL link(std::string_view path, std::string_view text) const;
    // Another name of a file that exists.
    FileURL hardLink(std::string_view path, std::string_view existing) const;
    FileURL fifo(std::string_view path) const;
    // A chain of `levels` folders called "d" below `path`, each in the one before, with a file called "leaf"
    // of these bytes in the last. The path may be far too long for one call of the system.
    void chain(std::string_view path, int levels, std::string_view bytes = "") const;

    void permissions(std::string_view path, mode_t mode) const;
    void modified(std::string_view path, Date date) const;
    // As another program would, in the middle of something.
    void rename(std::string_view from, std::string_view to) const;
    void remove(std::string_view path) const;

    // What the system says of a file: st_blocks * 512.
    Bytes allocated(std::string_view path) const;

  private:
    void makeParent(const std::string& path) const;
    std::string m_path;
};

// For the length of a block the process has the rights of an ordinary user, so that permissions count even
// where tests run as root. The temporary folder stays reachable; what a test locks does not.
class OrdinaryUser {
  public:
    OrdinaryUser();
    ~OrdinaryUser();
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;

  private:
    bool m_wasRoot;
};

} // namespace quillane
