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
    if (m_real.empty()) {
        m_real.push_back(m_platform.files.resolvingSymlinks(m_folder));
        const FileURL unshortened("/private" + m_real.front().path());
        if (m_platform.files.standardized(unshortened) == m_real.front()) {
            m_real.push_back(unshortened);
        }
    }
    return std::ranges::any_of(m_real, [&](const FileURL& real) { return liesBelow(path, real); });
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
