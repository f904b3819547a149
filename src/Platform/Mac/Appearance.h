#pragma once
#include <functional>
#include <memory>

namespace quillane {

// The look that the user has chosen for the whole system, and each change of it. Main thread only, once the
// application stands.
class Appearance {
  public:
    struct Values {
        bool isDark = false;
        bool isHighContrast = false;
        bool isMotionReduced = false;
        friend bool operator==(const Values&, const Values&) = default;
    };

    // `changed` is called with what is true from then on, and not for what stays as it was.
    explicit Appearance(std::function<void(Values)> changed);
    ~Appearance();
    Appearance(const Appearance&) = delete;
    Appearance& operator=(const Appearance&) = delete;

    Values values() const;

  private:
    struct System;

    void look();

    std::function<void(Values)> m_changed;
    Values m_last;
    std::unique_ptr<System> m_system; // last: it calls this
};

} // namespace quillane
