#include "ComparisonTest.h"
#include <version>
#ifndef _LIBCPP_VERSION // the system's rapidcheck is built with libstdc++
#include <rapidcheck/gtest.h>

namespace quillane {
namespace {

constexpr auto kLetter = static_cast<Bytes>(MadeUpFile::kLetter);

// Mostly alike: of few lengths, with few letters, and failing at few places, so that all of it meets.
rc::Gen<MadeUpFile> madeUpFiles() {
    return rc::gen::exec([] {
        MadeUpFile file;
        file.letters =
            std::string(static_cast<std::size_t>(*rc::gen::element(2, 7, 8, 9, 16, 18, 18, 18)), 'a');
        for (int i = *rc::gen::inRange(0, 3); i > 0; --i) {
            file.letters[*rc::gen::inRange<std::size_t>(0, file.letters.size())] = 'b';
        }
        file.tail = *rc::gen::element<Bytes>(0, 0, 0, 1, kLetter - 1);
        if (*rc::gen::inRange(0, 3) == 0) {
            file.badByte = *rc::gen::inRange<Bytes>(0, file.length());
        }
        file.opens = *rc::gen::inRange(0, 10) != 0;
        file.closes = *rc::gen::inRange(0, 10) != 0;
        file.tellsItsLength = *rc::gen::inRange(0, 10) != 0;
        return file;
    });
}

RC_GTEST_PROP(ContentComparisonProperty, TheAnswerIsThatOfHashingEachFileByItself, ()) {
    const auto count = *rc::gen::inRange<std::size_t>(2, 8);
    ComparisonWorld world(*rc::gen::container<std::vector<MadeUpFile>>(count, madeUpFiles()));
    world.ahead = *rc::gen::element<Bytes>(0, 1, SteppedComparison::kPortion, SteppedComparison::kAhead);
    RC_ASSERT(world.compared() == world.expected());
}

} // namespace
} // namespace quillane
#endif
