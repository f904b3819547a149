#pragma once
// The Mac's list of mounts, for a trial on another system; SystemCalls.cpp.
#include <fcntl.h>
#include <sys/param.h>
#include <sys/types.h>

struct statfs {
    fsid_t f_fsid;
    char f_mntonname[1024];
};

inline constexpr int MNT_NOWAIT = 2;
inline constexpr int F_GETPATH = 50;

extern "C" int getfsstat(struct statfs* mounts, int bytes, int flags);
extern "C" int fstatfs(int descriptor, struct statfs* mount);
extern "C" int getPathOrFcntl(int descriptor, int command, char* path);
#define fcntl getPathOrFcntl
