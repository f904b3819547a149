#pragma once
#include "Defaults.h"
#include <atomic>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quillane {

// What one life of the program does, in this order.
struct Step {
    enum class Kind { writes, sweep, putBack };
    Kind kind = Kind::writes;
    int writes = 0;                // of the settings
    std::vector<std::string> rows; // of a sweep: paths below the home folder
    bool empties = false;          // the Trash, before anything moves
};

struct Plan {
    std::string label; // of its sweeps
    std::vector<Step> steps;
    // The life ends right after so many calls of the system, or right after so many that write, the last of which has
    // written a half. Never when negative.
    long callsToLive = -1;
    long writesToLive = -1;
};

// How far a life has come. Shared with whoever kills it; a count of what has begun is raised before anything is
// done, one of what has ended after everything is.
struct Progress {
    std::atomic<int> begun = 0; // steps
    std::atomic<int> ended = 0;
    std::atomic<std::int64_t> writesBegun = 0; // of the settings, over all lives
    std::atomic<std::int64_t> writesEnded = 0;
    std::atomic<long> calls = 0; // of the system
    std::atomic<long> writeCalls = 0;
    std::atomic<int> failures = 0; // rows that could not be moved
};

// The settings are written a number of times; each number has its key and its value.
std::string_view keyOfWrite(std::int64_t number);
Defaults::Value valueOfWrite(std::int64_t number);
constexpr std::int64_t kKeysOfWrites = 3; // the keys take turns

// One start of the program over the home folder, with everything but the window: the adapters of the machine, real
// threads, the real clock. Protects `protectedPath`. Does not return.
[[noreturn]] void live(const std::string& home, const std::string& protectedPath, const Plan& plan,
                       Progress& progress);

} // namespace quillane
