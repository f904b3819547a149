#pragma once
#include <QWidget>

class QHBoxLayout;

namespace quillane {

class Label;

// The last row of a column, 32 high, with a line above: a count at the left, perhaps a further figure after a
// faint dot, a size at the right.
class StatusRow : public QWidget {
    Q_OBJECT
  public:
    explicit StatusRow(QWidget* parent = nullptr);

    static constexpr int kHeight = 32;

    // Empty texts take no room.
    void setTexts(const QString& left, const QString& extra, const QString& right);
    Label* left() const { return m_left; }
    Label* extra() const { return m_extra; }
    Label* right() const { return m_right; }
    // Stands before the left text (a spinner) or behind it (a bar).
    void addBefore(QWidget* widget);
    void addBehind(QWidget* widget);
    // Stands before the right text: a mark.
    void addBeforeRight(QWidget* widget);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QHBoxLayout* m_row;
    Label* m_left;
    Label* m_dot;
    Label* m_extra;
    Label* m_right;
};

} // namespace quillane
