#pragma once
#include <QDesktopServices>
#include <QObject>
#include <QUrl>
#include <vector>

namespace quillane {

// Takes the pages that would be opened in a browser.
class OpenedPages : public QObject {
    Q_OBJECT
  public:
    OpenedPages() { QDesktopServices::setUrlHandler(QStringLiteral("https"), this, "open"); }
    ~OpenedPages() override { QDesktopServices::unsetUrlHandler(QStringLiteral("https")); }

    std::vector<QUrl> urls;

  public slots:
    void open(const QUrl& url) { urls.push_back(url); }
};

} // namespace quillane
