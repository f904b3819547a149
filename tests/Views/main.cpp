#include "Components/Look.h"
#include <QApplication>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

// Widgets need an application, and every test sees them in the program's own look.
int main(int argc, char** argv) {
    ::testing::InitGoogleMock(&argc, argv);
    QApplication app(argc, argv);
    quillane::Look::install(app);
    return RUN_ALL_TESTS();
}
