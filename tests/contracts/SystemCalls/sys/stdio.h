#pragma once
// The Mac's move that overwrites nothing, for a trial on another system; SystemCalls.cpp.
#include <fcntl.h>

inline constexpr int O_SEARCH = O_PATH;
inline constexpr unsigned RENAME_EXCL = 4;

extern "C" int renameatx_np(int fromFolder, const char* from, int toFolder, const char* to, unsigned flags);
