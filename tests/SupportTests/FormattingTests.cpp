#include "CivilDate.h"
#include "Formatting.h"
#include <limits>
#include <thread>

namespace quillane {
namespace {

constexpr Bytes kMost = std::numeric_limits<Bytes>::max();
constexpr Bytes kLeast = std::numeric_limits<Bytes>::min();

struct Row {
    std::int64_t value;
    std::string text;
};

TEST(ByteCount, EveryFigureReadsAsThePlatformWritesIt) {
    const std::vector<Row> rows = {
        {0, "Zero KB"},
        {1, "1 byte"},
        {2, "2 bytes"},
        {512, "512 bytes"},
        {998, "998 bytes"},
        {999, "1 KB"},
        {1'000, "1 KB"},
        {1'001, "1 KB"},
        {1'499, "1 KB"},
        {1'500, "2 KB"},
        {2'500, "2 KB"},
        {3'500, "4 KB"},
        {9'999, "10 KB"},
        {49'999, "50 KB"},
        {100'000, "100 KB"},
        {500'001, "500 KB"},
        {999'000, "999 KB"},
        {999'498, "999 KB"},
        {999'499, "1 MB"},
        {999'500, "1 MB"},
        {999'999, "1 MB"},
        {1'000'000, "1 MB"},
        {1'049'999, "1 MB"},
        {1'050'000, "1 MB"},
        {1'050'001, "1.1 MB"},
        {1'150'000, "1.2 MB"},
        {1'250'000, "1.2 MB"},
        {1'350'000, "1.4 MB"},
        {1'500'000, "1.5 MB"},
        {1'949'999, "1.9 MB"},
        {1'950'000, "2 MB"},
        {12'345'678, "12.3 MB"},
        {99'949'999, "99.9 MB"},
        {99'950'000, "100 MB"},
        {123'450'000, "123.4 MB"},
        {999'949'998, "999.9 MB"},
        {999'949'999, "1 GB"},
        {999'950'000, "1 GB"},
        {1'000'000'000, "1 GB"},
        {1'005'000'000, "1 GB"},
        {1'005'000'001, "1.01 GB"},
        {1'015'000'000, "1.02 GB"},
        {1'025'000'000, "1.02 GB"},
        {1'234'567'890, "1.23 GB"},
        {1'500'000'000, "1.5 GB"},
        {12'345'678'901, "12.35 GB"},
        {500'107'862'016, "500.11 GB"},
        {999'994'999'998, "999.99 GB"},
        {999'994'999'999, "1 TB"},
        {999'995'000'000, "1 TB"},
        {1'500'000'000'000, "1.5 TB"},
        {999'994'999'999'998, "999.99 TB"},
        {999'994'999'999'999, "1 PB"},
        {1'234'567'890'123'456, "1.23 PB"},
        {1'000'000'000'000'000'000, "1,000 PB"},
        {kMost, "9,223.37 PB"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Formatting::byteCount(row.value), row.text) << row.value;
    }
}

TEST(ByteCount, NegativeFiguresAreTheirOppositesWithASign) {
    const std::vector<Row> rows = {
        {-1, "-1 byte"},          {-2, "-2 bytes"},
        {-998, "-998 bytes"},     {-999, "-1 KB"},
        {-1'500, "-2 KB"},        {-2'500, "-2 KB"},
        {-999'499, "-1 MB"},      {-1'500'000, "-1.5 MB"},
        {-999'949'999, "-1 GB"},  {-12'345'678'901, "-12.35 GB"},
        {kLeast, "-9,223.37 PB"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Formatting::byteCount(row.value), row.text) << row.value;
    }
}

// The quotient is rounded as a decimal from its shortest text, not from its binary value.
TEST(ByteCount, ATieIsATieInDecimal) {
    EXPECT_EQ(Formatting::byteCount(1'450'000), "1.4 MB");
    EXPECT_EQ(Formatting::byteCount(1'550'000), "1.6 MB");
    EXPECT_EQ(Formatting::byteCount(1'045'000'000), "1.04 GB");
    EXPECT_EQ(Formatting::byteCount(1'234'565'000'000'000'001), "1,234.56 PB");
}

TEST(ByteCountInMegabytesOrGigabytes, OnlyTheseTwoUnitsAppear) {
    const std::vector<Row> rows = {
        {0, "0 MB"},
        {512, "0 MB"},
        {1'000, "0 MB"},
        {49'999, "0 MB"},
        {50'000, "0 MB"},
        {50'001, "0.1 MB"},
        {100'000, "0.1 MB"},
        {150'000, "0.2 MB"},
        {250'000, "0.2 MB"},
        {999'999, "1 MB"},
        {12'345'678, "12.3 MB"},
        {999'949'998, "999.9 MB"},
        {999'949'999, "1 GB"},
        {999'994'999'999, "999.99 GB"},
        {1'000'000'000'000, "1,000 GB"},
        {1'234'567'890'123, "1,234.57 GB"},
        {-1, "-0 MB"},
        {kMost, "9,223,372,036.85 GB"},
        {kLeast, "-9,223,372,036.85 GB"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Formatting::byteCountInMegabytesOrGigabytes(row.value), row.text) << row.value;
    }
}

TEST(RelativeDescription, AnAbsentDateIsNever) {
    EXPECT_EQ(Formatting::relativeDescription(std::nullopt, Date{}, Calendar("GMT")), "Never");
}

TEST(RelativeDescription, ADateIsToldByTheCalendar) {
    const Date now = utc(2024, 5, 15, 12);
    EXPECT_EQ(Formatting::relativeDescription(now.addingSeconds(-86'400), now, Calendar("GMT")), "yesterday");
    EXPECT_EQ(Formatting::relativeDescription(utc(2024, 5, 14, 23, 30), utc(2024, 5, 15, 23, 10),
                                              Calendar("America/New_York")),
              "yesterday");
}

TEST(Number, ThousandsAreGrouped) {
    const std::vector<Row> rows = {{0, "0"},
                                   {7, "7"},
                                   {999, "999"},
                                   {1'000, "1,000"},
                                   {1'234'567, "1,234,567"},
                                   {-1'234, "-1,234"},
                                   {kMost, "9,223,372,036,854,775,807"},
                                   {kLeast, "-9,223,372,036,854,775,808"}};
    for (const auto& row : rows) {
        EXPECT_EQ(Formatting::number(row.value), row.text);
    }
}

TEST(Counted, OnlyOneTakesTheSingular) {
    EXPECT_EQ(Formatting::counted(0, "app"), "0 apps");
    EXPECT_EQ(Formatting::counted(1, "app"), "1 app");
    EXPECT_EQ(Formatting::counted(2, "app"), "2 apps");
    EXPECT_EQ(Formatting::counted(21, "startup item"), "21 startup items");
    EXPECT_EQ(Formatting::counted(1'234, "app"), "1,234 apps");
    EXPECT_EQ(Formatting::counted(-1, "file"), "-1 file");
}

TEST(Duration, OnlyPartsThatAreNotZeroAppear) {
    const std::vector<Row> rows = {
        {0, "0 sec"},
        {1, "1 sec"},
        {59, "59 sec"},
        {60, "1 min"},
        {61, "1 min, 1 sec"},
        {90, "1 min, 30 sec"},
        {120, "2 min"},
        {300, "5 min"},
        {3'599, "59 min, 59 sec"},
        {3'600, "1 hr"},
        {3'601, "1 hr, 1 sec"},
        {3'660, "1 hr, 1 min"},
        {5'400, "1 hr, 30 min"},
        {7'200, "2 hr"},
        {7'325, "2 hr, 2 min, 5 sec"},
        {86'400, "24 hr"},
        {90'000, "25 hr"},
        {100'000, "27 hr, 46 min, 40 sec"},
        {604'800, "168 hr"},
        {3'600'000, "1,000 hr"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Formatting::duration(row.value), row.text) << row.value;
    }
}

TEST(Duration, ANegativeOneShowsItsSignOnce) {
    EXPECT_EQ(Formatting::duration(-90), "-1 min, 30 sec");
    EXPECT_EQ(Formatting::duration(-1), "-1 sec");
    EXPECT_EQ(Formatting::duration(-3'601), "-1 hr, 1 sec");
    EXPECT_EQ(Formatting::duration(kLeast), "-2,562,047,788,015,215 hr, 30 min, 8 sec");
}

TEST(Formatting, ManyThreadsMayFormatAtOnce) {
    const Date now = utc(2024, 5, 15, 12);
    const Calendar calendar("America/New_York");
    std::vector<std::vector<std::string>> texts(4);
    std::vector<std::thread> threads;
    for (auto& mine : texts) {
        threads.emplace_back([&] {
            for (Bytes i = 1; i < 100; ++i) {
                mine.push_back(Formatting::byteCount(i * 1'234'567));
                mine.push_back(Formatting::number(i * 1'000));
                mine.push_back(calendar.relativeDescription(now.addingSeconds(-4e5 * double(i)), now));
            }
        });
    }
    for (auto& thread : threads) {
        thread.join();
    }
    EXPECT_THAT(texts, testing::Each(texts.front()));
    EXPECT_EQ(texts.front()[1], "1,000");
}

} // namespace
} // namespace quillane
