#pragma once
#include <QWidget>

class QHBoxLayout;

namespace quillane {

class Label;
class Switch;

// A row of a group of settings, 42 high with the line above it: words at the left, controls at the right.
class SettingsRow : public QWidget {
    Q_OBJECT
  public:
    // With this control, if any. Others come left of it.
    explicit SettingsRow(const QString& words, QWidget* control = nullptr, QWidget* parent = nullptr);

    static constexpr int kHeight = 41;

    Label* label() const { return m_label; }
    // Puts a further control between the words and those that stand. Tab comes to it after them.
    void addBefore(QWidget* control);

  private:
    Label* m_label;
    QHBoxLayout* m_row;
};

// The same with a switch of these words, which a click on the words turns too.
class SwitchRow : public SettingsRow {
    Q_OBJECT
  public:
    explicit SwitchRow(const QString& words, QWidget* parent = nullptr);

    Switch* control() const { return m_switch; }

  protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

  private:
    SwitchRow(const QString& words, Switch* control, QWidget* parent);
    bool isOnWords(const QMouseEvent& event) const;

    Switch* m_switch;
    bool m_isPressed = false;
};

} // namespace quillane
