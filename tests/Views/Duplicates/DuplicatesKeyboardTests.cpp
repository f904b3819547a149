#include "AppLibrary.h"
#include "Components/Label.h"
#include "DuplicateGroup.h"
#include "NotificationCenter.h"
#include "Preview/QuickLookPanel.h"
#include "Review/SweepPreviewSheet.h"
#include "SamplePlatform.h"
#include "Shell/ContentView.h"
#include "State/ContentState.h"
#include "Tables/SectionTable.h"
#include "Tables/TableView.h"
#include "Welcomed.h"
#include <QApplication>
#include <QTest>
#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <vector>

using namespace quillane;

namespace {

SampleMac twoPairs() {
    SampleMac mac;
    mac.usualFolders();
    for (const std::string path : {"Movies/Tour.mov", "Documents/Clients/Tour.mov", "Downloads/Tour.mov"}) {
        mac.file(path, std::string(1'000'001, 'a'));
    }
    for (const std::string path : {"Music/Mix.wav", "Downloads/Mix.wav"}) {
        mac.file(path, std::string(1'000'000, 'b'));
    }
    return mac;
}

// The window over a Mac on disk that has the same files several times, and nothing but keys.
class DuplicatesKeyboard : public testing::Test {
  protected:
    DuplicatesKeyboard() {
        window.showSection(LibrarySection::duplicates);
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        finish();
        table().setFocus(Qt::TabFocusReason);
    }
    void finish() {
        for (int i = 0; i < 3; ++i) {
            sample.runner.runAll();
            QCoreApplication::sendPostedEvents();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            QCoreApplication::processEvents();
        }
    }
    void press(Qt::Key key) {
        ASSERT_NE(QApplication::focusWidget(), nullptr);
        QTest::keyClick(QApplication::focusWidget(), key);
        finish();
    }
    TableView& table() const {
        return *qobject_cast<SectionTable*>(window.content(LibrarySection::duplicates))->table();
    }
    QStringList names() const {
        QStringList shown;
        for (int row = 0; row < table().model()->rowCount(); ++row) {
            shown << table().model()->index(row, 0).data().toString();
        }
        return shown;
    }
    bool isThere(const std::string& path) const {
        return sample.platform.files.exists(FileURL("/Users/alex/" + path));
    }

    SamplePlatform sample{twoPairs(), SampleSpotlight::embedded};
    Welcomed welcomed{sample.defaults};
    AppLibrary library{sample.platform};
    NotificationCenter notifications;
    ContentView window{library, notifications};
};

} // namespace

TEST_F(DuplicatesKeyboard, AnotherCopyThanTheSuggestedIsKeptAndTheRestReviewedAndMoved) {
    ASSERT_EQ(names(), QStringList({"Tour.mov", "Mix.wav"})) << "found on disk as the section appeared";
    press(Qt::Key_Home);
    press(Qt::Key_Tab); // Reveal in Finder
    press(Qt::Key_Tab); // the copy that would stay
    const auto& group = library.duplicates->front();
    const auto suggested = group.suggestedKeeper()->url;
    const bool isLast = suggested == group.files.back().url;
    press(isLast ? Qt::Key_Up : Qt::Key_Down);
    press(Qt::Key_Space);
    press(Qt::Key_Tab); // Quick Look
    press(Qt::Key_Tab); // Keep Selected, Trash 2 Others…
    press(Qt::Key_Space);
    ASSERT_NE(window.removalSheet(), nullptr);
    const auto going = window.state().removal.get()->entries;
    ASSERT_EQ(going.size(), 2U);
    EXPECT_TRUE(std::ranges::any_of(going, [&](const SweepEntry& row) { return row.url == suggested; }));
    press(Qt::Key_Return); // confirms
    for (const auto& row : going) {
        EXPECT_FALSE(sample.platform.files.exists(row.url)) << row.url.path();
    }
    const int left = static_cast<int>(isThere("Movies/Tour.mov")) +
                     static_cast<int>(isThere("Documents/Clients/Tour.mov")) +
                     static_cast<int>(isThere("Downloads/Tour.mov"));
    EXPECT_EQ(left, 1);
    press(Qt::Key_Return); // "Done"
    EXPECT_EQ(names(), QStringList({"Mix.wav"})) << "a group of one is none";
    EXPECT_TRUE(table().hasFocus()) << "the pane that had the keyboard has gone";
}

TEST_F(DuplicatesKeyboard, TheLookThatWasOpenedFromTheCopiesGoesThroughThemWithArrows) {
    press(Qt::Key_Home);
    press(Qt::Key_Tab); // Reveal in Finder
    press(Qt::Key_Tab); // the copy that would stay
    press(Qt::Key_Home);
    press(Qt::Key_Tab); // Quick Look
    press(Qt::Key_Space);
    const auto copies = library.duplicates->front().files;
    const auto lookedAt = [&] { return window.state().quickLookURL.get(); };
    ASSERT_EQ(lookedAt(), copies.front().url);
    for (const std::size_t next : {1U, 2U, 2U}) {
        QTest::keyClick(window.quickLook(), Qt::Key_Down);
        finish();
        EXPECT_EQ(lookedAt(), copies.at(next).url);
    }
    EXPECT_EQ(table().selectionModel()->selectedRows().size(), 1) << "the table stays where it is";
    QTest::keyClick(window.quickLook(), Qt::Key_Space);
    finish();
    EXPECT_EQ(lookedAt(), std::nullopt);
}
