#include "LocalCalendar.h"
#include <array>
#include <climits>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace quillane {

namespace {

// "/usr/share/zoneinfo/Europe/Berlin" on Linux, "/var/db/timezone/zoneinfo/Europe/Berlin" on the Mac. Another
// target, and a file in the link's place, is left to the library, which compares the files' content.
Calendar calendarAt(std::string_view target) {
    constexpr std::string_view kFolder = "/zoneinfo/";
    const auto at = target.rfind(kFolder);
    if (at != std::string_view::npos) {
        if (auto calendar = Calendar::inZone(std::string(target.substr(at + kFolder.size())))) {
            return *std::move(calendar);
        }
    }
    return {};
}

} // namespace

LocalCalendar::LocalCalendar(std::string link, const char* environment)
    : m_link(std::move(link))
    , m_isFixed(environment != nullptr)
    , m_mark(mark())
    , m_calendar(m_isFixed ? Calendar() : calendarAt(m_mark.target)) {}

Calendar LocalCalendar::current() const {
    if (m_isFixed) {
        return m_calendar;
    }
    const std::lock_guard lock(m_mutex);
    if (auto now = mark(); now != m_mark) {
        m_calendar = calendarAt(now.target);
        m_mark = std::move(now);
    }
    return m_calendar;
}

LocalCalendar::Mark LocalCalendar::mark() const {
    Mark mark;
    std::array<char, PATH_MAX> target{};
    const auto length = ::readlink(m_link.c_str(), target.data(), target.size());
    if (length > 0) {
        mark.target.assign(target.data(), static_cast<std::size_t>(length));
    }
    struct stat status{};
    if (::stat(m_link.c_str(), &status) == 0) {
        mark.device = static_cast<std::uint64_t>(status.st_dev); // signed on the Mac
        mark.inode = status.st_ino;
        mark.modified = status.st_mtime;
    }
    return mark;
}

} // namespace quillane
