#pragma once
#include <QLineEdit>

namespace quillane {

// The search field of a section: 220 wide, a magnifier before the text and a button that clears it. Escape
// clears it too, and is passed on only when there is nothing to clear.
class SearchField : public QLineEdit {
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
