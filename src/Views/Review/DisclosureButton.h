#pragma once
#include <QAbstractButton>

namespace quillane {

// The head of something that opens and closes: a chevron, a warning sign, what it is about and why.
// Checked is open.
class DisclosureButton : public QAbstractButton {
    Q_OBJECT
  public:
    DisclosureButton(const QString& title, const QString& remark, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

  protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    QString m_remark;
};

} // namespace quillane
