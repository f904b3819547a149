#pragma once
#include "Date.h"
#include <cstdint>
#include <string>
#include <string_view>

namespace quillane {

// A folder of the machine that a test fills and that goes with all it holds when the test ends. Paths are
// relative to it and are bytes; folders above a path are made as needed. A step that fails ends the test
// program: a test over half a tree would prove nothing.
class TemporaryFolder {
  public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    // Without a trailing slash.
    const std::string& path() const { return m_path; }
    std::string at(std::string_view below) const;

    TemporaryFolder& folder(std::string_view below);
    TemporaryFolder& file(std::string_view below, std::string_view content = "");
    // A file of so many bytes, all of them allocated.
    TemporaryFolder& allocated(std::string_view below, std::int64_t bytes);
    // A file of that length with nothing allocated.
    TemporaryFolder& sparse(std::string_view below, std::int64_t length);
    // A symbolic link with exactly this text.
    TemporaryFolder& link(std::string_view below, std::string_view target);
    TemporaryFolder& hardLink(std::string_view below, std::string_view existing);
    TemporaryFolder& fifo(std::string_view below);
    // The modification date of a file or folder; links are not followed.
    TemporaryFolder& modified(std::string_view below, Date date);

  private:
    std::string m_path;
};

} // namespace quillane
