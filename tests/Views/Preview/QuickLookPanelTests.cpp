#include "Components/DateWords.h"
#include "Components/Look.h"
#include "Components/ShownText.h"
#include "Components/SidebarView.h"
#include "Components/SymbolButton.h"
#include "Formatting.h"
#include "Preview/PictureView.h"
#include "Preview/QuickLookPanel.h"
#include "Shell/Sidebar.h"
#include "WindowPicture.h"
#include "WindowTest.h"
#include <QPlainTextEdit>
#include <QScrollBar>

using namespace quillane;
using Content = QuickLookPanel::Content;

namespace {

std::shared_ptr<const IconImage> plain(int width, int height, std::uint8_t grey = 200) {
    IconImage image{width, height, {}};
    image.rgba.resize(std::size_t{4} * static_cast<std::size_t>(width) * static_cast<std::size_t>(height),
                      grey);
    return std::make_shared<const IconImage>(std::move(image));
}

std::shared_ptr<const IconImage> opaque(int width, int height, std::uint8_t grey) {
    auto image = *plain(width, height, grey);
    for (std::size_t alpha = 3; alpha < image.rgba.size(); alpha += 4) {
        image.rgba[alpha] = 255;
    }
    return std::make_shared<const IconImage>(std::move(image));
}

class QuickLook : public WindowTest {
  protected:
    // The window over three applications, the keyboard in their table.
    void SetUp() override {
        openReady({measuredApp("Alder", 3'000'000), measuredApp("Beech", 2'000'000),
                   measuredApp("Cedar", 1'000'000)});
        click("Alder");
        finish(); // icons, which are jobs too
    }
    void TearDown() override { Look::setDark(false); }

    QuickLookPanel& panel() const { return *window->quickLook(); }
    // A file of the disk, whose page is this picture.
    FileURL picture(const char* name, int width = 40, int height = 20) {
        const auto url = file(name);
        previews.setPages(url, {{plain(width, height), {}, 0, 1}});
        return url;
    }
    FileURL document(const char* name, int pages) {
        const auto url = file(name);
        std::vector<PreviewPage> all;
        for (int number = 0; number < pages; ++number) {
            all.push_back({plain(30, 40 + number), {}, number, pages});
        }
        previews.setPages(url, std::move(all));
        return url;
    }
    FileURL text(const char* name, const std::string& content) {
        const auto url = file(name);
        previews.setPages(url, {{nullptr, content, 0, 1}});
        return url;
    }
    FileURL file(const char* name) {
        const auto path = "/Users/alex/" + std::string(name);
        disk.file(path, "12345");
        return FileURL(path);
    }
    void set(const std::optional<FileURL>& url) {
        window->state().quickLookURL = url;
        turn();
    }
    void look(const FileURL& url) {
        set(url);
        finish();
    }
    bool isLooking() const { return window->state().quickLookURL.get().has_value(); }
    void type(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(&panel(), key, modifiers);
        finish();
    }
    int shownHeight() const { return panel().picture()->picture()->height; }
};

} // namespace

TEST_F(QuickLook, ThePanelIsOpenWhileAFileIsLookedAt) {
    EXPECT_FALSE(panel().isVisible());
    look(picture("Beach.png"));
    EXPECT_TRUE(panel().isVisible());
    EXPECT_FALSE(panel().isModal());
    EXPECT_EQ(panel().windowTitle(), "Beach.png");
    set(std::nullopt);
    EXPECT_FALSE(panel().isVisible());
}

TEST_F(QuickLook, EscapeSpaceTheCloseKeyAndTheCloseButtonEmptyTheState) {
    const auto url = picture("Beach.png");
    const std::vector<std::function<void()>> ways = {
        [&] { type(Qt::Key_Escape); }, [&] { type(Qt::Key_Space); },
        [&] { type(Qt::Key_W, Qt::ControlModifier); }, [&] { panel().close(); }};
    for (const auto& way : ways) {
        look(url);
        ASSERT_TRUE(isLooking());
        way();
        turn();
        EXPECT_FALSE(isLooking());
        EXPECT_FALSE(panel().isVisible());
    }
}

