#pragma once
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sched.h>
#include <sstream>
#include <string>
#include <sys/mount.h>

namespace quillane {

// Whether what this process mounts below a folder of the machine stays its own. Below a changed root "/" need not be
// a place where something is mounted; then the mount that holds the folder counts.
inline bool keepMountsPrivate(std::string folder) {
    if (::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0) {
        return true;
    }
    for (; !folder.empty(); folder.erase(folder.rfind('/'))) {
        if (::mount("none", folder.c_str(), nullptr, MS_PRIVATE, nullptr) == 0) {
            return true;
        }
    }
    // It lies outside of the changed root and can't be named from here. Fine where nothing is ever passed on.
    const std::ifstream mounts("/proc/1/mountinfo");
    std::stringstream text;
    text << mounts.rdbuf();
    return !text.str().empty() && text.str().find(" shared:") == std::string::npos;
}

// Mounts a small volume over a folder of the machine. Only this process sees it from now on, and what it makes
// there goes with it.
inline void mountOwnVolume(const std::string& path) {
    const bool mayMount = ::unshare(CLONE_NEWNS) == 0 || ::unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0;
    if (!mayMount || !keepMountsPrivate(path) ||
        ::mount("volume", path.c_str(), "tmpfs", 0, "size=8m") != 0) {
        std::perror(path.c_str());
        std::_Exit(1); // a test on the volume of others proves nothing
    }
}

} // namespace quillane
