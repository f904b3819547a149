#pragma once
#include <QWidget>
#include <vector>

class QHBoxLayout;

namespace quillane {

class Label;
class PushButton;

// The first row of a column, 52 high: a title at the left, controls at the right, a line below.
class ToolbarRow : public QWidget {
    Q_OBJECT
  public:
    enum class Line { Below, None };
    explicit ToolbarRow(const QString& title = {}, Line line = Line::Below, QWidget* parent = nullptr);

    static constexpr int kHeight = 52;
    // The same for larger text.
    static int scaledHeight();

    void setTitle(const QString& title);
    QString title() const;
    // Controls stand at the right, 8 apart, in the order they are added.
    void addControl(QWidget* control);
    // Removes and deletes all controls.
    void clearControls();
    // The button that shows its symbol alone when the controls do not all fit. Others never lose their label.
    void setShrinking(PushButton* button);

    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool event(QEvent* event) override;

  private:
    void fit();

    QHBoxLayout* m_row;
    Label* m_title;
    std::vector<QWidget*> m_controls;
    PushButton* m_shrinking = nullptr;
    Line m_line;
};

} // namespace quillane
