#pragma once
#include <chrono>
#include <ctime>
#include <time.h> // clock_gettime, which <ctime> need not declare

namespace quillane {

// What the calling thread has used of a processor: unlike a wall clock it does not count other programs.
inline std::chrono::nanoseconds processorTime() {
    timespec time{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

} // namespace quillane
