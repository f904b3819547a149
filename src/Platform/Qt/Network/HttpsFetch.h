#pragma once
#include "FeedSource.h"
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QObject>
#include <QTimer>
#include <chrono>
#include <functional>
#include <memory>
#include <string>

namespace quillane {

// One fetch over a connection of its own, from its making to its end. Main thread only.
class HttpsFetch final : public QObject {
  public:
    struct Limits {
        std::size_t bytes;
        std::chrono::milliseconds time;
        int redirections;
    };
    // `ended` is called once, at a later turn, and may destroy this.
    HttpsFetch(const QUrl& url, const Limits& limits, std::function<void(FeedSource::Answer)> ended);

  private:
    void gather();
    void finish();
    void end(FeedSource::Answer answer);

    const std::size_t m_mostBytes;
    std::function<void(FeedSource::Answer)> m_ended; // empty when it was called, or is about to be
    std::string m_text;
    QNetworkAccessManager m_network;
    std::unique_ptr<QNetworkReply> m_reply; // goes before what has made it
    QTimer m_timer;
};

} // namespace quillane
