#include "PanelIcon.h"
#include "TemporaryFolder.h"
#include <QIcon>
#include <QImage>
#include <QSize>
#include <cstdlib>
#include <gtest/gtest.h>
#include <string>

namespace quillane {
namespace {

constexpr auto kDesktop = "XDG_CURRENT_DESKTOP";

// A theme of icons, in which ours is unless the test says otherwise, and what the desktop calls itself.
class PanelIconTest : public testing::Test {
  protected:
    void SetUp() override { QIcon::setThemeSearchPaths({QString::fromStdString(m_folder.path())}); }
    void TearDown() override {
        QIcon::setThemeSearchPaths(m_before);
        qputenv(kDesktop, m_desktopBefore);
    }
    void layIcon(const std::string& name) {
        m_folder.file("hicolor/symbolic/apps/" + name + ".svg",
                      "<svg xmlns=\"http://www.w3.org/2000/svg\"/>");
    }
    static std::string nameOn(const char* desktop) {
        qputenv(kDesktop, desktop);
        return PanelIcon::themeName().toStdString();
    }

  private:
    TemporaryFolder m_folder;
    QStringList m_before = QIcon::themeSearchPaths();
    QByteArray m_desktopBefore = qgetenv(kDesktop);
};

TEST_F(PanelIconTest, HasANameOnDesktopsThatGiveItTheirColour) {
    layIcon("org.quillane.Quillane-symbolic");
    for (const char* desktop : {"XFCE", "MATE", "GNOME", "KDE", "ubuntu:GNOME", "GNOME:GNOME-Classic"}) {
        EXPECT_EQ(nameOn(desktop), "org.quillane.Quillane-symbolic") << desktop;
    }
    for (const char* desktop : {"", "LXQt", "XFCEX", "xfce", "sway"}) {
        EXPECT_EQ(nameOn(desktop), "") << desktop;
    }
}

TEST_F(PanelIconTest, HasNoNameThatTheThemeDoesNotKnow) {
    layIcon("org.quillane.Quillane");
    EXPECT_EQ(nameOn("XFCE"), "");
}

TEST_F(PanelIconTest, PixelsAreAlphaRedGreenBlueInThisOrderAndTheirColourDoesNotFadeWithAlpha) {
    for (const auto& pixmap : PanelIcon::pixmaps()) {
        int drawn = 0;
        for (qsizetype i = 0; i + 3 < pixmap.bytes.size(); i += 4) {
            const auto part = [&](int index) { return static_cast<unsigned char>(pixmap.bytes[i + index]); };
            if (part(0) > 64) { // below, colours are rounded too much
                ++drawn;
                EXPECT_NEAR(part(1), 0x5C, 2);
                EXPECT_NEAR(part(2), 0x7A, 2);
                EXPECT_NEAR(part(3), 0xEB, 2);
            }
        }
        EXPECT_GT(drawn, pixmap.width) << "the drawing is missing";
        EXPECT_EQ(pixmap.bytes.first(4), QByteArray(4, '\0')) << "its corner is empty";
    }
}

TEST_F(PanelIconTest, TheIconHasTheSameDrawing) {
    const QIcon icon = PanelIcon::icon();
    EXPECT_EQ(icon.availableSizes(), (QList{QSize(22, 22), QSize(44, 44)}));
    const QImage image = icon.pixmap(QSize(22, 22)).toImage().convertToFormat(QImage::Format_ARGB32);
    int drawn = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            drawn += image.pixel(x, y) == 0xFF5C7AEB ? 1 : 0;
        }
    }
    EXPECT_GT(drawn, image.width());
}

} // namespace
} // namespace quillane
