#pragma once
#include "Workspace.h"
#include <QPixmap>
#include <QWidget>
#include <memory>

namespace quillane {

// A picture as large as there is room for, in its proportions, and never more than twice as large as it is.
class PictureView : public QWidget {
    Q_OBJECT
  public:
    static constexpr double kMostEnlarged = 2;

    explicit PictureView(QWidget* parent = nullptr);

    // Null for none. `name` is what assistive tools tell.
    void setPicture(std::shared_ptr<const IconImage> picture, const QString& name);
    const IconImage* picture() const { return m_picture.get(); }
    // Where it stands, in logical pixels; empty for none.
    QRectF place() const;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    std::shared_ptr<const IconImage> m_picture;
    QPixmap m_scaled; // for the place as it was painted last
};

} // namespace quillane
