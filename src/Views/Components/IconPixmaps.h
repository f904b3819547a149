#pragma once
#include "FileURL.h"
#include <QPixmap>
#include <memory>
#include <unordered_map>

namespace quillane {

struct IconImage;

// The icons of the icon cache in one size, ready to be drawn. Main thread only.
class IconPixmaps {
  public:
    // `side` in logical pixels.
    explicit IconPixmaps(int side)
        : m_side(side) {}

    // Null while the icon is on its way.
    QPixmap at(const FileURL& url, double devicePixelRatio);
    // Forgets what is not held by the icon cache any more.
    void clear() { m_scaled.clear(); }

  private:
    struct Scaled {
        std::shared_ptr<const IconImage> source;
        QPixmap pixmap;
    };
    int m_side;
    std::unordered_map<FileURL, Scaled> m_scaled;
};

} // namespace quillane
