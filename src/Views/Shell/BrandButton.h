#pragma once
#include <QAbstractButton>

namespace quillane {

// The first row of the sidebar: mark and name of the program. Where the system has no menu bar of its own it
// opens the menu of the window; there is no more to it elsewhere.
class BrandButton : public QAbstractButton {
    Q_OBJECT
  public:
    explicit BrandButton(QWidget* parent = nullptr);

    // Opens below the row, on a click, Space, Return and Down.
    void setMenu(QMenu* menu);
    QMenu* menu() const { return m_menu; }
    void openMenu();

    QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    bool hitButton(const QPoint& position) const override;

  private:
    QRect contentRect() const; // what lights up under the pointer and takes the click

    QMenu* m_menu = nullptr;
};

} // namespace quillane
