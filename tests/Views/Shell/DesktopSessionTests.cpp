#include "DesktopSession.h"
#include <QApplication>
#include <gtest/gtest.h>

using namespace quillane;

TEST(DesktopSession, TheDesktopFileIsToldByTheNameUnderWhichItIsInstalled) {
    introduceToDesktop();
    EXPECT_EQ(QApplication::desktopFileName(), QStringLiteral("org.quillane.Quillane"));
}
