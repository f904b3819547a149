#pragma once
// The Mac's policy of a thread towards what lies in a cloud, for a trial on another system; SystemCalls.cpp.
inline constexpr int IOPOL_TYPE_VFS_MATERIALIZE_DATALESS_FILES = 3;
inline constexpr int IOPOL_SCOPE_THREAD = 1;
inline constexpr int IOPOL_MATERIALIZE_DATALESS_FILES_DEFAULT = 0;
inline constexpr int IOPOL_MATERIALIZE_DATALESS_FILES_OFF = 1;
inline constexpr int IOPOL_MATERIALIZE_DATALESS_FILES_ON = 2;

extern "C" int getiopolicy_np(int type, int scope);
extern "C" int setiopolicy_np(int type, int scope, int policy);
