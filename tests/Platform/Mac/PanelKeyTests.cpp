#include "PanelKey.h"
#include <gtest/gtest.h>
#include <map>

using namespace quillane;
using Key = PreviewPanel::Key;

TEST(PanelKey, OnlyUpDownHomeAndEndAreForTheListBehindThePanel) {
    std::map<int, Key> found;
    for (std::uint16_t code = 0; code < 0x100; ++code) {
        if (const auto key = panelKeyAt(code)) {
            found.emplace(code, *key);
        }
    }
    const std::map<int, Key> expected = {
        {0x7E, Key::up}, {0x7D, Key::down}, {0x73, Key::home}, {0x77, Key::end}};
    EXPECT_EQ(found, expected);
}
