#pragma once
#include "Date.h"
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

    DiskFolder& folder(std::string_view below);
    DiskFolder& file(std::string_view below, std::string_view content = "");
    // A file of so many bytes, all of them allocated.
    DiskFolder& allocated(std::string_view below, std::int64_t bytes);
    // A file of that length with nothing allocated.
    DiskFolder& sparse(std::string_view below, std::int64_t length);
    // A symbolic link with exactly this text.
    DiskFolder& link(std::string_view below, std::string_view target);
    DiskFolder& hardLink(std::string_view below, std::string_view existing);
    DiskFolder& fifo(std::string_view below);
    // The modification date of a file or folder; links are not followed. Content that comes later moves a
    // folder's date again.
    DiskFolder& modified(std::string_view below, Date date);
    // The right to run a file.
    DiskFolder& executable(std::string_view below);

  private:
    std::string m_path;
};

} // namespace quillane
