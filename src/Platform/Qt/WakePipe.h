#pragma once
#include <array>

namespace quillane {

// A pipe by which Qt's event loop is woken: what is written makes the end that is read readable. Neither end blocks, and
// no program that we start gets them. The process ends where the system has no pipe: its loop could never be woken.
class WakePipe {
  public:
    WakePipe();
    ~WakePipe();
    WakePipe(const WakePipe&) = delete;
    WakePipe& operator=(const WakePipe&) = delete;

    int readEnd() const { return m_ends[0]; }
    int writeEnd() const { return m_ends[1]; }
    // Makes it readable. Any thread, and handlers of signals too, with the end that is written; errno stays.
    static void wake(int writeEnd);
    // Takes all that was written.
    void empty() const;

  private:
    std::array<int, 2> m_ends{-1, -1};
};

} // namespace quillane
