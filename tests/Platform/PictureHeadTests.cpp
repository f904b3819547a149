#include "PictureHead.h"
#include <gtest/gtest.h>
#include <string>

namespace quillane {
namespace {

using namespace std::string_literals;

std::string pair(unsigned value) {
    return {static_cast<char>(value >> 8U), static_cast<char>(value & 0xFFU)};
}

std::string segment(unsigned marker, const std::string& content) {
    return "\xFF"s + static_cast<char>(marker) + pair(static_cast<unsigned>(content.size()) + 2) + content;
}

// Three components, the first with twice the samples in each direction.
std::string frame(unsigned marker, unsigned width, unsigned height) {
    return segment(marker, "\x08"s + pair(height) + pair(width) + "\x03" + "\x01\x22\x00"s + "\x02\x11\x01"s +
                               "\x03\x11\x01"s);
}

std::string scan(unsigned components) {
    return segment(0xDA,
                   std::string(1, static_cast<char>(components)) + std::string(components * 2 + 3, '\0'));
}

const std::string kStart = "\xFF\xD8"s;
constexpr unsigned kBaseline = 0xC0;
constexpr unsigned kProgressive = 0xC2;

struct Form {
    std::string head;
    std::string_view form;
};

class PictureForms : public testing::TestWithParam<Form> {};

TEST_P(PictureForms, AreKnownByTheirFirstBytes) {
    EXPECT_EQ(PictureHead::formOf(GetParam().head), GetParam().form);
}

INSTANTIATE_TEST_SUITE_P(
    All, PictureForms,
    testing::Values(Form{"\x89PNG\r\n\x1A\n...", "png"}, Form{"\xFF\xD8\xFF\xE0", "jpeg"},
                    Form{"GIF89a", "gif"}, Form{"GIF87a", "gif"}, Form{"BM\1\2\3\4\0\0\0\0"s, "bmp"},
                    Form{"BMW, and its history", ""}, Form{"RIFF\1\2\3\4WEBPVP8 ", "webp"},
                    Form{"RIFF\1\2\3\4AVI ", ""}, Form{"II*\0"s, "tiff"}, Form{"MM\0*"s, "tiff"},
                    Form{"\0\0\1\0\2"s, "ico"},
                    Form{"\0\0\0\x18"
                         "ftypheic"s,
                         "heif"},
                    Form{"\0\0\0\x18"
                         "ftypmif1"s,
                         "heif"},
                    Form{"\0\0\0\x18"
                         "ftypavif"s,
                         "avif"},
                    Form{"\0\0\0\x18"
                         "ftypqt  "s,
                         ""},
                    Form{"\0\0\0\x0CJXL \r\n"s, "jxl"}, Form{"P6\n1 1", "ppm"}, Form{"P7\n", ""},
                    Form{"P6x", ""}, Form{"%PDF-1.4", "pdf"}, Form{"mail before it\n%PDF-1.4", "pdf"},
                    Form{"<svg xmlns=''>", "svg"}, Form{"\xEF\xBB\xBF <?xml?>\n<svg>", "svg"},
                    Form{"<html>", ""}, Form{"see <svg>", ""}, Form{"", ""}, Form{"plain text", ""}));

TEST(PictureHead, ThePdfMarkIsLookedForNearTheBeginningOnly) {
    EXPECT_EQ(PictureHead::formOf(std::string(2000, ' ') + "%PDF-1.4"), "");
}

TEST(PictureHead, AJpegInOneScanIsReadRowByRow) {
    EXPECT_EQ(PictureHead::bytesKeptOfJpeg(kStart + frame(kBaseline, 6000, 4000) + scan(3)), 0);
}

TEST(PictureHead, AProgressiveJpegIsKeptWhole) {
    EXPECT_EQ(PictureHead::bytesKeptOfJpeg(kStart + frame(kProgressive, 1000, 500) + scan(3)),
              2 * (1000 * 500 + 2 * 500 * 250));
}

TEST(PictureHead, ABaselineJpegWithAScanForEachComponentIsKeptWhole) {
    EXPECT_EQ(PictureHead::bytesKeptOfJpeg(kStart + frame(kBaseline, 1000, 500) + scan(1)),
              2 * (1000 * 500 + 2 * 500 * 250));
}

TEST(PictureHead, AJpegWhoseScanIsBeyondTheHeadCountsAsKeptWhole) {
    EXPECT_EQ(PictureHead::bytesKeptOfJpeg(kStart + frame(kBaseline, 1000, 500)),
              2 * (1000 * 500 + 2 * 500 * 250));
}

TEST(PictureHead, TheLargestJpegThatCanBeDeclaredIsCountedWithoutOverflow) {
    EXPECT_GT(*PictureHead::bytesKeptOfJpeg(kStart + frame(kProgressive, 65535, 65535) + scan(3)),
              Bytes{11} << 30U);
}

TEST(PictureHead, OtherSegmentsAndFillingAreSteppedOver) {
    const auto hidden = segment(0xE1, frame(kProgressive, 9, 9)); // a small picture within the picture
    EXPECT_EQ(PictureHead::bytesKeptOfJpeg(kStart + hidden + "\xFF" + frame(kBaseline, 60, 40) + scan(3)), 0);
}

// A reader passes "FF 00" by; who took it for a segment would step over the true frame into a decoy.
TEST(PictureHead, AStuffedByteHidesNoFrame) {
    const std::string real = frame(kProgressive, 40000, 40000) + scan(3);
    const auto length = static_cast<unsigned>(real.size() + 2);
    const std::string stuffed{'\xFF', '\0', static_cast<char>(length >> 8U),
                              static_cast<char>(length & 0xFFU)};
    const auto kept =
        PictureHead::bytesKeptOfJpeg(kStart + stuffed + real + frame(kBaseline, 8, 8) + scan(3));
    ASSERT_TRUE(kept);
    EXPECT_GT(*kept, Bytes{1} << 30U);
}

TEST(PictureHead, AnSvgOfManyPartsOrOfPartsUsedAgainIsNotHarmless) {
    const auto of = [](std::size_t parts) {
        std::string document = "<svg>";
        for (std::size_t i = 0; i < parts; ++i) {
            document += "<path d='M0 0'/>";
        }
        return document + "</svg>";
    };
    EXPECT_TRUE(PictureHead::isHarmlessSvg(of(4'998)));
    EXPECT_FALSE(PictureHead::isHarmlessSvg(of(4'999)));
    EXPECT_FALSE(PictureHead::isHarmlessSvg("<svg><g id='a'/><use href='#a'/></svg>"));
}

TEST(PictureHead, AJpegThatDeclaresNoSizeIsUnknown) {
    for (const auto& head : {""s, kStart, kStart + scan(3), kStart + segment(kBaseline, "\x08"),
                             kStart + segment(kBaseline, "\x08\0\1\0\1\3"s), kStart + "\xFF\xC0\xFF"}) {
        EXPECT_FALSE(PictureHead::bytesKeptOfJpeg(head));
    }
}

TEST(PictureHead, APlainDrawingIsHarmless) {
    EXPECT_TRUE(PictureHead::isHarmlessSvg("<svg><rect width='1'/></svg>"));
    EXPECT_TRUE(PictureHead::isHarmlessSvg("<?xml version=\"1.0\" encoding=\"UTF-8\"?><svg/>"));
    EXPECT_TRUE(PictureHead::isHarmlessSvg("\xEF\xBB\xBF<?xml version=\"1.0\"?><svg/>"));
    EXPECT_TRUE(PictureHead::isHarmlessSvg("<svg><text>the encoding=latin of a text</text></svg>"));
}

TEST(PictureHead, ADrawingThatCouldNameAFileOrHideItIsNot) {
    for (const auto& drawing :
         {"<svg><image href='/etc/passwd'/></svg>"s, "<s:svg><s:image href='/etc/passwd'/></s:svg>"s,
          "<svg><feImage href='x'/></svg>"s, "<!DOCTYPE svg [<!ENTITY a 'b'>]><svg>&a;</svg>"s,
          "<svg><path stroke-dasharray='0.0001'/></svg>"s, "<svg style='stroke-d&#97;sharray: 1'/>"s,
          "<svg style='stroke-d\\61sharray: 1'/>"s, "<svg><style>@import 'x'</style></svg>"s,
          "<?xml version='1.0' encoding='UTF-7'?><svg>+ADw-image/></svg>"s,
          "<?xml version='1.0' encoding='UTF-7' is='UTF-8'?><svg/>"s,
          "<?xml version='1.0' encoding=?><svg/>"s, "<\0s\0v\0g\0"s, "<svg>\xFF</svg>"s}) {
        EXPECT_FALSE(PictureHead::isHarmlessSvg(drawing)) << drawing;
    }
}

} // namespace
} // namespace quillane
