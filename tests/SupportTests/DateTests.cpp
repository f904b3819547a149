#include "CivilDate.h"
#include "Date.h"

namespace quillane {
namespace {

TEST(Date, TheReferenceDateIsTheFirstMomentOf2001) {
    EXPECT_EQ(Date{}.secondsSince1970(), 978307200);
    EXPECT_EQ(utc(2001, 1, 1), Date{});
}

TEST(Date, UnixTimesKeepTheirFraction) {
    EXPECT_EQ(Date::fromUnix(0), Date{-978307200});
    EXPECT_EQ(Date::fromUnix(978307200, 500'000'000), Date{0.5});
    EXPECT_EQ(Date::fromUnix(-1, 250'000'000).secondsSince1970(), -0.75);
}

TEST(Date, TheDistantPastIsBeforeEveryFile) {
    EXPECT_EQ(Date::distantPast(), Date{-63114076800.0});
    EXPECT_LT(Date::distantPast(), Date::fromUnix(-62'000'000'000));
}

TEST(Date, DatesAreOrderedByTime) {
    EXPECT_LT(Date{1}, Date{1.5});
    EXPECT_EQ(Date{1}.addingSeconds(-2), Date{-1});
}

TEST(Date, EqualDatesHaveEqualHashes) {
    EXPECT_EQ(std::hash<Date>{}(Date{0.0}), std::hash<Date>{}(Date{-0.0}));
    EXPECT_NE(std::hash<Date>{}(Date{1}), std::hash<Date>{}(Date{2}));
}

} // namespace
} // namespace quillane
