#pragma once
#include "Components/TextField.h"

namespace quillane {

// The search field of a section: 220 wide, a magnifier before the text and a button that clears it. Escape
// clears it too, and is passed on only when there is nothing to clear. The key for undo is likewise the field's
// own only while there is typing to take back; else it is the window's.
class SearchField : public TextField {
    Q_OBJECT
  public:
    explicit SearchField(QWidget* parent = nullptr);

    static constexpr int kWidth = 220;

    QSize sizeHint() const override;

  protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void nameButtons(QAction* magnifier);
    void growButtons();
};

} // namespace quillane
