#pragma once
#include <cstdio>
#include <cstdlib>
#include <unistd.h>

namespace quillane {

// For the length of a block the process has the rights of an ordinary user, so that permissions count even
// where tests run as root. Temporary folders stay reachable; what a test locks does not.
class OrdinaryUser {
  public:
    OrdinaryUser()
        : m_wasRoot(::geteuid() == 0) {
        become(kNobody);
    }
    ~OrdinaryUser() { become(0); }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;

  private:
    static constexpr uid_t kNobody = 65534;

    void become(uid_t user) const {
        if (m_wasRoot && ::seteuid(user) != 0) {
            std::perror("seteuid");
            std::abort(); // a test with other rights than it believes proves nothing
        }
    }

    bool m_wasRoot;
};

} // namespace quillane
