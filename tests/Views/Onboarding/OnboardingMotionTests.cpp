// How the pages of the welcome are turned and its chips come, and that nothing moves at rest.
#include "Components/ContentPicture.h"
#include "Onboarding/FeatureChip.h"
#include "OnboardingTest.h"
#include "WindowPicture.h"
#include <QGraphicsEffect>
#include <QPainter>
#include <algorithm>
#include <cstdlib>

namespace quillane {
namespace {

// The largest difference of any pixel's channels, 0 to 255: drawing through a picture may round otherwise.
int difference(const QImage& one, const QImage& other) {
    int largest = one.size() == other.size() ? 0 : 255;
    for (int y = 0; y < one.height() && largest < 255; ++y) {
        for (int x = 0; x < one.width(); ++x) {
            const QColor a = one.pixelColor(x, y);
            const QColor b = other.pixelColor(x, y);
            largest = std::max({largest, std::abs(a.red() - b.red()), std::abs(a.green() - b.green()),
                                std::abs(a.blue() - b.blue())});
        }
    }
    return largest;
}
constexpr int kRounding = 48; // of the edges of letters

class OnboardingMotion : public OnboardingTest {
  protected:
    OnboardingMotion() { Look::setReducedMotion(false); }

    // So many milliseconds after the page was turned.
    void at(int milliseconds) {
        sheet->deck()->turning().pause(); // so that nothing moves but by hand
        sheet->deck()->turning().setCurrentTime(milliseconds);
    }
    bool isTurning() const { return sheet->deck()->turning().state() != QAbstractAnimation::Stopped; }
    const std::vector<FeatureChip*>& chips() const { return sheet->deck()->slide(1)->chips(); }
    // So many milliseconds after the chips began to wait.
    void chipsAt(int milliseconds) {
        for (auto* const animation : sheet->deck()->slide(1)->findChildren<QSequentialAnimationGroup*>()) {
            animation->pause();
            animation->setCurrentTime(milliseconds);
        }
    }
    void expectRest() {
        EXPECT_TRUE(moving(window).isEmpty());
        EXPECT_EQ(timed(window), QStringList());
    }
    void expectSettled() {
        EXPECT_FALSE(isTurning());
        EXPECT_EQ(sheet->slide()->pos(), QPoint());
        for (int page = 0; page < kPages; ++page) {
            EXPECT_EQ(sheet->deck()->slide(page)->graphicsEffect(), nullptr);
            EXPECT_NE(sheet->deck()->slide(page)->isHidden(), page == sheet->page());
        }
    }
};

TEST_F(OnboardingMotion, TheFirstPageStandsAtOnce) {
    open();
    expectSettled();
    expectRest();
}

TEST_F(OnboardingMotion, APageComesFromWhereTheReaderGoesAndFadesIn) {
    open();
    click(sheet->mainButton());
    EXPECT_TRUE(isTurning());
    EXPECT_EQ(sheet->deck()->turning().totalDuration(), 260);
    at(0);
    EXPECT_EQ(sheet->slide()->x(), 24);
    at(60);
    const int onTheWay = sheet->slide()->x();
    EXPECT_TRUE(onTheWay > 0 && onTheWay < 24) << onTheWay;
    click(sheet->backButton());
    at(0);
    EXPECT_EQ(sheet->page(), 0);
    EXPECT_EQ(sheet->slide()->x(), -24);
    at(260);
    expectSettled();
}

TEST_F(OnboardingMotion, ThePageThatLeavesFadesTheOtherWayAndIsGoneForAllButTheEye) {
    open();
    const QImage first = sheet->deck()->grab().toImage();
    click(sheet->mainButton());
    at(0);
    EXPECT_FALSE(sheet->deck()->slide(0)->isVisible());
    EXPECT_TRUE(sheet->slide()->isVisible());
    EXPECT_LE(difference(sheet->deck()->grab().toImage(), first), kRounding)
        << "as if nothing had happened yet";
    at(60);
    const QImage both = sheet->deck()->grab().toImage();
    EXPECT_TRUE(keepPicture(pictureOf(*sheet), "onboarding-turning"));
    EXPECT_GT(difference(both, first), 100);
    at(260);
    expectSettled();
    const QImage second = sheet->deck()->grab().toImage();
    EXPECT_GT(difference(both, second), 100);
    sheet->close();
    turn();
    Look::setReducedMotion(true);
    openAt(1);
    sheet->deck()->slide(1)->hide(); // so that its chips have not come either
    Look::setReducedMotion(false);
    sheet->deck()->slide(1)->show();
    EXPECT_LE(difference(sheet->deck()->grab().toImage(), second), kRounding)
        << "nothing of the first page is left";
}

TEST_F(OnboardingMotion, PagesTurnedFasterThanTheyRunEndOnTheLastOne) {
    open();
    for (int page = 1; page < kPages; ++page) {
        click(sheet->mainButton());
        at(40 * page);
    }
    click(sheet->backButton());
    at(30);
    click(sheet->mainButton());
    EXPECT_EQ(sheet->page(), kPages - 1);
    EXPECT_TRUE(isTurning());
    at(260);
    expectSettled();
    letMotionEnd(window);
    expectRest();
}

TEST_F(OnboardingMotion, APageThatIsStillOnItsWayLeavesFromWhereItIs) {
    open();
    click(sheet->mainButton());
    at(100);
    const int x = sheet->slide()->x();
    ASSERT_GT(x, 0);
    const QImage alone = [&] { // the second page as it is seen now, without the first one
        QImage picture = sheet->deck()->grab().toImage();
        const auto before = contentPicture(*sheet->slide());
        picture.fill(sheet->deck()->grab().toImage().pixelColor(0, 0));
        QPainter(&picture).drawPixmap(x, 0, before);
        return picture;
    }();
    click(sheet->mainButton());
    at(0);
    EXPECT_LE(difference(sheet->deck()->grab().toImage(), alone), kRounding);
    at(260);
    expectSettled();
}

TEST_F(OnboardingMotion, ChipsComeOneAfterTheOtherAndRiseToTheirPlace) {
    openAt(1);
    ASSERT_EQ(chips().size(), 7U);
    for (std::size_t i = 0; i < chips().size(); ++i) {
        EXPECT_NEAR(chips()[i]->delay(), 0.55 + 0.08 * static_cast<double>(i), 1e-9);
        EXPECT_TRUE(chips()[i]->shown());
    }
    chipsAt(540);
    for (const auto* const chip : chips()) {
        EXPECT_EQ(chip->progress(), 0);
    }
    chipsAt(700); // 0.55 and 0.63 have passed
    EXPECT_GT(chips()[0]->progress(), chips()[1]->progress());
    EXPECT_GT(chips()[1]->progress(), 0);
    EXPECT_EQ(chips()[2]->progress(), 0);
    chipsAt(550 + 6 * 80 + 260);
    for (const auto* const chip : chips()) {
        EXPECT_EQ(chip->progress(), 1);
    }
    letMotionEnd(window);
    expectRest();
}

TEST_F(OnboardingMotion, AChipFadesInFromBelow) {
    openAt(1);
    sheet->deck()->turning().setCurrentTime(260);
    chipsAt(0);
    auto& chip = *chips().front();
    const auto firstInkedRow = [&] {
        const QImage picture = chip.grab().toImage().convertToFormat(QImage::Format_RGB32);
        const QRgb ground = picture.pixel(0, 0);
        for (int y = 0; y < picture.height(); ++y) {
            if (picture.pixel(picture.width() / 2, y) != ground) {
                return y;
            }
        }
        return picture.height();
    };
    EXPECT_EQ(firstInkedRow(), chip.grab().toImage().height()) << "nothing of it is seen";
    chipsAt(550 + 40);
    const int early = firstInkedRow();
    EXPECT_GT(early, 0);
    chipsAt(550 + 260);
    EXPECT_EQ(firstInkedRow(), 0);
    EXPECT_LE(early, FeatureChip::kRise);
}

TEST_F(OnboardingMotion, ChipsComeAnewEachTimeTheirPageIsShown) {
    openAt(1);
    chipsAt(2000);
    click(sheet->mainButton());
    EXPECT_FALSE(chips().front()->shown());
    EXPECT_FALSE(sheet->deck()->slide(1)->appeared());
    click(sheet->backButton());
    EXPECT_TRUE(sheet->deck()->slide(1)->appeared());
    EXPECT_TRUE(chips().front()->shown());
    EXPECT_EQ(chips().front()->progress(), 0);
}

TEST_F(OnboardingMotion, ClosingInTheMiddleLeavesNothingMoving) {
    openAt(1);
    EXPECT_FALSE(moving(window).isEmpty());
    sheet->setAttribute(Qt::WA_DeleteOnClose, false);
    sheet->close();
    expectSettled();
    expectRest();
    sheet->open();
    EXPECT_FALSE(moving(window).isEmpty()) << "the chips come again";
    sheet->close();
    delete sheet;
    expectRest();
}

TEST_F(OnboardingMotion, TheWindowMayGoInTheMiddle) {
    auto* const other = new QWidget;
    other->show();
    sheet = OnboardingView::present(library, other);
    click(sheet->mainButton());
    EXPECT_FALSE(moving(*sheet).isEmpty());
    delete other;
    EXPECT_TRUE(sheet.isNull());
}

TEST_F(OnboardingMotion, WithReducedMotionEverythingStandsAtOnce) {
    Look::setReducedMotion(true);
    open();
    for (int page = 0; page < kPages; ++page) {
        goTo(page);
        expectSettled();
        expectRest();
    }
    goTo(1);
    while (sheet->page() > 1) {
        click(sheet->backButton());
    }
    for (const auto* const chip : chips()) {
        EXPECT_EQ(chip->progress(), 1);
    }
    expectRest();
}

} // namespace
} // namespace quillane
