#include "Gallery.h"
#include "Look.h"
#include "SidebarView.h"
#include "TableView.h"
#include <QDir>
#include <QTest>
#include <gtest/gtest.h>

namespace quillane {
namespace {

QString galleryFolder() {
    const QString told = qEnvironmentVariable("QUILLANE_GALLERY");
    return told.isEmpty() ? QCoreApplication::applicationDirPath() + "/gallery" : told;
}

class Gallery : public ::testing::Test {
  protected:
    void TearDown() override { Look::setDark(false); }

    static void keep(QWidget& widget, const QString& name) {
        const QString path = QDir(galleryFolder()).filePath(name + (Look::isDark() ? "-dark.png" : ".png"));
        ASSERT_TRUE(QDir().mkpath(galleryFolder()));
        ASSERT_TRUE(drawn(widget).save(path)) << path.toStdString();
    }
};

TEST_F(Gallery, EveryComponentIsDrawnInLightAndInDark) {
    const auto gallery = makeGallery();
    gallery->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(gallery.get()));
    keep(*gallery, "components");
    const QImage light = drawn(*gallery);
    Look::setDark(true);
    QCoreApplication::processEvents();
    keep(*gallery, "components");
    EXPECT_NE(drawn(*gallery), light);
}

TEST_F(Gallery, TheComponentsMakeASectionInLightAndInDark) {
    const auto window = makeSampleWindow();
    window->show();
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    auto* table = window->findChild<TableView*>("table");
    table->setFocus();
    table->setCurrentIndex(table->model()->index(2, 0));
    keep(*window, "section");
    Look::setDark(true);
    window->findChild<SidebarView*>()->setFocus(Qt::TabFocusReason);
    QCoreApplication::processEvents();
    keep(*window, "section");
    EXPECT_EQ(window->findChild<SidebarView*>()->currentRow(), 1);
}

} // namespace
} // namespace quillane