TEST_F(QuickLook, TheSpaceThatIsHeldDownDoesNotCloseWhatItOpened) {
    look(picture("Beach.png"));
    QKeyEvent repeated(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier, " ", true);
    QCoreApplication::sendEvent(&panel(), &repeated);
    turn();
    EXPECT_TRUE(isLooking());
}

TEST_F(QuickLook, TheWindowsEndIsThePanelsEnd) {
    look(picture("Beach.png"));
    window->hide();
    turn();
    EXPECT_FALSE(isLooking());
    EXPECT_FALSE(panel().isVisible());
}

TEST_F(QuickLook, TheWindowMayGoWhileAFileIsLookedAt) {
    look(picture("Beach.png"));
    close();
    EXPECT_EQ(window, nullptr);
}

TEST_F(QuickLook, AnotherSectionEndsTheLook) {
    look(picture("Beach.png"));
    window->showSection(LibrarySection::overview);
    turn();
    EXPECT_FALSE(isLooking());
    EXPECT_FALSE(panel().isVisible());
}

TEST_F(QuickLook, TheKeyboardComesBackToWhereItWas) {
    auto* const before = window->focusWidget();
    ASSERT_NE(before, nullptr);
    look(picture("Beach.png"));
    EXPECT_TRUE(panel().hasFocus());
    type(Qt::Key_Escape);
    turn();
    EXPECT_EQ(window->focusWidget(), before);
}

TEST_F(QuickLook, KeysOfAListMoveTheSelectionBehindThePanel) {
    look(picture("Beach.png"));
    type(Qt::Key_Down);
    EXPECT_EQ(selectedNames(), QStringList{"Beech"});
    type(Qt::Key_End);
    EXPECT_EQ(selectedNames(), QStringList{"Cedar"});
    type(Qt::Key_Up);
    EXPECT_EQ(selectedNames(), QStringList{"Beech"});
    type(Qt::Key_Home);
    EXPECT_EQ(selectedNames(), QStringList{"Alder"});
    EXPECT_TRUE(panel().hasFocus());
}

TEST_F(QuickLook, ThePanelFollowsTheFileThatIsLookedAt) {
    look(picture("Beach.png", 40, 21));
    EXPECT_EQ(shownHeight(), 21);
    look(picture("Castle.png", 40, 22));
    EXPECT_EQ(panel().windowTitle(), "Castle.png");
    EXPECT_EQ(shownHeight(), 22);
    EXPECT_EQ(panel().picture()->accessibleName(), "Castle.png");
}

TEST_F(QuickLook, NothingOfTheFileBeforeStandsUnderTheNewName) {
    look(picture("Beach.png"));
    ASSERT_EQ(panel().content(), Content::picture);
    EXPECT_NE(panel().facts(), "");
    set(picture("Castle.png"));
    EXPECT_EQ(panel().windowTitle(), "Castle.png");
    EXPECT_EQ(panel().content(), Content::nothing);
    EXPECT_EQ(panel().facts(), "");
}

TEST_F(QuickLook, AnAnswerThatComesTooLateIsNotShownAndTheNewestIsAskedForNext) {
    const auto first = picture("A.png", 40, 21);
    const auto second = picture("B.png", 40, 22);
    const auto third = picture("C.png", 40, 23);
    set(first);
    ASSERT_EQ(runner.waitingJobs(), 1U);
    set(second);
    set(third);
    EXPECT_EQ(runner.waitingJobs(), 1U) << "one job at a time";
    runner.runJob();
    turn();
    EXPECT_EQ(panel().content(), Content::nothing);
    finish();
    EXPECT_EQ(shownHeight(), 23);
    const auto asked = previews.requests();
    EXPECT_TRUE(std::ranges::none_of(asked, [&](const auto& request) { return request.url == second; }));
}

