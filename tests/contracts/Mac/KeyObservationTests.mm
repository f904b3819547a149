// What is heard of a property of an object of the system's.
#include "KeyObservation.h"
#include <gtest/gtest.h>
#include <memory>

@interface QuillaneObserved : NSObject {
    int m_number;
    int m_other;
}
- (int)number;
- (void)setNumber:(int)number;
- (int)other;
- (void)setOther:(int)other;
@end

@implementation QuillaneObserved
- (int)number {
    return m_number;
}
- (void)setNumber:(int)number {
    m_number = number;
}
- (int)other {
    return m_other;
}
- (void)setOther:(int)other {
    m_other = other;
}
@end

namespace quillane {
namespace {

TEST(KeyObservation, EachChangeIsHeardUntilTheObservationEnds) {
    @autoreleasepool {
        QuillaneObserved* const observed = [[QuillaneObserved alloc] init];
        int heard = 0;
        {
            const KeyObservation observation(observed, @"number", [&] { ++heard; });
            EXPECT_EQ(heard, 0); // what stands there is no change
            [observed setNumber:1];
            [observed setNumber:2];
            [observed setOther:1];
            EXPECT_EQ(heard, 2);
        }
        [observed setNumber:3];
        EXPECT_EQ(heard, 2);
    }
}

TEST(KeyObservation, SeveralHearOfOneProperty) {
    @autoreleasepool {
        QuillaneObserved* const observed = [[QuillaneObserved alloc] init];
        int first = 0;
        int second = 0;
        const KeyObservation stays(observed, @"number", [&] { ++first; });
        {
            const KeyObservation goes(observed, @"number", [&] { ++second; });
            [observed setNumber:1];
        }
        [observed setNumber:2];
        EXPECT_EQ(first, 2);
        EXPECT_EQ(second, 1);
    }
}

} // namespace
} // namespace quillane
