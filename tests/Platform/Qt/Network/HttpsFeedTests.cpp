#include "HttpsFeed.h"
#include "NetworkTest.h"
#include <QTcpServer>
#include <QTest>
#include <gtest/gtest.h>
#include <optional>
#include <string>

using namespace quillane;
using namespace std::chrono_literals;
using Failure = FeedSource::Failure;

namespace {

constexpr std::size_t kMostBytes = 1'000;
constexpr int kPatience = 60'000; // milliseconds, for what comes at once
// For what never comes, and must not be waited for.
constexpr auto kMoment = 100ms;

class HttpsFeedTest : public NetworkTest {
  protected:
    static std::optional<FeedSource::Answer>
    fetch(const std::string& address, std::chrono::milliseconds mostTime = HttpsFeed::kMostTime) {
        HttpsFeed feed(address, mostTime);
        std::optional<FeedSource::Answer> answer;
        feed.fetch(kMostBytes, [&](const auto& told) { answer = told; });
        EXPECT_FALSE(answer) << "at a later turn";
        EXPECT_TRUE(QTest::qWaitFor([&] { return answer.has_value(); }, kPatience));
        return answer;
    }
    std::optional<FeedSource::Answer> fetchFrom(FeedServer::Answer answer) {
        m_server.on("/feed", std::move(answer));
        return fetch(m_server.address("/feed"));
    }
};

} // namespace

TEST_F(HttpsFeedTest, HandsOnWhatIsThereByteForByte) {
    const std::string bytes = std::string("signature\n{\r\n}\0\xff", 16) + std::string(kMostBytes - 16, 'a');
    EXPECT_EQ(fetchFrom(FeedServer::page(bytes)), FeedSource::Answer(bytes));
}

TEST_F(HttpsFeedTest, SaysNothingOfThisMachine) {
    m_server.on("/feed",
                FeedServer::says("HTTP/1.1 200 OK\r\nSet-Cookie: a=b; Path=/\r\nContent-Length: 0\r\n"
                                 "Connection: close\r\n\r\n"));
    HttpsFeed feed(m_server.address("/feed"));
    for (int i = 0; i < 2; ++i) {
        bool hasCome = false;
        feed.fetch(kMostBytes, [&](const auto&) { hasCome = true; });
        EXPECT_TRUE(QTest::qWaitFor([&] { return hasCome; }, kPatience));
    }
    ASSERT_EQ(m_server.requests.size(), 2U);
    for (const auto& request : m_server.requests) {
        const auto sent = QString::fromStdString(request).toLower(); // names of fields come in either case
        EXPECT_FALSE(sent.contains(QLatin1String("cookie"))) << request;
        EXPECT_FALSE(sent.contains(QLatin1String("linux"))) << request;
        for (const char* field :
             {"user-agent: quillane\r\n", "accept-encoding: identity\r\n", "accept-language: *\r\n"}) {
            EXPECT_TRUE(sent.contains(QLatin1String(field))) << request;
        }
    }
}

TEST_F(HttpsFeedTest, WhatIsTooLargeIsBrokenOff) {
    EXPECT_EQ(fetchFrom(FeedServer::page(std::string(kMostBytes + 1, 'a'))),
              FeedSource::Answer(Failure::tooLarge));
    const auto endless = fetchFrom([](QTcpSocket& socket) {
        socket.write("HTTP/1.1 200 OK\r\n\r\n");
        auto* const timer = new QTimer(&socket);
        QObject::connect(timer, &QTimer::timeout, &socket, [&socket] { socket.write(QByteArray(100, 'a')); });
        timer->start(0ms);
    });
    EXPECT_EQ(endless, FeedSource::Answer(Failure::tooLarge));
}

