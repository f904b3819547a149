#include "Files/ThumbnailLoader.h"
#include "WindowTest.h"

using namespace quillane;

namespace {

class ThumbnailLoading : public WindowTest {
  protected:
    static FileURL url(const char* name) { return FileURL("/Users/alex/" + std::string(name)); }
    void setLook(const char* name, int height) {
        IconImage image{1, height, std::vector<std::uint8_t>(static_cast<std::size_t>(height) * 4, 128)};
        previews.setThumbnail(url(name), std::make_shared<const IconImage>(std::move(image)));
    }

    std::vector<int> heights; // of what has arrived, in its order; 0 for no picture
    ThumbnailLoader loader{platform, {30, 20}, [this](const std::shared_ptr<const IconImage>& picture) {
                               heights.push_back(picture ? picture->height : 0);
                           }};
};

} // namespace

TEST_F(ThumbnailLoading, TheFileThatIsWantedAlreadyIsNotAskedForAgain) {
    setLook("a", 5);
    loader.load(url("a"));
    loader.load(url("a"));
    finish();
    loader.load(url("a"));
    finish();
    EXPECT_EQ(previews.requests().size(), 1U);
    EXPECT_EQ(heights, std::vector{5});
}

TEST_F(ThumbnailLoading, AFileWithoutALookArrivesAsNone) {
    loader.load(url("a"));
    finish();
    EXPECT_EQ(heights, std::vector{0});
}

TEST_F(ThumbnailLoading, OnlyTheLastOfSeveralWishesArrivesHoweverFarTheFirstHasCome) {
    setLook("a", 5);
    setLook("b", 6);
    setLook("c", 7);
    loader.load(url("a"));
    runner.settle();
    runner.runJob(); // it is made, and not yet told
    loader.load(url("b"));
    loader.load(url("c"));
    finish();
    EXPECT_EQ(heights, std::vector{7});
    EXPECT_EQ(previews.requests().size(), 2U) << "what was wanted in between is passed by";
}

TEST_F(ThumbnailLoading, NothingArrivesOnceNothingIsWanted) {
    setLook("a", 5);
    loader.load(url("a"));
    runner.settle();
    runner.runJob();
    loader.forget();
    finish();
    EXPECT_EQ(heights, std::vector<int>());
    loader.load(url("a"));
    finish();
    EXPECT_EQ(heights, std::vector{5});
}
