#include "DrawingProgram.h"
#include "RelaunchTrial.h"
#include <QApplication>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    if (const auto code = quillane::DrawingProgram::answer(argc, argv)) {
        return *code;
    }
    if (const auto code = quillane::RelaunchTrial::answer(argc, argv)) {
        return *code;
    }
    testing::InitGoogleTest(&argc, argv);
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
