#include "Components/Look.h"
#include <QApplication>
#include <QNetworkProxyFactory>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    quillane::Look::install(application);
    QNetworkProxyFactory::setUseSystemConfiguration(false); // the server is this process
    return RUN_ALL_TESTS();
}
