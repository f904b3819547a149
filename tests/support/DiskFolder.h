#pragma once
#include "Date.h"
#include "FileURL.h"
#include <cstdint>
#include <string>
#include <string_view>

namespace quillane {

// Fills a folder of the machine. Paths are bytes below that folder, with or without a leading slash; folders
// above a path are made as needed. A step that fails ends the process: a test over half a tree would prove
// nothing.
class DiskFolder {
  public:
    // The folder is made when it is missing. Nothing is removed when this goes.
    explicit DiskFolder(std::string path);

    // Without a trailing slash.
    const std::string& path() const { return m_path; }
    std::string at(std::string_view below) const;
    FileURL url(std::string_view below = "") const { return FileURL(at(below)); }
    // What a file takes on the disk: st_blocks * 512.
    std::int64_t allocationOf(std::string_view below) const;

    DiskFolder& folder(std::string_view below);
    DiskFolder& file(std::string_view below, std::string_view content = "");
    // A file of so many bytes, all of them allocated.
    DiskFolder& allocated(std::string_view below, std::int64_t bytes);
    // A file of that length with nothing allocated.
    DiskFolder& sparse(std::string_view below, std::int64_t length);
    // A file that is there gets longer: its first `allocated` bytes are really on the disk, what follows up to
    // `length` is a hole. Content stays, and nothing is cut.
    DiskFolder& extend(std::string_view below, std::int64_t allocated, std::int64_t length);
    // A symbolic link with exactly this text.
    DiskFolder& link(std::string_view below, std::string_view target);
    DiskFolder& hardLink(std::string_view below, std::string_view existing);
    DiskFolder& fifo(std::string_view below);
    // A socket that a program has left.
    DiskFolder& socket(std::string_view below);
    // A device that gives zeros for ever. Left out where only root may make one.
    DiskFolder& zeroDevice(std::string_view below);
    // A chain of `levels` folders called "d" below a folder, each in the one before, with a file called "leaf" in
    // the last. The path may be far too long for one call of the system.
    DiskFolder& chain(std::string_view below, int levels, std::string_view content = "");
    // The modification date of a file or folder; links are not followed. Content that comes later moves a
    // folder's date again.
    DiskFolder& modified(std::string_view below, Date date);
    // An extended attribute, by the Mac's name. Left out on a volume that keeps none.
    DiskFolder& attribute(std::string_view below, const std::string& name, std::string_view value);
    // The right to run a file.
    DiskFolder& executable(std::string_view below);
    DiskFolder& permissions(std::string_view below, unsigned int mode);
    // As another program would, in the middle of something.
    DiskFolder& rename(std::string_view from, std::string_view to);
    // A file or a folder with all it holds.
    DiskFolder& remove(std::string_view below);

  private:
    std::string m_path;
};

} // namespace quillane
