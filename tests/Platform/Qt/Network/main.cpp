#include <QCoreApplication>
#include <QNetworkProxyFactory>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    const QCoreApplication application(argc, argv);
    QNetworkProxyFactory::setUseSystemConfiguration(false); // the server is this process
    return RUN_ALL_TESTS();
}
