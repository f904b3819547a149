#pragma once
#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>

namespace quillane {

// A point in time: seconds since 2001-01-01 00:00:00 UTC, the reference date of the platform.
struct Date {
    double secondsSinceReferenceDate = 0;

    // The earliest date that the platform can represent, 0001-01-01 00:00:00 UTC.
    static constexpr Date distantPast() { return {-63114076800.0}; }
    // From seconds and nanoseconds since 1970-01-01 UTC, as file systems give it.
    static constexpr Date fromUnix(std::int64_t seconds, std::int64_t nanoseconds = 0) {
        return {static_cast<double>(seconds - kUnixToReference) + static_cast<double>(nanoseconds) * 1e-9};
    }
    constexpr double secondsSince1970() const {
        return secondsSinceReferenceDate + static_cast<double>(kUnixToReference);
    }
    constexpr Date addingSeconds(double seconds) const { return {secondsSinceReferenceDate + seconds}; }

    friend constexpr auto operator<=>(const Date&, const Date&) = default;

  private:
    static constexpr std::int64_t kUnixToReference = 978307200; // 1970-01-01 to 2001-01-01
};

} // namespace quillane

template <>
struct std::hash<quillane::Date> {
    std::size_t operator()(const quillane::Date& date) const noexcept {
        return std::hash<double>{}(date.secondsSinceReferenceDate);
    }
};
