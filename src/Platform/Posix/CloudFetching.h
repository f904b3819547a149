#pragma once

// Whether the calling thread may have the system fetch what lies in a cloud alone. Where it may not, reading such a
// file, listing such a folder, moving either and whatever leads by a path through such a folder fails with EDEADLK: that
// something is missing is not said by it. Asking for the properties of such an item fetches nothing; asking for those of
// what lies in such a folder may. Each system's own; nothing happens on one that has no such thing.
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
