#pragma once
#include <QWidget>
#include <vector>

class QButtonGroup;

namespace quillane {

// One choice of a few, side by side on one track, 30 high. One is always chosen. Left and right arrows move
// the choice; Tab enters at the chosen one and leaves.
class SegmentedControl : public QWidget {
    Q_OBJECT
  public:
    SegmentedControl(const QString& name, const QStringList& segments, QWidget* parent = nullptr);

    int currentIndex() const;
    // Does not emit when the index is the current one or there is no such segment.
    void setCurrentIndex(int index);
    int count() const;

  signals:
    void currentChanged(int index);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    QButtonGroup* m_group;
};

} // namespace quillane
