#pragma once
#include "Date.h"
#include <memory>
#include <optional>
#include <string>

namespace quillane {

// The user's calendar: Gregorian, weeks beginning on Sunday, in one time zone.
// Immutable after construction and cheap to copy; any thread may call it.
class Calendar {
  public:
    // The machine's own time zone as it is at this moment.
    Calendar();
    // An IANA name such as "America/New_York"; an unknown name gives GMT.
    explicit Calendar(const std::string& timeZone);
    // The same, and nothing for an unknown name.
    static std::optional<Calendar> inZone(const std::string& timeZone);
    ~Calendar();
    Calendar(const Calendar&);
    Calendar& operator=(const Calendar&);

    // Whole steps of "the same wall-clock time next day" from `from` to `to`, truncated toward zero; negative
    // when `to` lies before. Neither elapsed time over 86,400 nor a difference of calendar dates.
    int daysBetween(Date from, Date to) const;
    // "2 months ago", "yesterday", "now": how `date` is told at `now`, in the platform's named, wide style.
    std::string relativeDescription(Date date, Date now) const;

  private:
    struct Zone;
    explicit Calendar(std::shared_ptr<const Zone> zone);
    std::shared_ptr<const Zone> m_zone;
};

} // namespace quillane
