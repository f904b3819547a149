#include "PngText.h"
#include "PropertyListWriter.h"
#include "ScreenCapture.h"
#include <gtest/gtest.h>
#include <string>

namespace quillane {
namespace {

using PngText::chunk;
using PngText::kSignature;

std::string software(const std::string& tool) {
    return PngText::text("Software", tool);
}

TEST(ScreenCapture, AToolIsNamedInWholeBeforeThePicture) {
    const auto head = kSignature + chunk("IHDR", "1234567890123");
    const auto picture = chunk("IDAT", "pixels");
    EXPECT_TRUE(ScreenCapture::isMarkedPng(head + software("gnome-screenshot") + picture));
    EXPECT_TRUE(ScreenCapture::isMarkedPng(head + software("other") + software("mate-screenshot") + picture));
    EXPECT_FALSE(ScreenCapture::isMarkedPng(head + picture + software("gnome-screenshot")));
    EXPECT_FALSE(ScreenCapture::isMarkedPng(head + software("gnome-screenshot-like") + picture));
    EXPECT_FALSE(ScreenCapture::isMarkedPng(head + software("gnome") + picture));
    const auto other = chunk("iTXt", std::string("Software\0gnome-screenshot", 25));
    EXPECT_FALSE(ScreenCapture::isMarkedPng(head + other + picture));
    EXPECT_FALSE(ScreenCapture::isMarkedPng(head + PngText::text("Title 12", "gnome-screenshot") + picture));
    EXPECT_FALSE(ScreenCapture::isMarkedPng(software("gnome-screenshot")));
    EXPECT_FALSE(ScreenCapture::isMarkedPng(""));
}

TEST(ScreenCapture, NoLengthThatAFileClaimsLeadsBeyondIt) {
    const auto whole = kSignature + chunk("IHDR", "1234567890123") + software("gnome-screenshot");
    const auto endOfText = whole.size() - 4; // the checksum is not looked at
    for (std::size_t cut = 0; cut < endOfText; ++cut) {
        EXPECT_FALSE(ScreenCapture::isMarkedPng(whole.substr(0, cut))) << cut;
    }
    EXPECT_TRUE(ScreenCapture::isMarkedPng(whole.substr(0, endOfText)));
    EXPECT_FALSE(ScreenCapture::isMarkedPng(kSignature + "\xFF\xFF\xFF\xFFtEXtSoftware"));
    const auto longer = std::string("\0\0\0\x1AtEXt", 8) + std::string("Software\0gnome-screenshot", 25);
    EXPECT_FALSE(ScreenCapture::isMarkedPng(kSignature + longer)) << "one byte less than it says";
}

TEST(ScreenCapture, OnlyTheTruthValueOfAPropertyListIsTrue) {
    EXPECT_TRUE(ScreenCapture::isAttributeTrue(binaryPropertyList(Plist(true))));
    EXPECT_FALSE(ScreenCapture::isAttributeTrue(binaryPropertyList(Plist(false))));
    EXPECT_FALSE(ScreenCapture::isAttributeTrue(binaryPropertyList("true")));
    EXPECT_FALSE(ScreenCapture::isAttributeTrue(""));
    EXPECT_FALSE(ScreenCapture::isAttributeTrue("bplist00"));
}

} // namespace
} // namespace quillane
