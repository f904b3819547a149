#include "ShortestDecimal.h"
#include <version>
#ifndef _LIBCPP_VERSION // the system's rapidcheck is built with libstdc++
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <rapidcheck/gtest.h>
#include <string>

namespace quillane {
namespace {

std::string byTheLibrary(double value, std::chars_format format) {
    std::array<char, 400> buffer{};
    return {buffer.data(), std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, format).ptr};
}

rc::Gen<double> finite() {
    return rc::gen::suchThat(
        rc::gen::oneOf(rc::gen::map(rc::gen::arbitrary<std::uint64_t>(),
                                    [](std::uint64_t bits) { return std::bit_cast<double>(bits); }),
                       rc::gen::arbitrary<double>(),
                       rc::gen::map(rc::gen::inRange(-1'000'000'000, 1'000'000'000),
                                    [](int thousandths) { return thousandths / 1000.0; })),
        [](double value) { return std::isfinite(value); });
}

RC_GTEST_PROP(ShortestDecimalProperty, HasTheDigitsThatTheStandardLibraryGives, ()) {
    const double value = *finite();
    RC_ASSERT(ShortestDecimal(value).scientific() == byTheLibrary(value, std::chars_format::scientific));
}

// Beyond that the library writes out what the bits are worth to the last digit.
RC_GTEST_PROP(ShortestDecimalProperty, HasThemWithoutAnExponentToo, ()) {
    const double value = *finite();
    RC_PRE(std::fabs(value) < 1e16);
    RC_ASSERT(ShortestDecimal(value).fixed() == byTheLibrary(value, std::chars_format::fixed));
}

} // namespace
} // namespace quillane
#endif
