#include "ManualClock.h"
#include "StepTaskRunner.h"
#include "TextCache.h"
#include <gtest/gtest.h>

namespace quillane {
namespace {

ResourceValues fileNumbered(std::uint64_t inode) {
    ResourceValues file;
    file.device = 1;
    file.inode = inode;
    file.fileSize = 100;
    file.contentModified = Date{5};
    return file;
}

TextCache::Text text(std::size_t bytes) {
    return std::make_shared<const std::string>(bytes, 'x');
}

constexpr auto kKind = DocumentKind::webPage;

class TextCacheTest : public testing::Test {
  protected:
    StepTaskRunner m_tasks;
    ManualClock m_clock{m_tasks};
};

TEST_F(TextCacheTest, KeepsATextUntilItsFileHasChanged) {
    TextCache cache(10'000, m_clock);
    auto file = fileNumbered(1);
    EXPECT_EQ(cache.find(file, kKind), nullptr);
    const auto kept = text(10);
    cache.keep(file, kKind, kept);
    EXPECT_EQ(cache.find(file, kKind), kept);
    for (auto* const changed : {&file.device, &file.inode}) {
        ++*changed;
        EXPECT_EQ(cache.find(file, kKind), nullptr);
        --*changed;
    }
    ++file.fileSize;
    EXPECT_EQ(cache.find(file, kKind), nullptr);
    --file.fileSize;
    file.contentModified = Date{5.000001};
    EXPECT_EQ(cache.find(file, kKind), nullptr);
}

TEST_F(TextCacheTest, GivesNoTextThatWasReadInAnotherWay) {
    TextCache cache(10'000, m_clock);
    cache.keep(fileNumbered(1), DocumentKind::webPage, text(10));
    EXPECT_EQ(cache.find(fileNumbered(1), DocumentKind::richText), nullptr);
    EXPECT_NE(cache.find(fileNumbered(1), DocumentKind::webPage), nullptr);
}

TEST_F(TextCacheTest, ForgetsWhatWasNotAskedForTheLongest) {
    TextCache cache(4000, m_clock);
    for (std::uint64_t i = 1; i <= 3; ++i) {
        cache.keep(fileNumbered(i), kKind, text(1000));
    }
    EXPECT_NE(cache.find(fileNumbered(1), kKind), nullptr);
    m_clock.advanceWithoutRunning(TextCache::kLately);
    cache.keep(fileNumbered(4), kKind, text(1000));
    EXPECT_EQ(cache.find(fileNumbered(2), kKind), nullptr);
    for (const std::uint64_t kept : {1U, 3U, 4U}) {
        EXPECT_NE(cache.find(fileNumbered(kept), kKind), nullptr) << kept;
    }
    EXPECT_LE(cache.bytes(), 4000U);
}

TEST_F(TextCacheTest, ForgetsNothingThatWasAskedForLately) {
    TextCache cache(2000, m_clock);
    cache.keep(fileNumbered(1), kKind, text(1000));
    m_clock.advanceWithoutRunning(TextCache::kLately / 2);
    EXPECT_NE(cache.find(fileNumbered(1), kKind), nullptr);
    m_clock.advanceWithoutRunning(TextCache::kLately / 2);
    cache.keep(fileNumbered(2), kKind, text(1000));
    EXPECT_EQ(cache.find(fileNumbered(2), kKind), nullptr);
    EXPECT_NE(cache.find(fileNumbered(1), kKind), nullptr);
}

TEST_F(TextCacheTest, GivesASecondSearchOfMoreThanItHoldsAllThatItHolds) {
    TextCache cache(10'000, m_clock);
    const auto search = [&] {
        int found = 0;
        for (std::uint64_t i = 1; i <= 30; ++i) {
            if (cache.find(fileNumbered(i), kKind) != nullptr) {
                ++found;
            } else {
                cache.keep(fileNumbered(i), kKind, text(744));
            }
        }
        return found;
    };
    EXPECT_EQ(search(), 0);
    EXPECT_EQ(search(), 10);
    m_clock.advanceWithoutRunning(TextCache::kLately * 2);
    EXPECT_EQ(search(), 10) << "what is asked for comes first";
}

TEST_F(TextCacheTest, GivesATextUpToItsEnd) {
    TextCache cache(2000, m_clock);
    cache.keep(fileNumbered(1), kKind, text(1000), m_clock.instant() + std::chrono::seconds(10));
    m_clock.advanceWithoutRunning(std::chrono::seconds(9));
    EXPECT_NE(cache.find(fileNumbered(1), kKind), nullptr);
    m_clock.advanceWithoutRunning(std::chrono::seconds(1));
    EXPECT_EQ(cache.find(fileNumbered(1), kKind), nullptr);
    EXPECT_EQ(cache.bytes(), 0U);
}

TEST_F(TextCacheTest, ForgetsATextWhoseTimeIsUpForAnother) {
    TextCache cache(2000, m_clock);
    cache.keep(fileNumbered(1), kKind, text(1000), m_clock.instant() + std::chrono::seconds(10));
    m_clock.advanceWithoutRunning(std::chrono::seconds(10));
    cache.keep(fileNumbered(2), kKind, text(1000));
    EXPECT_NE(cache.find(fileNumbered(2), kKind), nullptr);
}

TEST_F(TextCacheTest, CountsATextThatIsKeptAgainOnce) {
    TextCache cache(4000, m_clock);
    cache.keep(fileNumbered(1), kKind, text(1000));
    const auto bytes = cache.bytes();
    cache.keep(fileNumbered(1), kKind, text(1000));
    EXPECT_EQ(cache.bytes(), bytes);
    cache.keep(fileNumbered(1), kKind, text(0));
    EXPECT_EQ(cache.bytes(), bytes - 1000);
}

TEST_F(TextCacheTest, LeavesOutATextThatIsTooLargeAndLosesNothingForIt) {
    TextCache cache(2000, m_clock);
    cache.keep(fileNumbered(1), kKind, text(1000));
    cache.keep(fileNumbered(2), kKind, text(2000));
    EXPECT_EQ(cache.find(fileNumbered(2), kKind), nullptr);
    EXPECT_NE(cache.find(fileNumbered(1), kKind), nullptr);
}

TEST_F(TextCacheTest, CountsTextsWithoutWordsToo) {
    TextCache cache(2000, m_clock);
    for (std::uint64_t i = 1; i <= 100; ++i) {
        cache.keep(fileNumbered(i), kKind, text(0));
        m_clock.advanceWithoutRunning(TextCache::kLately);
    }
    EXPECT_LE(cache.bytes(), 2000U);
    EXPECT_EQ(cache.find(fileNumbered(1), kKind), nullptr);
    EXPECT_NE(cache.find(fileNumbered(100), kKind), nullptr);
}

} // namespace
} // namespace quillane
