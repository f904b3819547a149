#include "SystemCalls.h"
#include <array>
#include <cerrno>
#include <climits>
#include <cstdint>
#include <cstdio>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stdio.h>
#include <unistd.h>

namespace quillane::SystemCalls {
namespace {

thread_local int pools = 0;
thread_local int policy = IOPOL_MATERIALIZE_DATALESS_FILES_DEFAULT;

} // namespace

Answers& answers() {
    static Answers answers;
    return answers;
}

int heldPools() {
    return pools;
}

} // namespace quillane::SystemCalls

using namespace quillane::SystemCalls;

extern "C" void* objc_autoreleasePoolPush(void) {
    return reinterpret_cast<void*>(static_cast<std::intptr_t>(++pools));
}

extern "C" void objc_autoreleasePoolPop(void* pool) {
    pools = static_cast<int>(reinterpret_cast<std::intptr_t>(pool)) - 1;
}

int renameatx_np(int fromFolder, const char* from, int toFolder, const char* to, unsigned flags) {
    if (flags != RENAME_EXCL) {
        errno = EINVAL;
        return -1;
    }
    if (policy != IOPOL_MATERIALIZE_DATALESS_FILES_ON) {
        errno = EDEADLK; // as for what lies in a cloud alone
        return -1;
    }
    if (answers().move) {
        return answers().move(fromFolder, from, toFolder, to) ? 0 : -1;
    }
    return ::renameat2(fromFolder, from, toFolder, to, RENAME_NOREPLACE);
}

int getiopolicy_np(int type, int scope) {
    return type == IOPOL_TYPE_VFS_MATERIALIZE_DATALESS_FILES && scope == IOPOL_SCOPE_THREAD ? policy : -1;
}

int setiopolicy_np(int type, int scope, int wanted) {
    if (type != IOPOL_TYPE_VFS_MATERIALIZE_DATALESS_FILES || scope != IOPOL_SCOPE_THREAD) {
        return -1;
    }
    policy = wanted;
    return 0;
}

int getfsstat(struct statfs* mounts, int bytes, int /*flags*/) {
    const auto& told = answers().mounts;
    if (mounts == nullptr) {
        return static_cast<int>(told.size());
    }
    int count = 0;
    for (const auto& path : told) {
        if (static_cast<int>((static_cast<std::size_t>(count) + 1) * sizeof *mounts) > bytes) {
            break;
        }
        mounts[count] = {};
        path.copy(mounts[count].f_mntonname, sizeof mounts[count].f_mntonname - 1);
        ++count;
    }
    return count;
}

int fstatfs(int /*descriptor*/, struct statfs* mount) {
    *mount = {};
    return 0;
}

int getPathOrFcntl(int descriptor, int command, char* path) {
    std::array<char, PATH_MAX> real{};
    const auto link = "/proc/self/fd/" + std::to_string(descriptor);
    if (command != F_GETPATH || ::readlink(link.c_str(), real.data(), real.size() - 1) < 0) {
        errno = EINVAL;
        return -1;
    }
    const auto told = answers().paths.find(real.data());
    const std::string text = told == answers().paths.end() ? std::string(real.data()) : told->second;
    path[text.copy(path, MAXPATHLEN - 1)] = '\0';
    return 0;
}
