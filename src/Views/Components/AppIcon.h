#pragma once
#include "Components/IconPixmaps.h"
#include "FileURL.h"
#include <QWidget>
#include <optional>

namespace quillane {

class LibraryObserver;

// The icon of an application or file, in a fixed square. Empty until the icon has come. Decoration.
class AppIcon : public QWidget {
    Q_OBJECT
  public:
    explicit AppIcon(int side, QWidget* parent = nullptr);

    void setURL(const FileURL& url);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    std::optional<FileURL> m_url;
    IconPixmaps m_pixmaps;
    LibraryObserver* m_arrivals;
};

} // namespace quillane
