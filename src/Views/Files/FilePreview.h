#pragma once
#include "UserFile.h"
#include <QImage>
#include <QPushButton>
#include <memory>

namespace quillane {

struct IconImage;

// The look of a file, which fills the button; the symbol of its kind while there is none. A press asks for a closer
// look.
class FilePreview : public QPushButton {
    Q_OBJECT
  public:
    static constexpr int kHeight = 190;

    explicit FilePreview(QWidget* parent = nullptr);

    void setKind(UserFile::Kind kind);
    // Null takes the picture away.
    void setPicture(const std::shared_ptr<const IconImage>& picture);
    bool hasPicture() const { return !m_picture.isNull(); }
    const QString& symbol() const { return m_symbol; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    void drawPicture(QPainter& painter) const;

    QString m_symbol;
    QImage m_picture;
};

} // namespace quillane
