#include "Preview/PreviewLoader.h"
#include <gtest/gtest.h>
#include <string>

using namespace quillane;

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
