#include "SearchProgram.h"
#include "Characters.h"
#include "CommandRunner.h"
#include "FileSystem.h"
#include <algorithm>

namespace quillane::SearchProgram {
bool liesBelow(std::string_view path, const FileURL& folder) {
    const auto& above = folder.path();
    return path.size() > above.size() && path.starts_with(above) &&
           (path[above.size()] == '/' || above.ends_with('/'));
}

bool Below::holds(std::string_view path) {
    if (liesBelow(path, m_folder)) {
        return true;
    }
    if (!m_real) {
        m_real = m_platform.files.resolvingSymlinks(m_folder);
    }
    return liesBelow(path, *m_real);
}

std::vector<std::string> lines(const Platform& platform, const std::vector<std::string>& arguments,
                               const StopToken& stop) {
    const auto printed = platform.commands.run("/usr/bin/mdfind", arguments, stop);
    const auto output = printed ? Text::repairedUtf8(*printed) : std::string();
    std::vector<std::string> found;
    for (std::size_t begin = 0; begin < output.size();) {
        const auto end = std::min(output.find('\n', begin), output.size());
        if (output[begin] == '/') {
            found.push_back(output.substr(begin, end - begin));
        }
        begin = end + 1;
    }
    return found;
}

} // namespace quillane::SearchProgram