TEST_F(HttpsFeedTest, WhatIsPackedIsNotUnpacked) {
    const std::string packed(
        "\x1f\x8b\x08\x00\x00\x00\x00\x00\x00\x03\x03\x00\x00\x00\x00\x00\x00\x00\x00\x00", 20);
    EXPECT_EQ(fetchFrom(FeedServer::says("HTTP/1.1 200 OK\r\nContent-Encoding: gzip\r\nContent-Length: 20\r\n"
                                         "Connection: close\r\n\r\n" +
                                         packed)),
              FeedSource::Answer(packed));
}

TEST_F(HttpsFeedTest, WhoSaysNothingInTimeIsNotReached) {
    m_server.on("/silent", [](QTcpSocket&) {});
    EXPECT_EQ(fetch(m_server.address("/silent"), kMoment), FeedSource::Answer(Failure::unreachable));
    EXPECT_EQ(fetch(m_server.address("/never"), kMoment), FeedSource::Answer(Failure::unreachable));
}

TEST_F(HttpsFeedTest, WhoSaysLittleByLittleForEverIsNotReached) {
    m_server.on("/slow", [](QTcpSocket& socket) {
        socket.write("HTTP/1.1 200 OK\r\n\r\n");
        auto* const timer = new QTimer(&socket);
        QObject::connect(timer, &QTimer::timeout, &socket, [&socket] { socket.write("a"); });
        timer->start(20ms);
    });
    EXPECT_EQ(fetch(m_server.address("/slow"), 5 * kMoment), FeedSource::Answer(Failure::unreachable));
}

TEST_F(HttpsFeedTest, WhoTakesTheCallAndSaysNothingIsNotReached) {
    QTcpServer deaf; // to TLS too
    ASSERT_TRUE(deaf.listen(QHostAddress::LocalHost));
    EXPECT_EQ(fetch("https://127.0.0.1:" + std::to_string(deaf.serverPort()) + "/feed", kMoment),
              FeedSource::Answer(Failure::unreachable));
}

TEST_F(HttpsFeedTest, OnlyAPageThatIsThereIsTaken) {
    for (const char* status : {"404 Not Found", "500 Internal Server Error", "403 Forbidden",
                               "204 No Content", "203 Non-Authoritative Information", "304 Not Modified",
                               "401 Unauthorized\r\nWWW-Authenticate: Basic realm=\"a\""}) {
        EXPECT_EQ(fetchFrom(FeedServer::page("text", status)), FeedSource::Answer(Failure::noPage)) << status;
    }
}

TEST_F(HttpsFeedTest, WhatBreaksOffIsNotTaken) {
    EXPECT_EQ(fetchFrom(FeedServer::says("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nshort")),
              FeedSource::Answer(Failure::unreachable));
    EXPECT_EQ(fetchFrom(FeedServer::says("HTTP/1.1 20")), FeedSource::Answer(Failure::unreachable));
    EXPECT_EQ(fetchFrom(FeedServer::says("")), FeedSource::Answer(Failure::unreachable));
    EXPECT_EQ(fetchFrom(FeedServer::says("feed\r\n\r\n")), FeedSource::Answer(Failure::unreachable));
}

TEST_F(HttpsFeedTest, AnEmptyPageIsTaken) {
    EXPECT_EQ(fetchFrom(FeedServer::page("")), FeedSource::Answer(std::string()));
}

TEST_F(HttpsFeedTest, RedirectionsAreFollowedWithinHttpsAndNotForEver) {
    m_server.on("/feed", FeedServer::page("text"));
    m_server.on("/1", FeedServer::leadsTo("/feed"));
    m_server.on("/2", FeedServer::leadsTo(m_server.address("/1")));
    m_server.on("/3", FeedServer::leadsTo("/2"));
    m_server.on("/4", FeedServer::leadsTo("/3"));
    m_server.on("/round", FeedServer::leadsTo("/round"));
    EXPECT_EQ(fetch(m_server.address("/3")), FeedSource::Answer(std::string("text")));
    EXPECT_EQ(fetch(m_server.address("/4")), FeedSource::Answer(Failure::noPage));
    EXPECT_EQ(fetch(m_server.address("/round")), FeedSource::Answer(Failure::noPage));
}

