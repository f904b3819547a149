#pragma once
#include "Clock.h"
#include "StopToken.h"
#include <memory>
#include <mutex>
#include <vector>

namespace quillane {

// The time that each search has for documents that need a program. A search asks once for each of its folders, and one
// request stops all of these runs: by that they are known to be one. A run that nobody can stop is a search of its own.
// Any thread.
class CostlyTime {
  public:
    explicit CostlyTime(Duration ofEach)
        : m_ofEach(ofEach) {}

    // What is left for the search that this token stops; never negative.
    Duration left(const StopToken& search) const;
    void spend(const StopToken& search, Duration time);

  private:
    struct Spent {
        std::weak_ptr<const void> search;
        Duration time;
    };

    const Duration m_ofEach;
    mutable std::mutex m_mutex;
    std::vector<Spent> m_spent; // guarded; of searches that go on
};

} // namespace quillane
