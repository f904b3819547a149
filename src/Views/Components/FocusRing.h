#pragma once
#include <QObject>
#include <QPointer>

class QFocusFrame;
class QPainter;
class QRectF;
class QWidget;

namespace quillane {

// Draws the ring round the control that has the focus, outside its edge: round buttons only while the user
// moves the focus with the keyboard (a click hides it), round text fields always. Lists and tables show their
// focus themselves; a key that moves the cursor in them counts as one that moves the focus.
// One object serves the application; Look makes it.
class FocusRing : public QObject {
    Q_OBJECT
  public:
    explicit FocusRing(QObject* parent);
    ~FocusRing() override;

    // Whether `widget` has the focus and got it, or moves inside it, by keyboard.
    static bool isShownFor(const QWidget* widget);
    // A ring inside `rect`, for rows of lists.
    static void drawInside(QPainter& painter, const QRectF& rect, double radius, double width = 2);
    // The same in white, on the ground of a selected row.
    static void drawOnSelection(QPainter& painter, const QRectF& rect, double radius);
    // Whether this key moves the cursor of a list or a table, with whatever modifiers.
    static bool movesCursor(int key);

    // The control that the ring is round, or null.
    QWidget* target() const;

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    void setByKeyboard(QWidget* window, bool on);
    void follow(QWidget* widget);

    QPointer<QFocusFrame> m_frame;
};

} // namespace quillane
