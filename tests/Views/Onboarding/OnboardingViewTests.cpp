#include "Components/CategoryTint.h"
#include "Components/Fonts.h"
#include "Components/Label.h"
#include "Components/ShownText.h"
#include "Onboarding/BrandMark.h"
#include "Onboarding/FeatureChip.h"
#include "Onboarding/Paragraph.h"
#include "OnboardingTest.h"
#include <QAccessible>
#include <QScrollArea>
#include <QScrollBar>
#include <QTimer>
#include <set>

namespace quillane {
namespace {

class Onboarding : public OnboardingTest {};

QAccessibleInterface& accessible(QWidget* widget) {
    return *QAccessible::queryAccessibleInterface(widget);
}

// Controls that Tab goes to, from the one that has the focus on, each once.
QStringList tabRound(OnboardingView& sheet) {
    QStringList labels;
    const QWidget* const first = sheet.focusWidget();
    do {
        labels << qobject_cast<PushButton*>(sheet.focusWidget())->label();
        QTest::keyClick(sheet.focusWidget(), Qt::Key_Tab);
    } while (sheet.focusWidget() != first && labels.size() < 10);
    return labels;
}

// Pages

TEST_F(Onboarding, BeginsOnTheFirstPageAndForward) {
    const auto& view = open();
    EXPECT_EQ(view.page(), 0);
    EXPECT_TRUE(view.goingForward());
    EXPECT_EQ(view.size(), QSize(680, 500));
    EXPECT_TRUE(view.isModal());
}

TEST_F(Onboarding, EachPageShowsTheWordsOfItsSlide) {
    open();
    for (int page = 0; page < kPages; ++page) {
        goTo(page);
        const auto& slide = OnboardingView::pages()[static_cast<std::size_t>(page)];
        EXPECT_TRUE(sheet->slide()->isVisible());
        EXPECT_EQ(sheet->slide()->title()->text(), slide.title);
        EXPECT_EQ(sheet->slide()->body()->text(), slide.body);
    }
}

TEST_F(Onboarding, OnlyTheFirstPageShowsTheMarkAndOnlyTheSecondTheFeatures) {
    open();
    for (int page = 0; page < kPages; ++page) {
        goTo(page);
        EXPECT_EQ(sheet->slide()->showMark(), page == 0);
        EXPECT_EQ(sheet->slide()->findChildren<BrandMark*>().size(), page == 0 ? 1 : 0);
        EXPECT_EQ(sheet->slide()->showFeatureRow(), page == 1);
        EXPECT_EQ(sheet->slide()->chips().empty(), page != 1);
    }
}

TEST_F(Onboarding, TheFeatureRowHasAChipForEachCategoryInTheirOrder) {
    openAt(1);
    const auto& chips = sheet->slide()->chips();
    ASSERT_EQ(chips.size(), kAllSweepCategories.size());
    for (std::size_t i = 0; i < chips.size(); ++i) {
        const auto category = kAllSweepCategories[i];
        EXPECT_EQ(chips[i]->text(), words(rawValue(category)));
        EXPECT_EQ(chips[i]->symbol(), words(symbol(category)));
        EXPECT_EQ(chips[i]->tint(), tintOf(category));
        EXPECT_TRUE(i == 0 || chips[i]->y() > chips[i - 1]->y() || chips[i]->x() > chips[i - 1]->x());
    }
}

TEST_F(Onboarding, ContinueGoesForwardAndBackGoesBack) {
    openAt(2);
    EXPECT_TRUE(sheet->goingForward());
    click(sheet->backButton());
    EXPECT_EQ(sheet->page(), 1);
    EXPECT_FALSE(sheet->goingForward());
    click(sheet->mainButton());
    EXPECT_EQ(sheet->page(), 2);
    EXPECT_TRUE(sheet->goingForward());
}

TEST_F(Onboarding, BackDoesNotExistOnTheFirstPage) {
    open();
    EXPECT_FALSE(sheet->backButton()->isVisible());
    sheet->goBack();
    EXPECT_EQ(sheet->page(), 0);
    EXPECT_TRUE(sheet->goingForward());
    click(sheet->mainButton());
    EXPECT_TRUE(sheet->backButton()->isVisible());
    click(sheet->backButton());
    EXPECT_EQ(sheet->page(), 0);
    EXPECT_FALSE(sheet->backButton()->isVisible());
}

TEST_F(Onboarding, NoPageLiesPastTheLast) {
    openAt(kPages - 1);
    sheet->goForward();
    EXPECT_EQ(sheet->page(), kPages - 1);
    EXPECT_TRUE(isOpen());
    EXPECT_FALSE(isRecorded());
}

// Controls

TEST_F(Onboarding, TheMainButtonSaysContinueAndOnTheLastPageGetStarted) {
    open();
    for (int page = 0; page < kPages; ++page) {
        goTo(page);
        EXPECT_EQ(sheet->mainButton()->label(), page < kPages - 1 ? "Continue" : "Get Started");
        EXPECT_TRUE(sheet->mainButton()->isDefault());
    }
    EXPECT_EQ(sheet->skipButton()->label(), "Skip");
    EXPECT_EQ(sheet->backButton()->label(), "Back");
}

TEST_F(Onboarding, GetStartedRecordsThatTheWelcomeIsDoneAndCloses) {
    openAt(kPages - 1);
    EXPECT_FALSE(isRecorded());
    click(sheet->mainButton());
    EXPECT_TRUE(world.defaults.boolean(DefaultsKeys::kHasSeenOnboarding));
    EXPECT_FALSE(isOpen());
}

TEST_F(Onboarding, SkipDoesTheSameOnEveryPageButTheLast) {
    for (int page = 0; page < kPages - 1; ++page) {
        world.defaults.clear(DefaultsKeys::kHasSeenOnboarding);
        openAt(page);
        EXPECT_FALSE(isRecorded());
        click(sheet->skipButton());
        EXPECT_TRUE(world.defaults.boolean(DefaultsKeys::kHasSeenOnboarding));
        EXPECT_FALSE(isOpen());
        turn();
    }
}

TEST_F(Onboarding, OnTheLastPageSkipKeepsItsPlaceAndIsThereForNobody) {
    openAt(kPages - 2);
    const QRect skip = sheet->skipButton()->geometry();
    const QRect dots = sheet->dots()->geometry();
    goTo(kPages - 1);
    EXPECT_EQ(sheet->dots()->geometry(), dots);
    EXPECT_FALSE(sheet->skipButton()->isVisible());
    EXPECT_TRUE(accessible(sheet->skipButton()).state().invisible);
    EXPECT_EQ(tabRound(*sheet), (QStringList{"Get Started", "Back"}));
    const QImage picture = sheet->grab().toImage().convertToFormat(QImage::Format_RGB32);
    const QPoint origin = sheet->skipButton()->parentWidget()->mapTo(sheet.data(), QPoint());
    std::set<QRgb> colors;
    for (int x = skip.left(); x < skip.right(); ++x) {
        colors.insert(picture.pixel((origin + QPoint(x, skip.center().y())) * picture.devicePixelRatio()));
    }
    EXPECT_EQ(colors.size(), 1U) << "nothing of it is drawn";
    QTest::mouseClick(skip.isValid() ? sheet->skipButton()->parentWidget() : nullptr, Qt::LeftButton, {},
                      skip.center());
    EXPECT_TRUE(isOpen());
}

TEST_F(Onboarding, GrantAccessStandsOnItsPageAloneAndStaysThere) {
    open();
    for (int page = 0; page < kPages; ++page) {
        goTo(page);
        EXPECT_EQ(sheet->grantButton()->isVisible(), page == 3) << page;
    }
    click(sheet->backButton());
    EXPECT_EQ(sheet->grantButton()->label(), "Grant Access");
    EXPECT_EQ(world.workspace.settingsOpened(), 0);
    click(sheet->grantButton());
    EXPECT_EQ(world.workspace.settingsOpened(), 1);
    EXPECT_EQ(sheet->page(), 3);
    EXPECT_TRUE(isOpen());
    EXPECT_FALSE(isRecorded());
}

TEST_F(Onboarding, TheControlsStandInTheirOrder) {
    openAt(3);
    const std::vector<QWidget*> controls = {sheet->skipButton(), sheet->dots(), sheet->backButton(),
                                            sheet->grantButton(), sheet->mainButton()};
    for (std::size_t i = 1; i < controls.size(); ++i) {
        EXPECT_GT(controls[i]->x(), controls[i - 1]->geometry().right()) << i;
    }
}

TEST_F(Onboarding, AnyOtherEndLeavesWhatIsRecordedAsItWas) {
    openAt(2);
    sheet->close();
    EXPECT_FALSE(isOpen());
    EXPECT_FALSE(isRecorded());
    turn();
    openAt(2);
    delete sheet;
    EXPECT_FALSE(isRecorded());
}

TEST_F(Onboarding, WithTheWelcomeDoneAnyOtherEndLeavesItDone) {
    world.defaults.set(DefaultsKeys::kHasSeenOnboarding, true);
    openAt(1);
    sheet->close();
    EXPECT_TRUE(world.defaults.boolean(DefaultsKeys::kHasSeenOnboarding));
}

// Keyboard

TEST_F(Onboarding, EscapeClosesItOnNoPageAndFromNoControl) {
    open();
    for (int page = 0; page < kPages; ++page) {
        goTo(page);
        for (auto* const button :
             {sheet->skipButton(), sheet->backButton(), sheet->grantButton(), sheet->mainButton()}) {
            if (button->isVisible()) {
                button->setFocus();
                press(Qt::Key_Escape);
                ASSERT_TRUE(isOpen()) << page << button->label().toStdString();
            }
        }
    }
    EXPECT_FALSE(isRecorded());
}

TEST_F(Onboarding, ReturnGoesOnFromPageToPageAndToTheEnd) {
    open();
    for (int page = 0; page < kPages; ++page) {
        EXPECT_EQ(sheet->page(), page);
        EXPECT_TRUE(sheet->mainButton()->hasFocus());
        press(Qt::Key_Return);
    }
    EXPECT_FALSE(isOpen());
    EXPECT_TRUE(isRecorded());
}

TEST_F(Onboarding, AReturnThatIsHeldTurnsNoPageAndEndsNothing) {
    open();
    hold(Qt::Key_Return);
    hold(Qt::Key_Enter);
    EXPECT_EQ(sheet->page(), 0);
    goTo(kPages - 1);
    hold(Qt::Key_Return);
    EXPECT_TRUE(isOpen());
    EXPECT_FALSE(isRecorded());
}

TEST_F(Onboarding, ReturnOnAButtonThatTheUserHasGoneToPressesThatButton) {
    openAt(3);
    sheet->grantButton()->setFocus();
    press(Qt::Key_Return);
    EXPECT_EQ(world.workspace.settingsOpened(), 1);
    EXPECT_EQ(sheet->page(), 3);
    sheet->backButton()->setFocus();
    press(Qt::Key_Return);
    EXPECT_EQ(sheet->page(), 2);
    sheet->skipButton()->setFocus();
    press(Qt::Key_Return);
    EXPECT_FALSE(isOpen());
}

TEST_F(Onboarding, TabGoesThroughTheControlsFromLeftToRight) {
    openAt(3);
    EXPECT_EQ(tabRound(*sheet), (QStringList{"Continue", "Skip", "Back", "Grant Access"}));
    goTo(4);
    click(sheet->backButton());
    for (int i = 0; i < 3; ++i) {
        click(sheet->backButton());
    }
    EXPECT_EQ(tabRound(*sheet), (QStringList{"Continue", "Skip"}));
}

TEST_F(Onboarding, AfterAPageIsTurnedTheMainButtonHasTheKeyboard) {
    openAt(2);
    sheet->backButton()->setFocus();
    press(Qt::Key_Space);
    EXPECT_EQ(sheet->page(), 1);
    EXPECT_TRUE(sheet->mainButton()->hasFocus());
    sheet->skipButton()->setFocus();
    press(Qt::Key_Left);
    EXPECT_TRUE(sheet->mainButton()->hasFocus());
}

TEST_F(Onboarding, TheArrowsTurnPagesAndEndNothing) {
    open();
    press(Qt::Key_Left);
    EXPECT_EQ(sheet->page(), 0);
    EXPECT_TRUE(sheet->mainButton()->hasFocus());
    for (int page = 1; page < kPages; ++page) {
        press(Qt::Key_Right);
        EXPECT_EQ(sheet->page(), page);
        EXPECT_TRUE(sheet->goingForward());
    }
    press(Qt::Key_Right);
    EXPECT_EQ(sheet->page(), kPages - 1);
    EXPECT_TRUE(isOpen());
    press(Qt::Key_Left);
    EXPECT_EQ(sheet->page(), kPages - 2);
    EXPECT_FALSE(sheet->goingForward());
}

// Hears how often the program is asked to end, and lets it go on.
class QuitCounter : public QObject {
  public:
    QuitCounter() { qApp->installEventFilter(this); }
    int asked = 0;

