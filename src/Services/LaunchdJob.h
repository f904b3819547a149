#pragma once
#include "FileURL.h"
#include "Platform.h"
#include <cstdint>
#include <optional>
#include <string>

// What a property list in a folder of launchd's says of the job that it describes. Everything here blocks; any thread.
namespace quillane::LaunchdJob {

// The largest list that is read. Real ones hold a few KB.
inline constexpr std::size_t kLargestList = std::size_t{1} << 20U;

// The keys that we ask for, each as the list has it; what is of another kind than the key wants counts as absent.
struct Description {
    std::optional<std::string> label;
    // "Program", else the first of "ProgramArguments" when those are texts without exception. May be empty.
    std::optional<std::string> program;
    // The first of "ProgramArguments", whatever the others are.
    std::optional<std::string> firstArgument;
    bool runAtLoad = false;
    bool keepAlive = false; // also for a dictionary of conditions, whatever they say
    std::optional<std::int64_t> interval;
};

// Nothing for what can't be read or is larger than kLargestList, for a damaged list and for one that is no dictionary.
std::optional<Description> read(const Platform& platform, const FileURL& propertyList);

// Whether launchd would find this program, links followed: an absolute path at which something is, or a name without
// a slash in one of the folders where launchd looks for it. Any other text names nothing.
bool isThere(const Platform& platform, const std::string& program);

// Whether the list names a program and that program is there: its "Program", else the first of its
// "ProgramArguments". False for a list that can't be read, is damaged or larger than kLargestList, and for one whose
// name launchd leaves alone.
bool hasItsProgram(const Platform& platform, const FileURL& propertyList);

} // namespace quillane::LaunchdJob
