#pragma once

// Whether the calling thread may have the system fetch what lies in a cloud alone. Where it may not, reading such a
// file, listing such a folder and moving either fails with EDEADLK; asking for properties never fetches. Each system's
// own; nothing happens on one that has no such thing.
namespace quillane::CloudFetching {

enum class Policy { asTheProcess, allowed, forbidden };

Policy ofCurrentThread();
void setForCurrentThread(Policy policy);

// Lets the thread that makes it fetch as long as it lives.
class Allowed {
  public:
    Allowed()
        : m_before(ofCurrentThread()) {
        setForCurrentThread(Policy::allowed);
    }
    ~Allowed() { setForCurrentThread(m_before); }
    Allowed(const Allowed&) = delete;
    Allowed& operator=(const Allowed&) = delete;

  private:
    const Policy m_before;
};

} // namespace quillane::CloudFetching
