#pragma once
#include "Calendar.h"
#include <cstdint>
#include <cstdlib>
#include <mutex>
#include <string>

namespace quillane {

// The user's calendar in the time zone that the machine has at the moment. The system keeps the zone as a link
// into its time zone files, and another zone is another link.
class LocalCalendar {
  public:
    static constexpr const char* kLink = "/etc/localtime";

    // `environment` is the value of TZ, null when it is not set. Where it is, it decides for this process, as it
    // does for every other, and the link is not looked at.
    // NOLINTNEXTLINE(concurrency-mt-unsafe): nobody sets it
    explicit LocalCalendar(std::string link = kLink, const char* environment = std::getenv("TZ"));

    // Looks at the link anew: two calls of the system, and more only when it has become another. Any thread.
    Calendar current() const;

  private:
    // What tells one zone from another: where the link leads, and, for a file in its place, which one it is.
    struct Mark {
        std::string target;
        std::uint64_t device = 0;
        std::uint64_t inode = 0;
        std::int64_t modified = 0;
        friend bool operator==(const Mark&, const Mark&) = default;
    };
    Mark mark() const;

    std::string m_link;
    bool m_isFixed;
    mutable std::mutex m_mutex; // guards what follows
    mutable Mark m_mark;
    mutable Calendar m_calendar;
};

} // namespace quillane