TEST_F(QuickLook, AnAnswerAfterTheEndOpensNothing) {
    set(picture("Beach.png"));
    set(std::nullopt);
    finish();
    EXPECT_FALSE(panel().isVisible());
    EXPECT_EQ(panel().picture()->picture(), nullptr);
}

TEST_F(QuickLook, WorkIsShownAfterAMomentOnly) {
    set(picture("Beach.png"));
    EXPECT_EQ(panel().content(), Content::nothing);
    clock.advanceWithoutRunning(QuickLookPanel::kMoment);
    turn();
    EXPECT_EQ(panel().content(), Content::loading);
    finish();
    EXPECT_EQ(panel().content(), Content::picture);
    clock.advance(QuickLookPanel::kMoment * 2);
    turn();
    EXPECT_EQ(panel().content(), Content::picture);
}

TEST_F(QuickLook, APictureFillsTheRoomInItsProportions) {
    look(picture("Beach.png", 4000, 1000));
    const auto* const view = panel().picture();
    const auto place = view->place();
    EXPECT_DOUBLE_EQ(place.width(), view->width());
    EXPECT_DOUBLE_EQ(place.height(), view->width() / 4.0);
    EXPECT_EQ(place.center().toPoint(), QRectF(view->rect()).center().toPoint());
}

TEST_F(QuickLook, APictureIsShownAtMostTwiceAsLargeAsItIs) {
    look(picture("Small.png", 40, 20));
    EXPECT_EQ(panel().picture()->place().size(), QSizeF(80, 40));
}

TEST_F(QuickLook, APictureIsAskedForAsLargeAsTheScreen) {
    look(picture("Beach.png"));
    const auto asked = previews.requests().back().size;
    EXPECT_EQ(QSize(asked.width, asked.height), window->screen()->availableSize());
}

TEST_F(QuickLook, PagesAreTurnedByKeysAndButtonsUpToTheEnds) {
    look(document("Report.pdf", 3));
    EXPECT_EQ(panel().pageWords(), "Page 1 of 3");
    EXPECT_FALSE(panel().previousPage()->isEnabled());
    type(Qt::Key_Left);
    EXPECT_EQ(panel().pageWords(), "Page 1 of 3");
    type(Qt::Key_Right);
    EXPECT_EQ(panel().pageWords(), "Page 2 of 3");
    EXPECT_EQ(shownHeight(), 41);
    type(Qt::Key_PageDown);
    EXPECT_EQ(panel().pageWords(), "Page 3 of 3");
    EXPECT_FALSE(panel().nextPage()->isEnabled());
    type(Qt::Key_PageDown);
    EXPECT_EQ(panel().pageWords(), "Page 3 of 3");
    type(Qt::Key_PageUp);
    panel().previousPage()->click();
    finish();
    EXPECT_EQ(panel().pageWords(), "Page 1 of 3");
    EXPECT_EQ(shownHeight(), 40);
    panel().nextPage()->click();
    finish();
    EXPECT_EQ(shownHeight(), 41);
}

TEST_F(QuickLook, AnotherFileBeginsAtItsFirstPage) {
    look(document("Report.pdf", 3));
    type(Qt::Key_Right);
    look(document("Letter.pdf", 2));
    EXPECT_EQ(panel().pageWords(), "Page 1 of 2");
    look(picture("Beach.png"));
    EXPECT_EQ(panel().pageWords(), "");
    EXPECT_FALSE(panel().nextPage()->isVisible());
}

TEST_F(QuickLook, APageThatCannotBeShownSaysSoAndTheOthersStay) {
    const auto url = document("Report.pdf", 3);
    look(url);
    previews.setPages(url, {{plain(30, 40), {}, 0, 3}});
    type(Qt::Key_Right);
    EXPECT_EQ(panel().content(), Content::facts);
    EXPECT_EQ(panel().sentence(), "This page can't be shown.");
    EXPECT_EQ(panel().pageWords(), "Page 2 of 3");
    type(Qt::Key_Left);
    EXPECT_EQ(panel().content(), Content::picture);
}

