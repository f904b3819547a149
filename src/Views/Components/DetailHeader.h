#pragma once
#include <QWidget>

namespace quillane {

class ElidedLabel;

// The head of a detail pane: an icon in a fixed square, title and subtitle beside it.
class DetailHeader : public QWidget {
    Q_OBJECT
  public:
    // Takes over `icon`, which keeps its own size (48 for a tile, 56 for an application's icon). An empty
    // subtitle takes no room.
    DetailHeader(QWidget* icon, const QString& title, const QString& subtitle = {},
                 QWidget* parent = nullptr);

    QString title() const;
    QString subtitle() const;
    void setTexts(const QString& title, const QString& subtitle);

  private:
    ElidedLabel* m_title;
    ElidedLabel* m_subtitle;
};

} // namespace quillane
