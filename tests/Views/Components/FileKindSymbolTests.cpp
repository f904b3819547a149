#include "Components/FileKindSymbol.h"
#include "Components/Symbols.h"
#include <gtest/gtest.h>
#include <set>
#include <utility>

namespace quillane {
namespace {

using Kind = UserFile::Kind;

TEST(FileKindSymbol, EachKindHasTheSymbolOfTheTable) {
    const std::pair<Kind, const char*> table[] = {{Kind::image, "photo"},
                                                  {Kind::video, "film"},
                                                  {Kind::audio, "waveform"},
                                                  {Kind::pdf, "doc.richtext"},
                                                  {Kind::document, "doc.text"},
                                                  {Kind::archive, "doc.zipper"},
                                                  {Kind::diskImage, "opticaldisc"},
                                                  {Kind::installer, "shippingbox"},
                                                  {Kind::other, "doc"}};
    for (const auto& [kind, symbol] : table) {
        EXPECT_EQ(fileKindSymbol(kind).toStdString(), symbol);
    }
}

TEST(FileKindSymbol, NoTwoKindsShareASymbolAndEachIsDrawn) {
    std::set<QString> symbols;
    for (const auto kind : kAllUserFileKinds) {
        EXPECT_TRUE(Symbols::exists(fileKindSymbol(kind))) << rawValue(kind);
        symbols.insert(fileKindSymbol(kind));
    }
    EXPECT_EQ(symbols.size(), kAllUserFileKinds.size());
}

} // namespace
} // namespace quillane
