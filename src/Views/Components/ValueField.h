#pragma once
#include "Components/Tint.h"
#include <QLineEdit>

namespace quillane {

// A value that can be selected and copied whole although it is drawn elided in the middle. It has no frame,
// and Tab passes it by.
class ValueField : public QLineEdit {
    Q_OBJECT
  public:
    explicit ValueField(const QString& value, QWidget* parent = nullptr);

    // Of the value while it is drawn elided; Tint::Text unless said otherwise.
    void setTint(Tint tint);
    bool isElided() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

  private:
    Tint m_tint = Tint::Text;
};

} // namespace quillane
