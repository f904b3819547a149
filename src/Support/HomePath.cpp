#include "HomePath.h"

namespace quillane {

std::string pathWithHomeAsTilde(const FileURL& url, const FileURL& home) {
    const auto& folder = home.path();
    std::string text = url.path();
    for (auto at = text.find(folder); at != std::string::npos; at = text.find(folder, at + 1)) {
        text.replace(at, folder.size(), "~");
    }
    return text;
}

std::string expandingTilde(const std::string& path, const FileURL& home) {
    const bool leads = path == "~" || path.starts_with("~/");
    return leads ? home.path() + path.substr(1) : path;
}

} // namespace quillane
