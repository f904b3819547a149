#include "Components/Look.h"
#include "Components/PushButton.h"
#include "Components/SidebarView.h"
#include "Components/Symbols.h"
#include "Gallery.h"
#include "Tables/TableView.h"
#include <QDir>
#include <QMenu>
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

TEST_F(Gallery, AMenuIsDrawnInLightAndInDark) {
    QMenu menu;
    menu.addAction(Symbols::icon("folder"), "Reveal in Finder");
    QAction* chosen =
        menu.addAction(Symbols::icon("trash"), "Move to Trash", QKeySequence(Qt::CTRL | Qt::Key_Delete));
    menu.addSeparator();
    menu.addAction("Protected")->setCheckable(true);
    menu.actions().last()->setChecked(true);
    menu.addAction("Not now")->setEnabled(false);
    menu.addMenu("Show");
    menu.popup({0, 0});
    menu.setActiveAction(chosen);
    keep(menu, "menu");
    const QImage light = drawn(menu);
    Look::setDark(true);
    QCoreApplication::processEvents();
    keep(menu, "menu");
    EXPECT_NE(drawn(menu), light);
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
    window->resize(1120, 600);
    window->findChild<PushButton*>()->setFocus(Qt::TabFocusReason);
    QCoreApplication::processEvents();
    keep(*window, "section-small");
    EXPECT_EQ(window->findChild<SidebarView*>()->currentRow(), 1);
}

} // namespace
} // namespace quillane
