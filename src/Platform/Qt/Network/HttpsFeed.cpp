#include "HttpsFeed.h"
#include "HttpsFetch.h"
#include <QTimer>
#include <utility>

namespace quillane {
namespace {

QUrl safeUrl(const std::string& address) {
    const QUrl url(QString::fromStdString(address), QUrl::StrictMode);
    const bool isSafe =
        url.scheme() == QLatin1String("https") && !url.host().isEmpty() && url.userInfo().isEmpty();
    return isSafe ? url : QUrl();
}

} // namespace

HttpsFeed::HttpsFeed(const std::string& address, std::chrono::milliseconds mostTime)
    : m_url(safeUrl(address))
    , m_mostTime(mostTime) {}

HttpsFeed::~HttpsFeed() = default;

void HttpsFeed::fetch(std::size_t mostBytes, std::function<void(const Answer&)> arrived) {
    stop();
    m_fetch =
        std::make_unique<HttpsFetch>(m_url, HttpsFetch::Limits{mostBytes, m_mostTime, kMostRedirections},
                                     [this, arrived = std::move(arrived)](const Answer& answer) {
                                         const auto fetch = std::move(m_fetch); // before a next one begins
                                         arrived(answer);
                                     });
}

void HttpsFeed::stop() {
    m_fetch.reset();
}

} // namespace quillane
