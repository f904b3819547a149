#pragma once
#include <QComboBox>

namespace quillane {

// Assistive tools select in the open list and do no more, where a click and the keys choose: from now on what they
// select is chosen too.
void chooseWhatIsSelected(QComboBox& box);

// One choice of a few, shown as a button with the chosen words, as wide as they are. It may have none chosen. The
// wheel goes to whatever scrolls round it.
class Picker : public QComboBox {
    Q_OBJECT
  public:
    // `name` is what assistive tools call it. Nothing is chosen at first.
    Picker(const QString& name, const QStringList& choices, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

    void showPopup() override;

  protected:
    void wheelEvent(QWheelEvent* event) override;
};

} // namespace quillane
