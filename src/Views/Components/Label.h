#pragma once
#include "Components/TextStyle.h"
#include <QLabel>

namespace quillane {

// Plain text in one of the window's styles. Never interprets markup: file names are shown as they are.
class Label : public QLabel {
    Q_OBJECT
  public:
    explicit Label(const QString& text = {}, const TextStyle& style = TextStyle::body(),
                   QWidget* parent = nullptr);
    // The same, broken into lines at the width it gets.
    static Label* wrapped(const QString& text, const TextStyle& style, QWidget* parent = nullptr);

    void setTint(Tint tint);
    Tint tint() const { return m_style.tint; }
    const TextStyle& textStyle() const { return m_style; }
    // Digits of equal width: for sizes that stand below each other.
    void setTabular(bool tabular);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
    bool isTabular() const { return m_tabular; }

  private:
    TextStyle m_style;
    bool m_tabular = false;
};

} // namespace quillane
