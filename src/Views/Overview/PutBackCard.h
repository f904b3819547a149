#pragma once
#include "Overview/ActionCard.h"
#include "Overview/RelativeDateTimer.h"

namespace quillane {

struct UndoableOperation;

// The last cleanup, and the button that takes it back. While it can be seen it keeps up with the time that has
// passed; hidden it costs nothing.
class PutBackCard : public ActionCard {
    Q_OBJECT
  public:
    // The clock outlives the card.
    explicit PutBackCard(Clock& clock, QWidget* parent = nullptr);

    void setOperation(const UndoableOperation& operation);
    PushButton* putBackButton() const { return m_putBack; }

  protected:
    bool event(QEvent* event) override;

  private:
    void tell();

    Clock& m_clock;
    QString m_title;
    QString m_figures;
    Date m_date;
    RelativeDateTimer m_timer;
    PushButton* m_putBack;
};

} // namespace quillane
