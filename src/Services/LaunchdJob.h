#pragma once
#include "FileURL.h"
#include "Platform.h"

// What a property list in a folder of launchd's says of the job that it describes.
namespace quillane::LaunchdJob {

// The largest list that is read. Real ones hold a few KB.
inline constexpr std::size_t kLargestList = std::size_t{1} << 20U;

// Whether the list names a program and that program is there, links followed: its "Program", else the first of its
// "ProgramArguments". False for a list that can't be read, is damaged or larger than kLargestList, and for one whose
// name launchd leaves alone. Blocks; any thread.
bool hasItsProgram(const Platform& platform, const FileURL& propertyList);

} // namespace quillane::LaunchdJob
