#pragma once
#include "FileURL.h"
#include "Platform.h"
#include "StopToken.h"
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// The system's search program, as the finders read it.
namespace quillane::SearchProgram {

// Whether a path lies in a folder, at any depth, by its text. The folder itself does not.
bool liesBelow(std::string_view path, const FileURL& folder);

// The lines that it prints for these arguments, in its order, repaired where they are no UTF-8: each is a path, with
// what the arguments ask for behind it. A line that begins with no absolute path, such as a complaint about the query
// or the rest of a name with a line feed in it, is dropped. Empty when it can't be started, and when stopped, which also ends
// the program. Blocks without a limit of time.
std::vector<std::string> lines(const Platform& platform, const std::vector<std::string>& arguments,
                               const StopToken& stop = {});

// What a search below one folder may name. The line feed in a name breaks the line of its path, and the second half
// could be any path at all; what does not lie below the folder that was asked for is no answer.
class Below {
  public:
    // The platform outlives this.
    Below(const Platform& platform, FileURL folder)
        : m_platform(platform)
        , m_folder(std::move(folder)) {}

    // By the text of the path. The index may know the folder by where it really is, in the form without "/private"
    // or with it.
    bool holds(std::string_view path);

  private:
    const Platform& m_platform;
    FileURL m_folder;
    std::vector<FileURL> m_real; // asked for once and only where it is needed
};

} // namespace quillane::SearchProgram
