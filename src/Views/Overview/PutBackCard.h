#pragma once
#include "Overview/DatedCard.h"

namespace quillane {

struct UndoableOperation;

// The last cleanup, and the button that takes it back.
class PutBackCard : public DatedCard {
    Q_OBJECT
  public:
    // The clock outlives the card.
    explicit PutBackCard(Clock& clock, QWidget* parent = nullptr);

    void setOperation(const UndoableOperation& operation);
    PushButton* putBackButton() const { return m_putBack; }

  protected:
    void tell() override;

  private:
    QString m_title;
    QString m_figures;
    PushButton* m_putBack;
};

} // namespace quillane
