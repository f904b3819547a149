#include "Formatting.h"
#include <array>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <span>
#include <unicode/numberformatter.h>

namespace quillane::Formatting {
namespace {

using icu::number::LocalizedNumberFormatter;

struct ByteUnit {
    std::string_view word;
    double limit; // larger figures take the next unit, also where they would still round to this one
    double divisor;
    std::size_t fractionDigits;
};

constexpr double kNoLimit = std::numeric_limits<double>::infinity();
constexpr std::array<ByteUnit, 6> kAllUnits = {{{"bytes", 999, 1, 0},
                                                {"KB", 999'499, 1e3, 0},
                                                {"MB", 999'949'999, 1e6, 1},
                                                {"GB", 999'994'999'999, 1e9, 2},
                                                {"TB", 999'994'999'999'999, 1e12, 2},
                                                {"PB", kNoLimit, 1e15, 2}}};
constexpr std::array<ByteUnit, 2> kMegabytesAndGigabytes = {
    {{"MB", 999'949'999, 1e6, 1}, {"GB", kNoLimit, 1e9, 2}}};

LocalizedNumberFormatter makeFormatter(int fractionDigits) {
    return icu::number::NumberFormatter::withLocale(icu::Locale::getUS())
        .precision(icu::number::Precision::maxFraction(fractionDigits))
        .roundingMode(UNUM_ROUND_HALFEVEN);
}

// Grouped, rounded half to even from the shortest decimal that gives the value back, without closing zeros.
const LocalizedNumberFormatter& formatter(std::size_t fractionDigits) {
    using Formatters = std::array<LocalizedNumberFormatter, 3>;
    // Never destroyed: any thread may still use them while the process ends.
    static const auto* const formatters =
        new Formatters{makeFormatter(0), makeFormatter(1), makeFormatter(2)};
    return (*formatters)[fractionDigits];
}

std::string text(icu::number::FormattedNumber number) {
    UErrorCode status = U_ZERO_ERROR;
    std::string result;
    const icu::UnicodeString formatted = number.toString(status);
    if (U_FAILURE(status)) {
        std::abort(); // only without memory or without the library's own locale data
    }
    return formatted.toUTF8String(result);
}

std::string decimal(double value, std::size_t fractionDigits) {
    UErrorCode status = U_ZERO_ERROR;
    return text(formatter(fractionDigits).formatDouble(value, status));
}

std::string inUnits(Bytes bytes, std::span<const ByteUnit> units) {
    const auto value = static_cast<double>(bytes);
    std::size_t i = 0;
    while (std::abs(value) >= units[i].limit) {
        ++i;
    }
    std::string result = decimal(value / units[i].divisor, units[i].fractionDigits);
    result += ' ';
    result += units[i].word;
    return result;
}

} // namespace

std::string byteCount(Bytes bytes) {
    switch (bytes) {
    case 0:
        return "Zero KB";
    case 1:
        return "1 byte";
    case -1:
        return "-1 byte";
    default:
        return inUnits(bytes, kAllUnits);
    }
}

std::string byteCountInMegabytesOrGigabytes(Bytes bytes) {
    return inUnits(bytes, kMegabytesAndGigabytes);
}

std::string relativeDescription(const std::optional<Date>& date, Date now, const Calendar& calendar) {
    return date ? calendar.relativeDescription(*date, now) : "Never";
}

std::string number(std::int64_t value) {
    UErrorCode status = U_ZERO_ERROR;
    return text(formatter(0).formatInt(value, status));
}

std::string counted(std::int64_t value, std::string_view noun) {
    std::string result = number(value);
    result += ' ';
    result += noun;
    if (value != 1 && value != -1) {
        result += 's';
    }
    return result;
}

std::string duration(std::int64_t seconds) {
    struct Part {
        std::int64_t value;
        std::string_view word;
    };
    const std::array<Part, 3> parts = {
        {{seconds / 3600, " hr"}, {seconds / 60 % 60, " min"}, {seconds % 60, " sec"}}};
    std::string result;
    for (const auto& [value, word] : parts) {
        if (value == 0) {
            continue;
        }
        if (result.empty()) {
            result = number(value); // the only part that shows the sign
        } else {
            result += ", ";
            result += number(std::abs(value));
        }
        result += word;
    }
    return result.empty() ? "0 sec" : result;
}

} // namespace quillane::Formatting
