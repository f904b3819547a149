#pragma once
#include <QDesktopServices>
#include <QObject>
#include <QStringList>
#include <QUrl>
#include <vector>

namespace quillane {

// Takes what would be opened on the desktop.
class OpenedPages : public QObject {
    Q_OBJECT
  public:
    OpenedPages() {
        for (const auto& scheme : m_schemes) {
            QDesktopServices::setUrlHandler(scheme, this, "open");
        }
    }
    ~OpenedPages() override {
        for (const auto& scheme : m_schemes) {
            QDesktopServices::unsetUrlHandler(scheme);
        }
    }

    std::vector<QUrl> urls;

  public slots:
    void open(const QUrl& url) { urls.push_back(url); }

  private:
    const QStringList m_schemes = {"https", "http", "file", "javascript"};
};

} // namespace quillane
