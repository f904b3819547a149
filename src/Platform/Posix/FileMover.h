#pragma once
#include "Result.h"
#include <string>

// The only source that renames. Works on open folders, never follows a link in the last component, and never
// copies: what can't be renamed stays where it is.
namespace quillane::FileMover {

// The flags of open(2) for a folder whose entries are only moved: it may be one that can't be listed.
extern const int kOpenUnlisted;

// Moves an entry to a name that must be free. The error for a taken name is "file exists".
// What was moved though the system told an error is a success.
Result<> move(int fromFolder, const std::string& fromName, int toFolder, const std::string& toName);

// The system's own call for it, once; errno tells why not. For move() alone, which asks afterwards what really happened.
bool renameToFree(int fromFolder, const char* fromName, int toFolder, const char* toName);

// Puts a file of our own making in the place of an older one, in one step, within one folder.
Result<> replace(int folder, const std::string& temporaryName, const std::string& name);

} // namespace quillane::FileMover
