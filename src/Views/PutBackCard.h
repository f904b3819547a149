#pragma once
#include "ActionCard.h"

namespace quillane {

class Clock;
struct UndoableOperation;

// The last cleanup, and the button that takes it back.
class PutBackCard : public ActionCard {
    Q_OBJECT
  public:
    explicit PutBackCard(QWidget* parent = nullptr);

    void show(const UndoableOperation& operation, const Clock& clock);
    using QWidget::show;
    PushButton* putBackButton() const { return m_putBack; }

  private:
    PushButton* m_putBack;
};

} // namespace quillane