  protected:
    bool eventFilter(QObject* object, QEvent* event) override {
        asked += event->type() == QEvent::Quit ? 1 : 0;
        return event->type() == QEvent::Quit || QObject::eventFilter(object, event);
    }
};

TEST_F(Onboarding, TheProgramCanBeLeftByItsKeyAndTheWelcomeIsNotDoneThen) {
    open();
    QuitCounter quits;
    // A program hears of its end only while it runs.
    QTimer::singleShot(0, sheet, [] {
        press(Qt::Key_Q, Qt::ControlModifier);
        QCoreApplication::exit();
    });
    QApplication::exec();
    EXPECT_EQ(quits.asked, 1);
    EXPECT_TRUE(isOpen());
    EXPECT_FALSE(isRecorded());
}

// Assistive tools

TEST_F(Onboarding, EveryControlHasANameAndTheSheetIsATitledDialog) {
    openAt(3);
    EXPECT_EQ(accessible(sheet).role(), QAccessible::Dialog);
    EXPECT_EQ(accessible(sheet).text(QAccessible::Name), "Welcome to Quillane");
    for (auto* const button : sheet->findChildren<QAbstractButton*>()) {
        EXPECT_FALSE(accessible(button).text(QAccessible::Name).isEmpty());
    }
}

TEST_F(Onboarding, TheDotsReadAsAPageOfSoMany) {
    open();
    EXPECT_EQ(accessible(sheet->dots()).role(), QAccessible::StaticText);
    for (int page = 0; page < kPages; ++page) {
        goTo(page);
        EXPECT_EQ(sheet->dots()->page(), page);
        EXPECT_EQ(accessible(sheet->dots()).text(QAccessible::Name), QString("Page %1 of 5").arg(page + 1));
    }
}

TEST_F(Onboarding, TheChipsReadAsTheirWords) {
    openAt(1);
    const auto& chip = accessible(sheet->slide()->chips()[1]);
    EXPECT_EQ(chip.role(), QAccessible::StaticText);
    EXPECT_EQ(chip.text(QAccessible::Name), "Developer Caches");
}

TEST_F(Onboarding, APageThatComesIsToldWithItsWords) {
    open();
    EXPECT_EQ(sheet->accessibleDescription(), OnboardingView::pages()[0].body);
    goTo(3);
    const auto& slide = OnboardingView::pages()[3];
    EXPECT_EQ(sheet->deck()->accessibleName(), "Page 4 of 5. " + slide.title + ". " + slide.body);
    EXPECT_EQ(sheet->accessibleDescription(), slide.title + ". " + slide.body);
}

// Room

TEST_F(Onboarding, TheSheetHasOneSizeOnAllPages) {
    open();
    const QSize size = sheet->size();
    for (int page = 0; page < kPages; ++page) {
        goTo(page);
        EXPECT_EQ(sheet->size(), size);
    }
}

TEST_F(Onboarding, TextThatGrowsWhileItIsUpLooksAsIfItHadAlwaysBeenLarge) {
    window.resize(1280, 780);
    Look::setTextScale(1.75);
    const QSize large = openAt(1).size();
    delete sheet;
    Look::setTextScale(1);
    openAt(1);
    ASSERT_LT(sheet->height(), large.height());
    Look::setTextScale(1.75);
    turn();
    EXPECT_EQ(sheet->size(), large);
    EXPECT_EQ(sheet->page(), 1);
    EXPECT_EQ(sheet->findChild<QScrollArea*>()->verticalScrollBar()->maximum(), 0);
}

TEST_F(Onboarding, LargeTextMakesItHigherAndCutsNothing) {
    for (const double scale : {1.0, 1.25, 1.5, 1.75}) {
        Look::setTextScale(scale);
        window.resize(1280, 780); // the offscreen display is no higher than 800
        open();
        for (int page = 0; page < kPages; ++page) {
            goTo(page);
            const auto* const slide = sheet->slide();
            EXPECT_EQ(sheet->findChild<QScrollArea*>()->verticalScrollBar()->maximum(), 0) << scale;
            EXPECT_GE(slide->body()->height(), slide->body()->heightForWidth(slide->body()->width()))
                << scale;
            EXPECT_GE(slide->title()->height(), slide->title()->heightForWidth(slide->title()->width()));
            for (const auto* const chip : slide->chips()) {
                EXPECT_TRUE(chip->parentWidget()->rect().contains(chip->geometry())) << scale;
            }
            for (const auto* const button :
                 {sheet->skipButton(), sheet->backButton(), sheet->grantButton(), sheet->mainButton()}) {
                EXPECT_TRUE(button->isHidden() || button->parentWidget()->rect().contains(button->geometry()))
                    << scale;
            }
        }
        click(sheet->skipButton()->isVisible() ? sheet->skipButton() : sheet->mainButton());
        turn();
    }
}

TEST_F(Onboarding, WhatHasNoRoomInALowWindowIsScrolledTo) {
    Look::setTextScale(2);
    window.resize(1120, 600);
    openAt(1);
    EXPECT_LE(sheet->height(), 560);
    auto* const bar = sheet->findChild<QScrollArea*>()->verticalScrollBar();
    ASSERT_GT(bar->maximum(), 0);
    press(Qt::Key_Down);
    EXPECT_GT(bar->value(), 0);
    press(Qt::Key_PageUp);
    EXPECT_EQ(bar->value(), 0);
    press(Qt::Key_PageDown);
    press(Qt::Key_Right);
    EXPECT_EQ(bar->value(), 0) << "the next page is read from its top";
}

TEST_F(Onboarding, TextThatGrowsWhileItIsUpLeavesItInTheSmallestWindow) {
    window.resize(1120, 600);
    openAt(1);
    Look::setTextScale(2);
    turn();
    EXPECT_EQ(sheet->height(), 560);
    EXPECT_EQ(sheet->geometry().center().y(), window.geometry().center().y());
    Look::setTextScale(1);
    turn();
    EXPECT_EQ(sheet->size(), QSize(680, 500));
    EXPECT_EQ(sheet->geometry().center().y(), window.geometry().center().y());
}

TEST_F(Onboarding, AtTheUsualTextSizeNothingIsScrolledInTheSmallestWindow) {
    window.resize(1120, 600);
    open();
    EXPECT_EQ(sheet->size(), QSize(680, 500));
    EXPECT_EQ(sheet->findChild<QScrollArea*>()->verticalScrollBar()->maximum(), 0);
}

} // namespace
} // namespace quillane
