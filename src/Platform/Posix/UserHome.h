#pragma once
#include "FileURL.h"

namespace quillane::UserHome {

// The home folder of who runs this process, as the system's own programs take it. Reads the environment. Each system's
// own.
FileURL path();

// What the environment says, where it is an absolute path; empty otherwise.
FileURL fromEnvironment(const char* variable);
// What the account says; empty where it says nothing.
FileURL fromAccount();

} // namespace quillane::UserHome
