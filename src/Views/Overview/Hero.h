#pragma once
#include "AppLibrary.h"
#include "Components/Card.h"

class QStackedWidget;

namespace quillane {

class CompositionBar;
class Label;
class PushButton;

// The head of the Overview: the figure, or how far the scan is, and the button that leads to the review.
class Hero : public Card {
    Q_OBJECT
  public:
    explicit Hero(const AppLibrary& library, QWidget* parent = nullptr);

    // Reads the library and is observed.
    void render();

    // Whether there is anything to review now.
    static bool canSweep(const AppLibrary& library);
    // What stands in the figure's place while a scan runs; empty once it is ready.
    static QString scanLabel(const AppLibrary::Phase& phase);

    Label* heading() const { return m_heading; }
    Label* figure() const { return m_figure; }
    Label* progress() const { return m_progress; }
    CompositionBar* bar() const { return m_bar; }
    PushButton* button() const { return m_button; }
    Label* sentence() const { return m_sentence; }

  private:
    QWidget* makeFigure();

    const AppLibrary& m_library;
    Label* m_heading;
    Label* m_figure;
    Label* m_progress;
    CompositionBar* m_bar;
    PushButton* m_button;
    Label* m_sentence;
    QStackedWidget* m_states = nullptr; // the scan, then the figure
};

} // namespace quillane
