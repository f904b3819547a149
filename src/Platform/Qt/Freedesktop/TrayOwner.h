#pragma once
#include <functional>
#include <memory>

namespace quillane {

// Whether a panel of X11 takes windows of other programs into its tray, and when that changes. There is none on other
// displays. Main thread only; nothing is polled.
class TrayOwner final {
  public:
    // `changed` is called when isThere() has changed, at a later turn, and not after this is gone.
    explicit TrayOwner(std::function<void()> changed);
    ~TrayOwner();
    TrayOwner(const TrayOwner&) = delete;
    TrayOwner& operator=(const TrayOwner&) = delete;

    bool isThere() const;

  private:
    class Watch;
    std::unique_ptr<Watch> m_watch; // empty where there is nothing to watch
};

} // namespace quillane
