#include "Components/Look.h"
#include <QApplication>
#include <benchmark/benchmark.h>

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    QApplication app(argc, argv);
    quillane::Look::install(app);
    quillane::Look::setReducedMotion(true); // what is measured is no animation
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
