#pragma once
#include <QScrollArea>

namespace quillane {

// The part of a pane that scrolls. Tab stops at it only while it has something to scroll, and a ring
// inside its edge shows that it did.
class PaneScroll : public QScrollArea {
    Q_OBJECT
  public:
    // `name` is what assistive tools call it. Takes over the content, which gets its width.
    PaneScroll(const QString& name, QWidget* content, QWidget* parent = nullptr);

  protected:
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void chooseFocusPolicy();

    QWidget* m_ring; // above the content
};

} // namespace quillane
