#pragma once
#include "Date.h"
#include <chrono>
#include <functional>
#include <optional>
#include <vector>

// Which start of the program goes on, where the system knows who else runs.
namespace quillane::OneInstance {

// What is asked of the system. Processes are told by their numbers.
struct System {
    std::function<std::vector<int>()> others;      // that run this program, too, in any order
    std::function<bool(int process)> isThere;      // whether it has not ended
    std::function<bool(int process)> bringForward; // false where the system refuses
    std::function<void(std::chrono::milliseconds)> pause;
    // When it was started; nothing where the system does not tell. Each of two starts is told the same of both.
    std::function<std::optional<Date>(int process)> launched;
    std::function<Date()> now;
    int own = 0; // this process
};

// How long a start waits for the end of those that only pass, and how often it looks.
inline constexpr std::chrono::milliseconds kPatience{10'000};
inline constexpr std::chrono::milliseconds kBetweenLooks{50};

// Whether this start is to end, as another one runs; that has then been asked to come forward. One that `isRelaunched`
// waits first for the end of the oldest, which began it: for as long as that lives, as it may have a sweep to finish
// before it quits, and then nobody would be left. The others get `kPatience` then: they have been brought forward in
// vain or were relaunched too, and of those one remains. Two never go on, also where the other does not come forward;
// of two that start at once the one that was launched earlier goes on, and of two that were launched at the same time
// the one of the smaller number. Blocks.
bool isSecond(const System& system, bool isRelaunched);

} // namespace quillane::OneInstance
