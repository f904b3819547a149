#pragma once
#include <QWidget>

class QComboBox;

namespace quillane {

class AppLibrary;
class PushButton;
class SegmentedControl;
class TextField;

// Above the table of files: the lens, and what the search lens looks for. Typing alone asks nothing; Return, the
// button and another kind do.
class LensBar : public QWidget {
    Q_OBJECT
  public:
    // The library outlives the bar.
    explicit LensBar(AppLibrary& library, QWidget* parent = nullptr);

    SegmentedControl* lenses() const { return m_lenses; }
    TextField* text() const { return m_text; }
    QComboBox* kind() const { return m_kind; }
    PushButton* search() const { return m_search; }

  protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    QWidget* makeSearchRow();
    void fillKinds();
    void render();
    void choose(int lens);
    void chooseKind(int index);

    AppLibrary& m_library;
    SegmentedControl* m_lenses;
    TextField* m_text;
    QComboBox* m_kind;
    PushButton* m_search;
    QWidget* m_searchRow;
};

} // namespace quillane
