#pragma once
#include "MenuBar/MenuBarWay.h"
#include "SweepCategory.h"
#include <QWidget>
#include <vector>

class QStackedWidget;
class QVBoxLayout;

namespace quillane {

class AppLibrary;
class FigureRow;
class FittedLabel;
class Label;
class LibraryObserver;
class PushButton;
class SymbolButton;

// What stands in the popover of the item in the menu bar: what could be reclaimed, a row for each ticked category, and
// the ways into the program. Nothing here removes anything. It follows the library while it is open, and its height
// follows its rows.
class MenuBarView : public QWidget {
    Q_OBJECT
  public:
    // The library outlives it.
    explicit MenuBarView(AppLibrary& library, QWidget* parent = nullptr);

    static constexpr int kWidth = 308; // at the usual text size

    Label* heading() const { return m_heading; }
    // What could be reclaimed; hidden until a scan has measured it, and the words that stand for it shown.
    FittedLabel* figure() const { return m_figure; }
    Label* scanning() const { return m_scanning; }
    SymbolButton* rescanButton() const { return m_rescan; }
    const std::vector<FigureRow*>& rows() const { return m_rows; } // from the top
    PushButton* reviewButton() const { return m_review; }
    PushButton* windowButton() const { return m_window; }
    PushButton* settingsButton() const { return m_settings; }
    PushButton* quitButton() const { return m_quit; }

    // Gives the keyboard to the first thing that a person may want here.
    void takeFocus();

  signals:
    void wanted(quillane::MenuBarWay way);

  protected:
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void lead(PushButton& button, MenuBarWay way);
    QWidget* makeHead();
    QWidget* makeRows();
    QWidget* makeMainButtons();
    QWidget* makeFoot();
    void render();
    void enable(PushButton& button, bool isEnabled);
    void renderFigure(bool isReady);
    void renderRows(bool isReady);
    void showRowsOf(const std::vector<SweepCategory>& categories);
    void say();

    AppLibrary& m_library;
    Label* m_heading;
    FittedLabel* m_figure;
    Label* m_scanning;
    SymbolButton* m_rescan;
    PushButton* m_review;
    PushButton* m_window;
    PushButton* m_settings;
    PushButton* m_quit;
    QStackedWidget* m_states = nullptr; // the words, then the figure
    QWidget* m_list = nullptr;
    QVBoxLayout* m_column = nullptr; // of the rows
    std::vector<SweepCategory> m_categories;
    std::vector<FigureRow*> m_rows; // one for each of the categories
    LibraryObserver* m_observer;
};

} // namespace quillane
