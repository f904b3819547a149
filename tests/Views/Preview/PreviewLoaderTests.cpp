#include "Preview/PreviewLoader.h"
#include "WindowTest.h"
#include <string>

using namespace quillane;

namespace {

class PreviewLoading : public WindowTest {
  protected:
    PreviewLoader::Wish wish(const char* name, int page = 0) {
        const auto path = "/Users/alex/" + std::string(name);
        disk.file(path, "12345");
        return {.url = FileURL(path), .page = page, .size = {30, 20}, .iconSide = 16};
    }
    void setText(const char* name, const std::string& text) {
        previews.setPages(wish(name).url, {{nullptr, text, 0, 1}});
    }

    std::vector<std::string> arrived; // the texts, in their order; "-" for no page
    PreviewLoader loader{platform, [this](const PreviewLoader::Wish&, const PreviewLoader::Look& look) {
                             arrived.push_back(look.page ? look.page->text : "-");
                         }};
};

} // namespace

TEST_F(PreviewLoading, OnlyTheLastOfSeveralWishesArrivesHoweverFarTheFirstHasCome) {
    for (const char* name : {"a", "b", "c"}) {
        setText(name, name);
    }
    loader.load(wish("a"));
    runner.settle();
    runner.runJob(); // it is made, and not yet told
    loader.load(wish("b"));
    loader.load(wish("c"));
    finish();
    EXPECT_EQ(arrived, std::vector<std::string>{"c"});
    EXPECT_EQ(previews.requests().size(), 2U) << "what was wanted in between is passed by";
}

TEST_F(PreviewLoading, NothingArrivesOnceNothingIsWanted) {
    setText("a", "a");
    loader.load(wish("a"));
    runner.settle();
    runner.runJob();
    loader.drop();
    finish();
    EXPECT_EQ(arrived, std::vector<std::string>());
    loader.load(wish("a"));
    finish();
    EXPECT_EQ(arrived, std::vector<std::string>{"a"});
}

TEST_F(PreviewLoading, TheSameFileIsLookedAtAgainWhenItIsAskedForAgain) {
    setText("a", "old");
    loader.load(wish("a"));
    finish();
    setText("a", "new");
    loader.load(wish("a"));
    finish();
    EXPECT_EQ(arrived, (std::vector<std::string>{"old", "new"}));
}

TEST_F(PreviewLoading, AnIconIsMadeOnlyWhereThereIsNoPage) {
    setText("a", "a");
    loader.load(wish("a"));
    finish();
    EXPECT_EQ(workspace.iconRequests().size(), 0U);
    loader.load(wish("b"));
    finish();
    EXPECT_EQ(arrived, (std::vector<std::string>{"a", "-"}));
    EXPECT_EQ(workspace.iconRequests(),
              (std::vector<FakeWorkspace::IconRequest>{{FileURL("/Users/alex/b"), 16}}));
}

TEST(PreviewLoader, LinesOfWritingStayAsTheyAre) {
    EXPECT_EQ(PreviewLoader::withLinesBroken(""), "");
    const auto text = std::string(PreviewLoader::kLongestLine, 'x') + "\n" +
                      std::string(PreviewLoader::kLongestLine, 'y') + "\n";
    EXPECT_EQ(PreviewLoader::withLinesBroken(text), text);
}

TEST(PreviewLoader, AnEndlessLineIsBroken) {
    const auto broken = PreviewLoader::withLinesBroken(std::string(PreviewLoader::kLongestLine * 2 + 1, 'x'));
    EXPECT_EQ(broken, std::string(PreviewLoader::kLongestLine, 'x') + "\n" +
                          std::string(PreviewLoader::kLongestLine, 'x') + "\nx");
}

TEST(PreviewLoader, NoCharacterIsCutByABreak) {
    std::string text(PreviewLoader::kLongestLine - 1, 'x');
    text += "\xC3\xA9";
    EXPECT_EQ(PreviewLoader::withLinesBroken(text + "y"), text + "\ny");
}
