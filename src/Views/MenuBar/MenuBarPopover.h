#pragma once
#include <QPoint>
#include <QWidget>
#include <optional>

namespace quillane {

class AppLibrary;
class MenuBarView;

// The window of a MenuBarView, without a frame, beside the item that was pressed. It closes on Escape, on a press
// anywhere else and when a screen goes, and stays beside its item while its height changes.
class MenuBarPopover : public QWidget {
    Q_OBJECT
  public:
    // The library outlives it. `press` is where the item was pressed, in device-independent pixels of the desktop;
    // nothing where that is not known.
    MenuBarPopover(AppLibrary& library, std::optional<QPoint> press);

    MenuBarView* view() const { return m_view; }

    // A popup closes by itself on a press beside it, in other programs too. Wayland gives a popup only to a window
    // that was pressed, so there it is a window that closes when another has the keyboard. By the name of Qt's
    // platform.
    static Qt::WindowType typeOn(const QString& platformName);

  signals:
    // It is hidden and will not be shown again.
    void closed();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    void place();

    std::optional<QPoint> m_press;
    MenuBarView* m_view;
};

} // namespace quillane
