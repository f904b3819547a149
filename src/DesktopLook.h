#pragma once
#include <memory>

namespace quillane {

class TaskRunner;

// Has the window be light or dark, move or not, and have lines and text, as the desktop wants it, from its making to its
// end: tells Look. Main thread only. The tasks outlive it.
class DesktopLook {
  public:
    explicit DesktopLook(TaskRunner& tasks);
    ~DesktopLook();
    DesktopLook(const DesktopLook&) = delete;
    DesktopLook& operator=(const DesktopLook&) = delete;

  private:
    struct Sources;
    std::unique_ptr<Sources> m_sources;
};

} // namespace quillane
