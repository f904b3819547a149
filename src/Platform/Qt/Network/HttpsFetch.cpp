#include "HttpsFetch.h"
#include <QNetworkRequest>
#include <utility>

namespace quillane {
namespace {

constexpr int kFound = 200;

QNetworkRequest requestFor(const QUrl& url, const HttpsFetch::Limits& limits) {
    QNetworkRequest request(url);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
    request.setMaximumRedirectsAllowed(limits.redirections);
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    request.setAttribute(QNetworkRequest::CacheSaveControlAttribute, false);
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    request.setHeader(QNetworkRequest::UserAgentHeader, QStringLiteral("Quillane"));
    // Said here, they are not chosen by Qt: what is packed could unpack to any size.
    request.setRawHeader("Accept-Encoding", "identity");
    request.setRawHeader("Accept-Language", "*");
    return request;
}

int statusOf(const QNetworkReply& reply) {
    return reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
}

// Of what has ended without a page. The status alone doesn't tell: that of a redirection still stands when nobody is
// where it leads.
FeedSource::Failure failureOf(const QNetworkReply& reply) {
    const auto error = reply.error();
    const bool isRefusedRedirection =
        error == QNetworkReply::TooManyRedirectsError || error == QNetworkReply::InsecureRedirectError;
    const bool isOfConnection = error != QNetworkReply::NoError &&
                                error < QNetworkReply::ContentAccessDenied && !isRefusedRedirection;
    return isOfConnection || statusOf(reply) == 0 ? FeedSource::Failure::unreachable
                                                  : FeedSource::Failure::noPage;
}

} // namespace

HttpsFetch::HttpsFetch(const QUrl& url, const Limits& limits, std::function<void(FeedSource::Answer)> ended)
    : m_mostBytes(limits.bytes)
    , m_ended(std::move(ended))
    , m_reply(m_network.get(requestFor(url, limits))) {
    m_reply->setReadBufferSize(static_cast<qint64>(m_mostBytes) + 1);
    connect(m_reply.get(), &QNetworkReply::readyRead, this, &HttpsFetch::gather);
    connect(m_reply.get(), &QNetworkReply::finished, this, &HttpsFetch::finish);
    connect(&m_timer, &QTimer::timeout, this, [this] { end(FeedSource::Failure::unreachable); });
    m_timer.setSingleShot(true);
    m_timer.start(limits.time);
}

void HttpsFetch::gather() {
    m_text += m_reply->readAll().toStdString();
    if (m_text.size() > m_mostBytes) {
        end(FeedSource::Failure::tooLarge);
    }
}

void HttpsFetch::finish() {
    gather();
    const bool isWhole = m_reply->error() == QNetworkReply::NoError && statusOf(*m_reply) == kFound;
    if (isWhole) {
        end(std::move(m_text));
    } else {
        end(failureOf(*m_reply));
    }
}

// At a later turn, as this and its reply go with the call and may be in the midst of telling something.
void HttpsFetch::end(FeedSource::Answer answer) {
    if (m_ended) {
        QTimer::singleShot(
            0, this, [ended = std::exchange(m_ended, {}), answer = std::move(answer)] { ended(answer); });
    }
}

} // namespace quillane
