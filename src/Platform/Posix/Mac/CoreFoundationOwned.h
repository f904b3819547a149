#pragma once
#include <CoreFoundation/CoreFoundation.h>

namespace quillane {

// Releases what a function of Core Foundation with "Copy" or "Create" in its name gave; nothing when that gave nothing.
template <class Reference>
class CoreFoundationOwned {
  public:
    explicit CoreFoundationOwned(Reference value = nullptr)
        : m_value(value) {}
    CoreFoundationOwned(const CoreFoundationOwned&) = delete;
    CoreFoundationOwned& operator=(const CoreFoundationOwned&) = delete;
    ~CoreFoundationOwned() {
        if (m_value != nullptr) {
            CFRelease(m_value);
        }
    }
    explicit operator bool() const { return m_value != nullptr; }
    Reference get() const { return m_value; }
    // For a function that copies to where it is told. Of one that owns something nothing is copied to.
    Reference* address() { return &m_value; }

  private:
    Reference m_value;
};

} // namespace quillane
