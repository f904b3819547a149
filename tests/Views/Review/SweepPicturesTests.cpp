#include "Review/FailuresView.h"
#include "SheetTest.h"
#include "WindowPicture.h"
#include <QAbstractButton>
#include <QScrollBar>

using namespace quillane;

namespace {

// The sheet over its dimmed window, kept as pictures under the build folder for whoever wants to look.
class SweepPictures : public SheetTest {
  protected:
    void keepBoth(const QString& name) {
        for (const bool dark : {false, true}) {
            Look::setDark(dark);
            turn();
            const QImage picture = pictureOf(*sheet);
            EXPECT_FALSE(picture.isNull());
            EXPECT_TRUE(keepPicture(picture, dark ? name + "-dark" : name));
        }
        Look::setDark(false);
    }

    static std::vector<SweepEntry> plan() {
        using enum SweepCategory;
        return {
            reviewRow("/1", caches, 3'120'000'000, "Northlight RAW", "Caches - com.northlight.raw"),
            reviewRow("/2", caches, 1'840'000'000, "Lumen Browser", "Caches - org.lumen.Lumen"),
            reviewRow("/3", caches, 1'260'000'000, "Tessel Studio", "Caches - co.tessel.studio"),
            reviewRow("/4", caches, 738'400'000, "Cadenza", "Caches - fm.cadenza.player"),
            reviewRow("/5", caches, 402'700'000, "Harbour VM", "Logs - dev.harbour.vm"),
            reviewRow("/6", caches, 311'900'000, "Orbit Mail", "Caches - app.orbit.mail"),
            reviewRow("/7", caches, 248'100'000, "Driftboard", "Caches - com.driftboard.mac"),
            reviewRow("/8", developer, 5'840'000'000, "Xcode - Derived data",
                      "~/Library/Developer/Xcode/DerivedData"),
            reviewRow(
                "/9", developer, 3'120'000'000,
                "Xcode - iOS device support - iPhone15,3 17.5 (21F79), which is a longer name than fits",
                "~/Library/Developer/Xcode/iOS DeviceSupport/iPhone15,3 17.5 (21F79)/Symbols/System/"
                "Library/Frameworks"),
            reviewRow("/10", orphans, 1'080'000'000, "Sketchpad",
                      "Application Support - com.oldink.Sketchpad"),
            trashRow(),
        };
    }
};

} // namespace

TEST_F(SweepPictures, Review) {
    open(plan(), {FileURL("/4"), FileURL("/Users/alex/.Trash")});
    for (int i = 0; i < 3; ++i) {
        press(Qt::Key_Down);
    }
    keepBoth("sweep-review");
}

TEST_F(SweepPictures, ReviewWithTheTrash) {
    open(plan());
    list().verticalScrollBar()->setValue(list().verticalScrollBar()->maximum());
    keepBoth("sweep-review-trash");
}

TEST_F(SweepPictures, ReviewWithNothingTicked) {
    open({reviewRow("/1", SweepCategory::caches, 3'120'000'000, "Northlight RAW")}, {FileURL("/1")});
    keepBoth("sweep-review-empty");
}

TEST_F(SweepPictures, Running) {
    present(plan());
    press(Qt::Key_Return);
    turn();
    library.sweepTotal = 142;
    library.sweepProcessed = 89;
    library.sweepReclaimedSoFar = Bytes{15'580'000'000};
    library.sweepStatus = std::optional<std::string>("Gradle - Dependency cache");
    keepBoth("sweep-running");
    finish();
}

TEST_F(SweepPictures, Done) {
    openDone(
        {{{SweepCategory::caches, 9'420'000'000}, {SweepCategory::developer, 12'460'000'000}}, 1, 0, {}});
    keepBoth("sweep-done");
}

TEST_F(SweepPictures, DoneWithFailures) {
    const auto& done = openDone({{{SweepCategory::caches, 9'420'000'000},
                                  {SweepCategory::developer, 12'460'000'000},
                                  {SweepCategory::orphans, 1'960'000'000},
                                  {SweepCategory::trash, 6'310'000'000}},
                                 139,
                                 214,
                                 {{FileURL("/a/net.relaychat.Relay"), "No access", true},
                                  {FileURL("/a/go-build"), "No access", true},
                                  {FileURL("/a/com.oldink.Sketchpad.plist"), "Failed", false}}});
    click(done.failures()->disclosure());
    keepBoth("sweep-done-failures");
}

TEST_F(SweepPictures, OverTheWindow) {
    open(plan());
    const QImage over = pictureOf(window);
    EXPECT_TRUE(keepPicture(over, "sweep-window"));
}