TEST_F(QuickLook, ATextIsShownAsItStandsAndCannotBeChanged) {
    look(text("Notes.txt", "<b>One</b>\nTwo"));
    EXPECT_EQ(panel().content(), Content::text);
    EXPECT_EQ(panel().text()->toPlainText(), "<b>One</b>\nTwo");
    EXPECT_TRUE(panel().text()->isReadOnly());
    EXPECT_EQ(panel().text()->accessibleName(), "Notes.txt");
}

TEST_F(QuickLook, ALongTextIsPagedThroughWithoutTheFocus) {
    look(text("Notes.txt", QString("line\n").repeated(2000).toStdString()));
    auto* const bar = panel().text()->verticalScrollBar();
    EXPECT_EQ(bar->value(), 0);
    type(Qt::Key_PageDown);
    const int down = bar->value();
    EXPECT_GT(down, 0);
    type(Qt::Key_PageUp);
    EXPECT_EQ(bar->value(), 0);
}

TEST_F(QuickLook, SpaceInTheTextEndsTheLookToo) {
    look(text("Notes.txt", "One"));
    panel().text()->setFocus();
    QTest::keyClick(panel().text(), Qt::Key_Space);
    turn();
    EXPECT_FALSE(isLooking());
}

TEST_F(QuickLook, AFileWithoutALookIsToldByItsIconAndFacts) {
    const auto url = file("Backup.zip");
    disk.modified(url.path(), clock.now().addingSeconds(-86'400));
    look(url);
    EXPECT_EQ(panel().content(), Content::facts);
    EXPECT_EQ(panel().sentence(), "");
    const auto bytes = Bytes{disk.allocationOf(url.path())};
    EXPECT_EQ(panel().facts(),
              words("Archive · " + Formatting::byteCount(bytes) + " · Last opened yesterday"));
}

TEST_F(QuickLook, WordsForDatesAreToldAnewWhenTheyMayDiffer) {
    const auto url = file("Backup.zip");
    disk.modified(url.path(), clock.now().addingSeconds(-86'400));
    look(url);
    clock.setNow(clock.now().addingSeconds(86'400.0 * 400));
    tellDateWordsMayDiffer();
    turn();
    EXPECT_TRUE(panel().facts().endsWith("Last opened last year")) << panel().facts().toStdString();
}

TEST_F(QuickLook, AFileThatHasGoneSaysSo) {
    look(FileURL("/Users/alex/Gone.png"));
    EXPECT_EQ(panel().content(), Content::facts);
    EXPECT_EQ(panel().sentence(), "This file is no longer here.");
    EXPECT_EQ(panel().facts(), "");
}

TEST_F(QuickLook, AFolderIsToldByItsNameAlone) {
    disk.folder("/Users/alex/Folder");
    look(FileURL("/Users/alex/Folder"));
    EXPECT_EQ(panel().content(), Content::facts);
    EXPECT_EQ(panel().sentence(), "");
    EXPECT_EQ(panel().facts(), "");
}

TEST_F(QuickLook, ANameThatWouldDeceiveIsShownAsItIs) {
    look(picture("a\xE2\x80\xAEgnp.exe"));
    EXPECT_EQ(panel().windowTitle(), shownName("a\xE2\x80\xAEgnp.exe"));
    look(picture("[*] b.png"));
    EXPECT_EQ(panel().windowTitle(), "[*][*] b.png"); // which Qt shows as one
}

// The work

TEST_F(QuickLook, ThePanelAsksWhereTheUserWaitsForIt) {
    runner.clearHistory();
    set(picture("Beach.png"));
    EXPECT_EQ(runner.history(), std::vector{Priority::userInitiated});
}

TEST_F(QuickLook, WorkThatNobodyWaitsForIsAskedToStop) {
    set(picture("A.png"));
    set(picture("B.png"));
    finish();
    EXPECT_EQ(previews.stoppedRequests(), 1);
    set(picture("C.png"));
    set(std::nullopt);
    finish();
    EXPECT_EQ(previews.stoppedRequests(), 2);
    look(picture("D.png", 40, 24));
    EXPECT_EQ(previews.stoppedRequests(), 2);
    EXPECT_EQ(shownHeight(), 24);
}

TEST_F(QuickLook, WhatWaitsWhenTheLookEndsIsNotBegun) {
    set(picture("A.png"));
    set(picture("B.png"));
    set(std::nullopt);
    finish();
    EXPECT_EQ(previews.requests().size(), 1U);
}

TEST_F(QuickLook, NoIconIsMadeForAFileThatIsNoLongerLookedAt) {
    const auto left = file("A.zip");
    set(left);
    set(picture("B.png"));
    finish();
    EXPECT_TRUE(std::ranges::none_of(workspace.iconRequests(),
                                     [&](const auto& request) { return request.url == left; }));
    look(left);
    EXPECT_EQ(workspace.iconRequests().back(), (FakeWorkspace::IconRequest{left, QuickLookPanel::kIconSide}));
}

TEST_F(QuickLook, AChangeThatLeavesTheFileAsksNothing) {
    const auto url = picture("Beach.png");
    look(url);
    library.searchText = "Alder";
    window->state().quickLookURL = url;
    finish();
    EXPECT_EQ(previews.requests().size(), 1U);
}

TEST_F(QuickLook, TheSpinnerOfAFileThatWasLeftDoesNotComeToTheNext) {
    set(picture("A.png"));
    clock.advanceWithoutRunning(QuickLookPanel::kMoment / 2);
    turn();
    set(picture("B.png"));
    clock.advanceWithoutRunning(QuickLookPanel::kMoment / 2);
    turn();
    EXPECT_EQ(panel().content(), Content::nothing) << "the moment of the first";
    clock.advanceWithoutRunning(QuickLookPanel::kMoment / 2);
    turn();
    EXPECT_EQ(panel().content(), Content::loading);
}

TEST_F(QuickLook, NoSpinnerComesOverWhatWasThereWithinTheMoment) {
    look(picture("Beach.png"));
    clock.advance(QuickLookPanel::kMoment);
    turn();
    EXPECT_EQ(panel().content(), Content::picture);
}

TEST_F(QuickLook, PagesOfTheFileBeforeAreNotToldOfTheNext) {
    look(document("Report.pdf", 3));
    set(document("Letter.pdf", 2));
    EXPECT_EQ(panel().pageWords(), "");
    type(Qt::Key_Right);
    EXPECT_EQ(panel().pageWords(), "Page 1 of 2");
}

TEST_F(QuickLook, NothingIsKeptOfAFileWhenTheLookEnds) {
    look(text("Notes.txt", "secret"));
    set(std::nullopt);
    EXPECT_EQ(panel().text()->toPlainText(), "");
    look(picture("Beach.png"));
    set(std::nullopt);
    EXPECT_EQ(panel().picture()->picture(), nullptr);
}

TEST_F(QuickLook, AnEndlessLineOfATextIsBroken) {
    look(text("Notes.txt", std::string(PreviewLoader::kLongestLine + 1, 'x')));
    EXPECT_EQ(panel().text()->blockCount(), 2);
}

// What is drawn

TEST_F(QuickLook, AnotherPictureOfTheSameSizeIsDrawnAnew) {
    const auto centre = [&] {
        const QImage drawn = panel().picture()->grab().toImage();
        return qRed(drawn.pixel(drawn.rect().center()));
    };
    const auto first = file("A.png");
    previews.setPages(first, {{opaque(40, 20, 200), {}, 0, 1}});
    const auto second = file("B.png");
    previews.setPages(second, {{opaque(40, 20, 90), {}, 0, 1}});
    look(first);
    EXPECT_EQ(centre(), 200);
    look(second);
    EXPECT_EQ(centre(), 90);
}

TEST_F(QuickLook, APictureIsDrawnAnewAtAnotherSizeOfThePanel) {
    const auto url = file("A.png");
    previews.setPages(url, {{opaque(4000, 3000, 200), {}, 0, 1}});
    look(url);
    const auto leftOf = [&] {
        const QImage drawn = panel().picture()->grab().toImage();
        const auto place = panel().picture()->place().toRect();
        return qRed(drawn.pixel(place.left() + 2, place.center().y()));
    };
    EXPECT_EQ(leftOf(), 200);
    panel().resize(QuickLookPanel::kLeastSize);
    turn();
    EXPECT_EQ(leftOf(), 200);
    panel().resize(QuickLookPanel::kDefaultSize);
    turn();
    EXPECT_EQ(leftOf(), 200);
}

TEST_F(QuickLook, APictureWithoutPixelsIsNone) {
    const auto url = file("A.png");
    previews.setPages(url, {{std::make_shared<const IconImage>(), {}, 0, 1}});
    look(url);
    EXPECT_EQ(panel().picture()->picture(), nullptr);
    EXPECT_TRUE(panel().picture()->place().isEmpty());
}

TEST_F(QuickLook, ThePanelHasItsSizesAndATextLettersOfOneWidth) {
    look(text("Notes.txt", "One"));
    EXPECT_EQ(panel().size(), QuickLookPanel::kDefaultSize);
    EXPECT_EQ(panel().minimumSize(), QuickLookPanel::kLeastSize);
    EXPECT_EQ(panel().text()->font().families(), QStringList{"monospace"});
}

TEST_F(QuickLook, TheLowestRowStaysAsHighWhenPagesCome) {
    look(picture("Beach.png"));
    const int before = panel().picture()->height();
    look(document("Report.pdf", 3));
    EXPECT_EQ(panel().picture()->height(), before);
}

// Keys

TEST_F(QuickLook, KeysOfAListKeepTheirModifiers) {
    look(picture("Beach.png"));
    type(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(selectedNames(), QStringList({"Alder", "Beech"}));
}

TEST_F(QuickLook, TheSpaceThatIsHeldDownDoesNotReachAnyButton) {
    look(document("Report.pdf", 3));
    panel().nextPage()->setFocus();
    QKeyEvent repeated(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier, " ", true);
    QCoreApplication::sendEvent(&panel(), &repeated);
    finish();
    EXPECT_EQ(panel().pageWords(), "Page 1 of 3");
    EXPECT_TRUE(isLooking());
}

TEST_F(QuickLook, TabLeavesAText) {
    look(text("Notes.txt", "One"));
    panel().text()->setFocus();
    QTest::keyClick(panel().text(), Qt::Key_Tab);
    EXPECT_FALSE(panel().text()->hasFocus());
    EXPECT_EQ(panel().text()->toPlainText(), "One");
}

TEST_F(QuickLook, AKeyThatScrollsATextDoesNothingToAPicture) {
    look(text("Notes.txt", QString("line\n").repeated(2000).toStdString()));
    auto* const bar = panel().text()->verticalScrollBar();
    const int top = bar->value();
    look(picture("Beach.png"));
    type(Qt::Key_PageDown);
    EXPECT_EQ(panel().content(), Content::picture);
    EXPECT_EQ(bar->value(), top);
}

// The windows

TEST_F(QuickLook, AWindowThatGoesToTheDockKeepsTheLook) {
    look(picture("Beach.png"));
    QHideEvent toTheDock;
    QSpontaneKeyEvent::setSpontaneous(&toTheDock);
    QCoreApplication::instance()->notify(window.get(), &toTheDock); // as sent by the system
    turn();
    EXPECT_TRUE(isLooking());
}

TEST_F(QuickLook, TheCloseButtonHidesThePanelAtOnce) {
    look(picture("Beach.png"));
    panel().close();
    EXPECT_FALSE(isLooking());
    EXPECT_FALSE(panel().isVisible()) << "without another turn";
}

TEST_F(QuickLook, AFileThatIsLookedAtInAnotherSectionBelongsToThatOne) {
    look(picture("Beach.png"));
    set(std::nullopt);
    window->showSection(LibrarySection::developer);
    turn();
    look(picture("Castle.png"));
    EXPECT_TRUE(isLooking());
    window->showSection(LibrarySection::overview);
    turn();
    EXPECT_FALSE(isLooking());
}

TEST_F(QuickLook, ThePanelComesToTheFrontAndTheWindowAfterIt) {
    look(picture("Beach.png"));
    EXPECT_TRUE(panel().isActiveWindow());
    type(Qt::Key_Escape);
    EXPECT_TRUE(window->isActiveWindow());
}

TEST_F(QuickLook, WhoHasGoneElsewhereKeepsTheKeyboardWhereItIs) {
    look(picture("Beach.png"));
    window->activateWindow();
    window->sidebar()->list()->setFocus();
    turn();
    set(std::nullopt);
    EXPECT_TRUE(window->sidebar()->list()->hasFocus());
}

// What is told

TEST_F(QuickLook, ANewPageAndWhatCannotBeShownAreTold) {
    const auto url = document("Report.pdf", 3);
    look(url);
    type(Qt::Key_Right);
    EXPECT_EQ(panel().accessibleName(), "Report.pdf, Page 2 of 3");
    previews.setPages(url, {{plain(30, 40), {}, 0, 3}});
    type(Qt::Key_Right);
    EXPECT_EQ(panel().accessibleName(), "Report.pdf. This page can't be shown.");
}

TEST_F(QuickLook, ThePageThatComesNextIsToldWhileItIsStillDrawn) {
    look(document("Report.pdf", 3));
    QTest::keyClick(&panel(), Qt::Key_Right);
    EXPECT_EQ(panel().pageWords(), "Page 2 of 3");
    EXPECT_TRUE(panel().previousPage()->isEnabled());
}

TEST_F(QuickLook, WhatAFileTakesOnTheDiskIsTold) {
    disk.sparse("/Users/alex/Movie.zip", 900'000'000);
    look(FileURL("/Users/alex/Movie.zip"));
    EXPECT_TRUE(panel().facts().startsWith("Archive · Zero KB")) << panel().facts().toStdString();
}

TEST_F(QuickLook, EveryControlHasAName) {
    look(document("Report.pdf", 3));
    EXPECT_EQ(panel().previousPage()->label(), "Previous Page");
    EXPECT_EQ(panel().nextPage()->label(), "Next Page");
    EXPECT_EQ(panel().picture()->accessibleName(), "Report.pdf");
    EXPECT_EQ(panel().accessibleName(), "Report.pdf");
}

TEST_F(QuickLook, PicturesOfThePanelAreKept) {
    const auto beach = file("Beach.png");
    previews.setPages(beach, {{plain(1600, 900, 120), {}, 0, 1}});
    const auto report = document("Report.pdf", 9);
    const auto notes = text(
        "Notes.txt", QString("The quick brown fox jumps over the lazy dog.\n").repeated(60).toStdString());
    const auto backup = file("Backup of everything that lay on the old machine in the cellar.zip");
    for (const bool isDark : {false, true}) {
        Look::setDark(isDark);
        for (const auto& url : {beach, report, notes, backup, FileURL("/Users/alex/Gone.png")}) {
            look(url);
            panel().resize(QuickLookPanel::kDefaultSize);
            turn();
            const auto picture = pictureOf(panel());
            EXPECT_TRUE(keepPicture(picture,
                                    QString("quick-look-%1%2")
                                        .arg(words(url.lastPathComponent()).left(6), isDark ? "-dark" : "")));
            const int ground = qGray(picture.pixel(4, picture.height() - 4));
            EXPECT_TRUE(isDark ? ground < 80 : ground > 200) << url.path();
        }
    }
    panel().resize(QuickLookPanel::kLeastSize);
    turn();
    EXPECT_TRUE(keepPicture(pictureOf(panel()), "quick-look-least-dark"));
}
