#include "OnboardingTest.h"
#include "Shell/ContentView.h"
#include "WindowPicture.h"
#include "WindowTest.h"
#include <QPainter>

namespace quillane {
namespace {

// The welcome over the window, kept as pictures under the build folder for whoever wants to look.
class OnboardingPictures : public WindowTest {
  protected:
    OnboardingPictures() {
        Look::setReducedMotion(true);
        startsIn = LibrarySection::overview;
    }
    ~OnboardingPictures() override {
        window.reset();
        Look::setReducedMotion(false);
        Look::setHighContrast(false);
        Look::setDark(false);
        Look::setTextScale(1);
    }

    // Every page, the sheet painted over the middle of the window.
    void keepPages(const QString& name) {
        open({AppLibrary::Phase::Kind::measuring, 38, 64}, {});
        resizeWindow();
        window->state().showOnboarding = true;
        turn();
        ASSERT_NE(window->onboarding(), nullptr);
        auto& sheet = *window->onboarding();
        QImage last;
        for (int page = 0; page < 5; ++page) {
            QImage picture = pictureOf(*window);
            QPainter painter(&picture);
            const QSize room = (window->size() - sheet.size()) / 2;
            painter.drawImage(QPoint(room.width(), room.height()), pictureOf(sheet));
            painter.end();
            EXPECT_NE(picture, last);
            EXPECT_TRUE(keepPicture(picture, QString("%1-%2").arg(name).arg(page)));
            last = picture;
            sheet.goForward();
            turn();
        }
    }
    void resizeWindow() {
        if (smallest) {
            window->resize(ContentView::kMinimumSize);
            turn();
        }
    }

    bool smallest = false;
};

TEST_F(OnboardingPictures, Light) {
    keepPages("onboarding");
}

TEST_F(OnboardingPictures, Dark) {
    Look::setDark(true);
    keepPages("onboarding-dark");
}

TEST_F(OnboardingPictures, LargeText) {
    Look::setTextScale(1.5);
    keepPages("onboarding-large");
}

TEST_F(OnboardingPictures, SmallestWindow) {
    smallest = true;
    keepPages("onboarding-smallest");
}

TEST_F(OnboardingPictures, SmallestWindowWithLargeText) {
    smallest = true;
    Look::setTextScale(1.5);
    keepPages("onboarding-smallest-large");
}

TEST_F(OnboardingPictures, HighContrast) {
    Look::setHighContrast(true);
    keepPages("onboarding-contrast");
}

} // namespace
} // namespace quillane
