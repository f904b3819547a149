#pragma once
#include <cstdlib>
#include <filesystem>
#include <string>
#include <system_error>

namespace quillane {

// A new empty folder of the system's temporary folder, gone with its content when this goes. Its path has its
// links resolved, so that it compares with what the system answers.
class ScratchFolder {
  public:
    ScratchFolder() {
        std::string pattern =
            (std::filesystem::canonical(std::filesystem::temp_directory_path()) / "scratch-XXXXXX");
        m_path = ::mkdtemp(pattern.data());
    }
    ~ScratchFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    const std::string& path() const { return m_path; }
    std::string path(const std::string& name) const { return m_path + "/" + name; }

  private:
    std::string m_path;
};

} // namespace quillane
