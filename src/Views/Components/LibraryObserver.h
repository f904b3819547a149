#pragma once
#include "Published.h"
#include <QObject>
#include <QPointer>
#include <QWidget>
#include <functional>

namespace quillane {

// Draws a part of the window from the library and draws it again when something that it read has changed.
// However much changes in one turn of the event loop, it is drawn once, at the next turn. Main thread only.
class LibraryObserver : public QObject, private Observer {
    Q_OBJECT
  public:
    // `render` reads Published fields and puts them on the screen. It may be called at any later turn while
    // this lives, so what it captures must live as long.
    explicit LibraryObserver(std::function<void()> render, QObject* parent = nullptr);

    // At once. The first call begins the observation.
    void renderNow();
    // At the next turn: for what the screen shows but the library does not hold, such as a selection.
    void schedule();
    // Draws from now on only while `screen` is in sight or its window is not: behind another screen it costs nothing.
    // What has changed there is drawn when it comes, before its first picture.
    void drawOnlyInSight(QWidget* screen);

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    void fieldDidChange() override { schedule(); }
    bool isOutOfSight() const;

    std::function<void()> m_render;
    QPointer<QWidget> m_screen;
    bool m_isScheduled = false;
};

} // namespace quillane
