#pragma once
#include "Components/LivingDate.h"
#include "Overview/ActionCard.h"

namespace quillane {

// A card that says how long ago something was. While it can be seen it keeps up with the time that has passed;
// hidden it costs nothing.
class DatedCard : public ActionCard {
    Q_OBJECT
  protected:
    // The clock outlives the card.
    DatedCard(const QString& symbol, Tint tint, Clock& clock, QWidget* parent);

    // This date from now on; the card is told anew.
    void follow(Date date) { m_date->follow(date); }
    // "3 minutes ago".
    QString when() const { return m_date->words(); }
    // Puts the words of now on the card.
    virtual void tell() = 0;

  private:
    LivingDate* m_date;
};

} // namespace quillane
