#pragma once
#include "FeedServer.h"
#include <QSslConfiguration>
#include <gtest/gtest.h>

namespace quillane {

// A server that this process trusts, and nobody else.
class NetworkTest : public testing::Test {
  protected:
    NetworkTest() { trust(m_certificate); }
    ~NetworkTest() override { QSslConfiguration::setDefaultConfiguration(m_usual); }

    static void trust(const TestCertificate& certificate) {
        auto configuration = QSslConfiguration::defaultConfiguration();
        configuration.setCaCertificates({certificate.certificate()});
        QSslConfiguration::setDefaultConfiguration(configuration);
    }

    const QSslConfiguration m_usual = QSslConfiguration::defaultConfiguration();
    TestCertificate m_certificate{FeedServer::kHost};
    FeedServer m_server{m_certificate};
};

} // namespace quillane
