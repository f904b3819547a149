#include "Components/Badge.h"
#include "Components/EmptyState.h"
#include "Components/PushButton.h"
#include "Components/SymbolView.h"
#include "Components/Symbols.h"
#include "Components/Tile.h"
#include "Components/Tokens.h"
#include "Gallery.h"
#include <QDir>
#include <QPainter>
#include <gtest/gtest.h>

namespace quillane {
namespace {

int visiblePixels(const QPixmap& pixmap) {
    const QImage image = pixmap.toImage().convertToFormat(QImage::Format_ARGB32);
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            count += qAlpha(image.pixel(x, y)) > 64 ? 1 : 0;
        }
    }
    return count;
}

TEST(Symbols, EveryDrawingOfTheFolderIsCompiledIn) {
    QStringList files = QDir(QStringLiteral(QUILLANE_SYMBOLS)).entryList({"*.svg"}, QDir::Files);
    ASSERT_GT(files.size(), 50);
    for (QString& file : files) {
        file.chop(4);
    }
    QStringList compiled = Symbols::names();
    files.sort();
    compiled.sort();
    EXPECT_EQ(compiled, files);
}

TEST(Symbols, EveryOneDrawsSomethingAndNotEverything) {
    for (const QString& name : Symbols::names()) {
        const int pixels = visiblePixels(Symbols::pixmap(name, 16, Qt::black, 2));
        EXPECT_GT(pixels, 15) << name.toStdString();
        EXPECT_LT(pixels, 32 * 32) << name.toStdString();
    }
}

TEST(Symbols, ASymbolTakesTheColourItIsAskedFor) {
    const QImage image = Symbols::pixmap("circle.fill", 16, QColor(200, 10, 30), 1).toImage();
    EXPECT_EQ(image.pixelColor(8, 8), QColor(200, 10, 30));
}

TEST(Symbols, TheBrandMarkKeepsItsOwnColours) {
    const QImage red = Symbols::pixmap("BrandMark", 22, Qt::red, 1).toImage();
    const QImage green = Symbols::pixmap("BrandMark", 22, Qt::green, 1).toImage();
    EXPECT_EQ(red, green);
}

TEST(Symbols, ASymbolHasThePixelsOfTheDeviceRatio) {
    const QPixmap pixmap = Symbols::pixmap("trash", 15, Qt::black, 1.5);
    EXPECT_EQ(pixmap.size(), QSize(23, 23));
    EXPECT_DOUBLE_EQ(pixmap.devicePixelRatio(), 1.5);
}

TEST(Symbols, AnUnknownNameDrawsNothing) {
    EXPECT_FALSE(Symbols::exists("no.such.symbol"));
    EXPECT_FALSE(Symbols::exists({}));
    EXPECT_TRUE(Symbols::pixmap("no.such.symbol", 16, Qt::black, 1).isNull());
    EXPECT_TRUE(Symbols::icon({}).isNull());
}

TEST(Symbols, AnIconIsFadedWhenDisabledAndWhiteWhenSelected) {
    const QIcon icon = Symbols::icon("circle.fill", Tint::Red);
    const auto middle = [&](QIcon::Mode mode) { return icon.pixmap(16, mode).toImage().pixelColor(8, 8); };
    EXPECT_EQ(middle(QIcon::Normal), Tokens::current().red);
    EXPECT_LT(middle(QIcon::Disabled).alpha(), 130);
    EXPECT_EQ(middle(QIcon::Selected), QColor(Qt::white));
}

TEST(Symbols, AWhiteIconCanStillBeSeenWhenDisabled) {
    const QIcon icon = Symbols::icon("circle.fill", Tint::White);
    EXPECT_EQ(icon.pixmap(16, QIcon::Disabled).toImage().pixelColor(8, 8), Tokens::current().text3);
}

TEST(Symbols, EveryNameThatAComponentUsesExists) {
    const auto gallery = makeGallery();
    QStringList used;
    for (const auto* view : gallery->findChildren<SymbolView*>()) {
        used << view->symbol();
    }
    for (const auto* view : gallery->findChildren<PushButton*>()) {
        used << view->symbol();
    }
    for (const auto* view : gallery->findChildren<Badge*>()) {
        used << view->symbol();
    }
    for (const auto* view : gallery->findChildren<Tile*>()) {
        used << view->symbol();
    }
    used.removeAll(QString());
    // Drawn by the style and the header, not named by a widget.
    used << "checkmark" << "minus" << "chevron.up" << "chevron.down" << "xmark" << "magnifyingglass";
    ASSERT_GT(used.size(), 25);
    for (const QString& name : used) {
        EXPECT_TRUE(Symbols::exists(name)) << name.toStdString();
    }
}

} // namespace
} // namespace quillane
