#pragma once
#include "Bytes.h"
#include "SweepCategory.h"
#include <QWidget>

class QCheckBox;
class QStackedWidget;

namespace quillane {

class Badge;
class Label;
class PushButton;
class Spinner;

// One category that can be ticked: what it is, and how much of it there is. A click anywhere in it ticks.
class CategoryRow : public QWidget {
    Q_OBJECT
  public:
    struct State {
        Bytes bytes = 0;
        int count = 0;
        bool isMeasured = false;  // else a spinner stands for the figures
        bool needsAccess = false; // what the category holds can't be seen: it can't be ticked
        bool isOn = false;
    };

    explicit CategoryRow(SweepCategory category, QWidget* parent = nullptr);

    void setState(const State& state);

    // "1 app", "2 locations": the number with the category's word.
    static QString countText(SweepCategory category, int count);

    SweepCategory category() const { return m_category; }
    QCheckBox* checkBox() const { return m_box; }
    Label* title() const { return m_title; }
    Badge* permanent() const { return m_permanent; } // null for what can come back
    Label* sentence() const { return m_sentence; }
    Label* size() const { return m_size; }
    Label* count() const { return m_count; }
    Spinner* spinner() const { return m_spinner; }
    Label* blocked() const { return m_blocked; }
    PushButton* grantButton() const { return m_grant; }

  signals:
    void toggled(bool isOn); // by the user
    void grantAccessAsked();

  protected:
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

  private:
    QWidget* makeTexts();
    QWidget* makeFigures();
    QString spokenName(const State& state) const;

    const SweepCategory m_category;
    QCheckBox* m_box;
    Label* m_title;
    Badge* m_permanent = nullptr;
    Label* m_sentence;
    Label* m_size;
    Label* m_count;
    Spinner* m_spinner;
    Label* m_blocked;
    PushButton* m_grant;
    QWidget* m_access = nullptr;
    QWidget* m_figures = nullptr;
};

} // namespace quillane
