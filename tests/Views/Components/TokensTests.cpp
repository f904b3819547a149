#include "Components/Tokens.h"
#include <QApplication>
#include <cmath>
#include <gtest/gtest.h>

namespace quillane {
namespace {

// How contrast is measured: relative luminance of sRGB, as accessibility guidelines define it.
double luminance(const QColor& color) {
    const auto linear = [](double c) {
        return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double contrast(const QColor& a, const QColor& b) {
    const double la = luminance(a);
    const double lb = luminance(b);
    return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

QColor over(const QColor& top, const QColor& below) {
    const auto mix = [&](float t, float b) { return t * top.alphaF() + b * (1 - top.alphaF()); };
    return QColor::fromRgbF(mix(top.redF(), below.redF()), mix(top.greenF(), below.greenF()),
                            mix(top.blueF(), below.blueF()));
}

struct Named {
    const char* name;
    QColor color;
};

class TokenSet : public ::testing::TestWithParam<bool> {
  protected:
    const Tokens& tokens() const { return Tokens::of(GetParam(), false); }

    std::vector<Named> grounds() const {
        const Tokens& t = tokens();
        return {{"page", t.page},       {"base", t.base},       {"card", t.card},
                {"sidebar", t.sidebar}, {"selIdle", t.selIdle}, {"alt", t.alt}};
    }
};

TEST_P(TokenSet, TextCanBeReadOnEveryGround) {
    const Tokens& t = tokens();
    for (const Named& text : std::vector<Named>{{"text", t.text},
                                                {"text2", t.text2},
                                                {"text3", t.text3},
                                                {"link", t.link},
                                                {"orange", t.orange},
                                                {"red", t.red},
                                                {"green", t.green}}) {
        for (const Named& ground : grounds()) {
            EXPECT_GE(contrast(text.color, ground.color), 4.5) << text.name << " on " << ground.name;
        }
    }
}

TEST_P(TokenSet, AMarkCanBeReadOnItsOwnSoftGround) {
    const Tokens& t = tokens();
    for (const Tint tint : {Tint::Orange, Tint::Red, Tint::Green, Tint::Secondary}) {
        for (const QColor& below : {t.page, t.base, t.card}) {
            EXPECT_GE(contrast(t.tint(tint), over(t.soft(tint), below)), 4.5) << static_cast<int>(tint);
        }
    }
}

TEST_P(TokenSet, TheFocusRingStandsOutFromEveryGround) {
    std::vector<Named> all = grounds();
    all.push_back({"selected sidebar item", over(tokens().side, tokens().sidebar)});
    for (const Named& ground : all) {
        EXPECT_GE(contrast(over(tokens().ring, ground.color), ground.color), 3) << ground.name;
    }
}

TEST_P(TokenSet, WhiteCanBeReadOnFilledGrounds) {
    const Tokens& t = tokens();
    for (const Named& ground : std::vector<Named>{{"accent", t.accent},
                                                  {"accentHover", t.accentHover},
                                                  {"sel", t.sel},
                                                  {"permanent", t.permanent}}) {
        EXPECT_GE(contrast(Qt::white, ground.color), 4.5) << ground.name;
    }
}

TEST_P(TokenSet, HighContrastTakesItsLinesFromTextColours) {
    const Tokens& strong = Tokens::of(GetParam(), true);
    EXPECT_EQ(strong.line, tokens().text3);
    EXPECT_EQ(strong.ctlLine, tokens().text2);
    EXPECT_EQ(strong.text, tokens().text);
    EXPECT_TRUE(strong.highContrast);
}

TEST_P(TokenSet, ThePaletteSpeaksOfTheTokens) {
    const QPalette palette = tokens().palette();
    EXPECT_EQ(palette.color(QPalette::Window), tokens().page);
    EXPECT_EQ(palette.color(QPalette::WindowText), tokens().text);
    EXPECT_EQ(palette.color(QPalette::PlaceholderText), tokens().text3);
    EXPECT_EQ(palette.color(QPalette::Inactive, QPalette::Highlight), tokens().selIdle);
}

INSTANTIATE_TEST_SUITE_P(LightAndDark, TokenSet, ::testing::Bool(),
                         [](const auto& mode) { return mode.param ? "Dark" : "Light"; });

TEST(Tokens, APaletteWithLighterTextThanGroundIsDark) {
    const QPalette before = QApplication::palette();
    QPalette palette = before;
    palette.setColor(QPalette::Window, QColor("#303030"));
    palette.setColor(QPalette::WindowText, QColor("#404040"));
    QApplication::setPalette(palette);
    EXPECT_TRUE(Tokens::current().dark);
    palette.setColor(QPalette::WindowText, QColor("#202020"));
    QApplication::setPalette(palette);
    EXPECT_FALSE(Tokens::current().dark);
    QApplication::setPalette(before);
}

TEST(Tokens, TheRedThatDeletesForGoodIsTheSameInBothModes) {
    EXPECT_EQ(Tokens::light().permanent, Tokens::darkSet().permanent);
}

TEST(Tokens, ATileIsThirteenPercentOfItsTint) {
    const Tokens& t = Tokens::light();
    EXPECT_NEAR(t.soft(Tint::Startup).alphaF(), 0.13, 0.005);
    EXPECT_EQ(t.soft(Tint::Startup).rgb() & 0xFFFFFF, t.startup.rgb() & 0xFFFFFF);
}

} // namespace
} // namespace quillane
