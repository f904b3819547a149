#pragma once
#include <QDialog>
#include <QPointer>

namespace quillane {

class LibraryObserver;
class Scrim;

// A dialog of fixed size that belongs to one window and blocks it. macOS slides it from the title bar; elsewhere
// it lies without a frame over the middle of the window, which is dimmed meanwhile, and never off the screen. In
// a low window it is lower, so that its buttons can be reached.
class Sheet : public QDialog {
    Q_OBJECT
  public:
    // `over` is any widget of the window; the sheet is its child. Without it the sheet stands alone.
    Sheet(QSize size, QWidget* over);
    ~Sheet() override;

    // The one that lies open over this window; null while none does.
    static Sheet* openOver(const QWidget& window);
    // Whether one does; `waiting` draws again when it has gone. Two never lie over each other.
    static bool keepsWaiting(const QWidget& window, LibraryObserver& waiting);
    // Of the corners; 0 where the platform draws the sheet's edge.
    static double radius();
    // What dims the window; null while the sheet is closed and where the platform does it.
    QWidget* scrim() const;

    void setVisible(bool visible) override;

  protected:
    // In place of the size that was given when it was made.
    void setWantedSize(QSize size);

    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    QSize fittingSize() const;
    void arrange();
    void centre();

    QSize m_wanted;
    QPointer<Scrim> m_scrim;
};

// The lowest part of a sheet, on the lightest ground, with a line above it.
class SheetFooter : public QWidget {
    Q_OBJECT
  public:
    using QWidget::QWidget;

  protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace quillane
