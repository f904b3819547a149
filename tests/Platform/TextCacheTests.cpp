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

TEST(TextCache, KeepsATextUntilItsFileHasChanged) {
    TextCache cache(10'000);
    auto file = fileNumbered(1);
    EXPECT_EQ(cache.find(file), nullptr);
    const auto kept = text(10);
    cache.keep(file, kept);
    EXPECT_EQ(cache.find(file), kept);
    for (auto* const changed : {&file.device, &file.inode}) {
        ++*changed;
        EXPECT_EQ(cache.find(file), nullptr);
        --*changed;
    }
    ++file.fileSize;
    EXPECT_EQ(cache.find(file), nullptr);
    --file.fileSize;
    file.contentModified = Date{5.000001};
    EXPECT_EQ(cache.find(file), nullptr);
}

TEST(TextCache, ForgetsWhatWasNotAskedForTheLongest) {
    TextCache cache(4000);
    for (std::uint64_t i = 1; i <= 3; ++i) {
        cache.keep(fileNumbered(i), text(1000));
    }
    EXPECT_NE(cache.find(fileNumbered(1)), nullptr);
    cache.keep(fileNumbered(4), text(1000));
    EXPECT_EQ(cache.find(fileNumbered(2)), nullptr);
    for (const std::uint64_t kept : {1U, 3U, 4U}) {
        EXPECT_NE(cache.find(fileNumbered(kept)), nullptr) << kept;
    }
    EXPECT_LE(cache.bytes(), 4000U);
}

TEST(TextCache, CountsATextThatIsKeptAgainOnce) {
    TextCache cache(4000);
    cache.keep(fileNumbered(1), text(1000));
    const auto bytes = cache.bytes();
    cache.keep(fileNumbered(1), text(1000));
    EXPECT_EQ(cache.bytes(), bytes);
    cache.keep(fileNumbered(1), text(0));
    EXPECT_EQ(cache.bytes(), bytes - 1000);
}

TEST(TextCache, LeavesOutATextThatIsTooLargeAndLosesNothingForIt) {
    TextCache cache(2000);
    cache.keep(fileNumbered(1), text(1000));
    cache.keep(fileNumbered(2), text(2000));
    EXPECT_EQ(cache.find(fileNumbered(2)), nullptr);
    EXPECT_NE(cache.find(fileNumbered(1)), nullptr);
}

TEST(TextCache, CountsTextsWithoutWordsToo) {
    TextCache cache(2000);
    for (std::uint64_t i = 1; i <= 100; ++i) {
        cache.keep(fileNumbered(i), text(0));
    }
    EXPECT_LE(cache.bytes(), 2000U);
    EXPECT_EQ(cache.find(fileNumbered(1)), nullptr);
    EXPECT_NE(cache.find(fileNumbered(100)), nullptr);
}

} // namespace
} // namespace quillane
