#pragma once
#include "FeedSource.h"
#include <QUrl>
#include <chrono>
#include <memory>

namespace quillane {

class HttpsFetch;

// A feed at an address that begins with "https://" and names nobody, asked over connections that the system's
// certificates vouch for. It tells nothing of this machine but what every connection does: no cookies, no account, no
// version. At most three redirections are followed, and none that leaves https. Nothing of it stands between two
// fetches.
class HttpsFeed final : public FeedSource {
  public:
    // For the whole of a fetch, however much of it has come.
    static constexpr std::chrono::milliseconds kMostTime = std::chrono::seconds(15);
    static constexpr int kMostRedirections = 3;

    explicit HttpsFeed(const std::string& address, std::chrono::milliseconds mostTime = kMostTime);
    ~HttpsFeed() override;
    HttpsFeed(const HttpsFeed&) = delete;
    HttpsFeed& operator=(const HttpsFeed&) = delete;

    void fetch(std::size_t mostBytes, std::function<void(const Answer&)> arrived) override;
    void stop() override;

  private:
    const QUrl m_url; // empty for what is no such address
    const std::chrono::milliseconds m_mostTime;
    std::unique_ptr<HttpsFetch> m_fetch; // null while none runs
};

} // namespace quillane
