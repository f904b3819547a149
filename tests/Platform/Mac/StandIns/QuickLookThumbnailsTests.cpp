#include "ManualClock.h"
#include "PictureStandIns.h"
#include "QuickLookThumbnails.h"
#include "StandIns.h"
#include "StepTaskRunner.h"
#include <gtest/gtest.h>

namespace quillane {
namespace {

const FileURL kFile("/Users/alex/A b é\xFF.pdf");
const StandIn::Picture kPicture = {2, 1, {64, 0, 0, 128, 9, 8, 7, 255}};

class QuickLookThumbnailsTest : public testing::Test {
  protected:
    QuickLookThumbnailsTest() {
        StandIn::begin();
        StandIn::beginPictures();
    }

    StepTaskRunner tasks;
    ManualClock clock{tasks};
    QuickLookThumbnails thumbnails{clock};
};

TEST_F(QuickLookThumbnailsTest, AsksForTheTrueThumbnailInPixels) {
    thumbnails.thumbnail(kFile, {640, 480}, {});
    const auto requests = StandIn::thumbnailRequests();
    ASSERT_EQ(requests.size(), 1U);
    EXPECT_EQ(requests[0].location, kFile.absoluteString());
    EXPECT_EQ(requests[0].width, 640);
    EXPECT_EQ(requests[0].height, 480);
    EXPECT_EQ(requests[0].scale, 1);
    EXPECT_EQ(requests[0].types, 4U);
    EXPECT_FALSE(requests[0].isCancelled);
}

TEST_F(QuickLookThumbnailsTest, GivesThePictureInItsOwnSizeWithItsColorsAsOurs) {
    StandIn::setThumbnail(kPicture);
    const auto thumbnail = thumbnails.thumbnail(kFile, {60, 60}, {});
    ASSERT_NE(thumbnail, nullptr);
    EXPECT_EQ(*thumbnail, (IconImage{2, 1, {128, 0, 0, 128, 9, 8, 7, 255}}));
    EXPECT_EQ(StandIn::drawingObjects(), 0);
}

TEST_F(QuickLookThumbnailsTest, WhatIsFarLargerThanAskedForIsShrunk) {
    StandIn::setThumbnail(StandIn::Picture{40, 20, std::vector<std::uint8_t>(std::size_t{40} * 20 * 4, 255)});
    const auto thumbnail = thumbnails.thumbnail(kFile, {4, 4}, {});
    ASSERT_NE(thumbnail, nullptr);
    EXPECT_EQ(thumbnail->width, 8);
    EXPECT_EQ(thumbnail->height, 4);
}

TEST_F(QuickLookThumbnailsTest, WhatHasNoLookOfItsOwnGivesNothing) {
    StandIn::setThumbnail(std::nullopt);
    EXPECT_EQ(thumbnails.thumbnail(kFile, {60, 60}, {}), nullptr);
    StandIn::setThumbnail(StandIn::Picture{});
    EXPECT_EQ(thumbnails.thumbnail(kFile, {60, 60}, {}), nullptr) << "a picture of no size";
}

TEST_F(QuickLookThumbnailsTest, AfterAStopNothingIsAsked) {
    const StopSource stop;
    stop.requestStop();
    StandIn::setThumbnail(kPicture);
    EXPECT_EQ(thumbnails.thumbnail(kFile, {60, 60}, stop.token()), nullptr);
    EXPECT_TRUE(StandIn::thumbnailRequests().empty());
}

TEST_F(QuickLookThumbnailsTest, AStopCancelsWhatWasAskedAndWhatComesLateHarmsNothing) {
    const StopSource stop;
    StandIn::setThumbnail(kPicture, StandIn::Answer::never);
    StandIn::setWhenAsked([&stop] { stop.requestStop(); });
    EXPECT_EQ(thumbnails.thumbnail(kFile, {60, 60}, stop.token()), nullptr);
    EXPECT_TRUE(StandIn::thumbnailRequests().at(0).isCancelled);
    StandIn::answerLate();
    EXPECT_EQ(StandIn::drawingObjects(), 0);
}

} // namespace
} // namespace quillane