TEST_F(HttpsFeedTest, WhereARedirectionLeadsToNobodyNobodyIsReached) {
    QTcpServer deaf;
    ASSERT_TRUE(deaf.listen(QHostAddress::LocalHost));
    const auto nobody = "https://127.0.0.1:" + std::to_string(deaf.serverPort()) + "/feed";
    deaf.close();
    EXPECT_EQ(fetchFrom(FeedServer::leadsTo(nobody)), FeedSource::Answer(Failure::unreachable));
}

TEST_F(HttpsFeedTest, NoRedirectionLeavesHttps) {
    QTcpServer plain;
    bool wasAsked = false;
    QObject::connect(&plain, &QTcpServer::newConnection, [&] { wasAsked = true; });
    ASSERT_TRUE(plain.listen(QHostAddress::LocalHost));
    const auto http = "http://127.0.0.1:" + std::to_string(plain.serverPort()) + "/feed";
    for (const std::string& place : {http, std::string("file:///etc/hostname"), std::string("data:,text"),
                                     std::string("ftp://127.0.0.1/feed"), std::string("qrc:/feed")}) {
        EXPECT_EQ(fetchFrom(FeedServer::leadsTo(place)), FeedSource::Answer(Failure::noPage)) << place;
    }
    EXPECT_FALSE(wasAsked);
}

TEST_F(HttpsFeedTest, NoAddressButOneOfHttpsIsAsked) {
    for (const char* address : {"", "http://localhost/", "file:///etc/hostname", "https://",
                                "https:", "localhost", "https://local host/", "data:,text"}) {
        EXPECT_EQ(fetch(address), FeedSource::Answer(Failure::unreachable)) << address;
    }
}

TEST_F(HttpsFeedTest, AnAddressWithSomebodysNameInItIsNotAsked) {
    m_server.on("/feed", FeedServer::page("text"));
    for (const char* who : {"alex@", "alex:secret@", ":secret@"}) {
        auto address = m_server.address("/feed");
        address.insert(std::string("https://").size(), who);
        EXPECT_EQ(fetch(address), FeedSource::Answer(Failure::unreachable)) << address;
    }
    EXPECT_TRUE(m_server.requests.empty());
}

TEST_F(HttpsFeedTest, ACertificateThatNobodyVouchesForIsNotTrusted) {
    trust(TestCertificate(FeedServer::kHost));
    EXPECT_EQ(fetchFrom(FeedServer::page("text")), FeedSource::Answer(Failure::unreachable));
    EXPECT_TRUE(m_server.requests.empty());
}

TEST_F(HttpsFeedTest, ACertificateOfAnotherHostIsNotTrusted) {
    const TestCertificate other("elsewhere.example");
    trust(other);
    FeedServer server(other);
    server.on("/feed", FeedServer::page("text"));
    EXPECT_EQ(fetch(server.address("/feed")), FeedSource::Answer(Failure::unreachable));
    EXPECT_TRUE(server.requests.empty());
}

TEST_F(HttpsFeedTest, ACertificateThatHasRunOutIsNotTrusted) {
    const TestCertificate old(FeedServer::kHost, -3'600);
    trust(old);
    FeedServer server(old);
    server.on("/feed", FeedServer::page("text"));
    EXPECT_EQ(fetch(server.address("/feed")), FeedSource::Answer(Failure::unreachable));
    EXPECT_TRUE(server.requests.empty());
}

TEST_F(HttpsFeedTest, WhereNobodyListensNobodyIsReached) {
    const auto address = m_server.address("/feed");
    m_server.close();
    EXPECT_EQ(fetch(address), FeedSource::Answer(Failure::unreachable));
    EXPECT_EQ(fetch("https://nowhere.invalid/feed"), FeedSource::Answer(Failure::unreachable));
}
