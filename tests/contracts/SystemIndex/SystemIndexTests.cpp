#include "CloudItem.h"
#include "SpotlightMetadata.h"
#include "SystemIndex.h"
#include <gtest/gtest.h>

namespace quillane {
namespace {

using SystemIndex::Item;
using SystemIndex::items;

// Nothing that was copied or created is kept, whatever the answer.
struct SystemIndexTest : testing::Test {
    void SetUp() override { items().clear(); }
    void TearDown() override { EXPECT_EQ(SystemIndex::held(), 0); }

    static std::optional<Date> lastUsed(const std::string& path) {
        return SpotlightMetadata().lastUsed(FileURL(path));
    }
    // Of an item in the cloud with this status.
    static bool isAwaiting(const std::optional<std::string>& status) {
        items()["/item"] = {.lastUsed = {}, .isInTheCloud = true, .downloadingStatus = status};
        return CloudItem::isAwaitingDownload("/item");
    }
};

TEST_F(SystemIndexTest, TheDateOfTheLastUseIsTakenFromTheItemOfThePath) {
    items()["/Applications/Tool.app"].lastUsed = SystemIndex::Seconds{700'000'000.5};
    items()["/Applications/Caf\xC3\xA9.app"].lastUsed = SystemIndex::Seconds{-1};
    EXPECT_EQ(lastUsed("/Applications/Tool.app"), Date{700'000'000.5});
    EXPECT_EQ(lastUsed("/Applications/Caf\xC3\xA9.app"), Date{-1});
}

TEST_F(SystemIndexTest, WhatTheIndexDoesNotKnowWasNeverUsed) {
    items()["/unused"] = {};
    EXPECT_EQ(lastUsed("/unknown"), std::nullopt);
    EXPECT_EQ(lastUsed("/unused"), std::nullopt);
    EXPECT_EQ(lastUsed("/no text \xFF"), std::nullopt);
}

TEST_F(SystemIndexTest, WhatIsNoDateIsNone) {
    items()["/odd"].lastUsed = SystemIndex::Text{"yesterday"};
    EXPECT_EQ(lastUsed("/odd"), std::nullopt);
}

TEST_F(SystemIndexTest, AnItemOfTheCloudAwaitsItsDownloadUnlessItIsCurrent) {
    EXPECT_FALSE(isAwaiting("current"));
    EXPECT_TRUE(isAwaiting("downloaded")); // an older content
    EXPECT_TRUE(isAwaiting("not downloaded"));
    EXPECT_TRUE(isAwaiting(std::nullopt));
}

TEST_F(SystemIndexTest, WhatIsInNoCloudAwaitsNothing) {
    items()["/plain"] = {.lastUsed = {}, .isInTheCloud = false, .downloadingStatus = "not downloaded"};
    items()["/silent"] = {};
    EXPECT_FALSE(CloudItem::isAwaitingDownload("/plain"));
    EXPECT_FALSE(CloudItem::isAwaitingDownload("/silent"));
    EXPECT_FALSE(CloudItem::isAwaitingDownload("/missing"));
    EXPECT_FALSE(CloudItem::isAwaitingDownload(""));
}

} // namespace
} // namespace quillane
