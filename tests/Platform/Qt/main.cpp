#include "DrawingProgram.h"
#include <QGuiApplication>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    if (const auto code = quillane::DrawingProgram::answer(argc, argv)) {
        return *code;
    }
    testing::InitGoogleTest(&argc, argv);
    const QGuiApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
