#pragma once
#include <QLineEdit>

namespace quillane {

// A field for a line of text. The key for undo is the field's own only while there is typing to take back; else it is
// the window's.
class TextField : public QLineEdit {
    Q_OBJECT
  public:
    using QLineEdit::QLineEdit;

  protected:
    bool event(QEvent* event) override;
};

} // namespace quillane
