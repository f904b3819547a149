#include "TextSink.h"
#include "Utf8.h"
#include <gtest/gtest.h>

namespace quillane {
namespace {

std::string gathered(std::string_view text) {
    TextSink sink(1000);
    sink.add(text);
    return sink.take();
}

TEST(TextSink, MakesOneBlankOfAnyWhiteSpaceAndNoneAtTheEnds) {
    EXPECT_EQ(gathered(" one \t\r\n two\fthree \n"), "one two three");
    EXPECT_EQ(gathered("ten\u00A0euros and\u00A0 \u00A0more"), "ten euros and more");
    EXPECT_EQ(gathered(" \n "), "");
    EXPECT_EQ(gathered(""), "");
}

TEST(TextSink, DropsSoftHyphens) {
    EXPECT_EQ(gathered("in\u00ADvoice \u00AD\u00ADof"), "invoice of");
    EXPECT_EQ(gathered("\u00ADa\u00AD"), "a");
}

TEST(TextSink, KeepsOtherCharactersThatBeginWithTheSameByte) {
    EXPECT_EQ(gathered("5 \u00B0C \u00BFqu\u00E9?"), "5 \u00B0C \u00BFqu\u00E9?");
    EXPECT_EQ(gathered("cut\xC2"), "cut\xC2");
}

TEST(TextSink, JoinsWhatComesInPiecesUnlessAWordEnded) {
    TextSink sink(1000);
    sink.endWord();
    sink.add("in");
    sink.add("voice");
    sink.endWord();
    sink.add("");
    sink.endWord();
    sink.add("of");
    sink.addCodePoint(' ');
    sink.addCodePoint(0x4E94);
    sink.endWord();
    EXPECT_EQ(sink.text(), "invoice of \u4E94");
}

TEST(TextSink, TakesNoMoreThanItsBoundAndOneCharacter) {
    for (std::size_t bound = 0; bound < 12; ++bound) {
        TextSink sink(bound);
        for (int i = 0; i < 4; ++i) {
            sink.add("a\u20AC ");
        }
        EXPECT_TRUE(sink.isFull() || bound > 11);
        EXPECT_LE(sink.text().size(), bound + 2);
        EXPECT_TRUE(Utf8::isValid(sink.text())) << bound;
    }
}

} // namespace
} // namespace quillane
