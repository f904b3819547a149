#pragma once
#include "TestCertificate.h"
#include <QPointer>
#include <QSslConfiguration>
#include <QSslServer>
#include <QSslSocket>
#include <QTimer>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace quillane {

// A server over TLS on this machine, in this process. What it says to a request is written by the test, letter by
// letter.
class FeedServer {
  public:
    using Answer = std::function<void(QTcpSocket&)>;

    // By its number: not every machine knows the name of itself.
    static constexpr const char* kHost = "127.0.0.1";

    explicit FeedServer(const TestCertificate& certificate) {
        auto configuration = QSslConfiguration::defaultConfiguration();
        configuration.setLocalCertificate(certificate.certificate());
        configuration.setPrivateKey(certificate.key());
        m_server.setSslConfiguration(configuration);
        QObject::connect(&m_server, &QTcpServer::pendingConnectionAvailable, [this] { take(); });
        m_server.listen(QHostAddress::LocalHost);
    }

    // Of what is sent to this path; there is no answer to others, and none to one that is still to be set.
    void on(const std::string& path, Answer answer) {
        m_answers[path] = std::move(answer);
        for (const auto& waiting : std::exchange(m_waiting, {})) {
            if (waiting.socket) {
                reply(waiting.path, *waiting.socket);
            }
        }
    }
    // Says this and closes.
    static Answer says(const std::string& bytes) {
        return [bytes](QTcpSocket& socket) {
            socket.write(QByteArray::fromStdString(bytes));
            socket.disconnectFromHost();
        };
    }
    static Answer page(const std::string& text, const std::string& status = "200 OK") {
        return says("HTTP/1.1 " + status + "\r\nContent-Length: " + std::to_string(text.size()) +
                    "\r\nConnection: close\r\n\r\n" + text);
    }
    static Answer leadsTo(const std::string& place) {
        return says("HTTP/1.1 302 Found\r\nLocation: " + place +
                    "\r\nContent-Length: 0\r\nConnection: close\r\n\r\n");
    }

    std::string address(const std::string& path) const {
        return std::string("https://") + kHost + ":" + std::to_string(m_server.serverPort()) + path;
    }
    void close() { m_server.close(); }

    std::vector<std::string> requests; // with their headers

  private:
    struct Waiting {
        std::string path;
        QPointer<QTcpSocket> socket;
    };

    void take() {
        while (auto* const socket = m_server.nextPendingConnection()) {
            QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket] { hear(*socket); });
            hear(*socket);
        }
    }
    void hear(QTcpSocket& socket) {
        auto& heard = m_heard[&socket];
        heard += socket.readAll().toStdString();
        if (heard.find("\r\n\r\n") != std::string::npos) {
            requests.push_back(heard);
            const auto path = heard.substr(4, heard.find(' ', 4) - 4);
            heard.clear();
            reply(path, socket);
        }
    }
    void reply(const std::string& path, QTcpSocket& socket) {
        if (const auto answer = m_answers.find(path); answer != m_answers.end()) {
            answer->second(socket);
        } else {
            m_waiting.push_back({path, &socket});
        }
    }

    QSslServer m_server;
    std::map<std::string, Answer> m_answers;
    std::map<const QTcpSocket*, std::string> m_heard;
    std::vector<Waiting> m_waiting;
};

} // namespace quillane
