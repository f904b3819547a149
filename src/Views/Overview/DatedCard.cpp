#include "Overview/DatedCard.h"

namespace quillane {

DatedCard::DatedCard(const QString& symbol, Tint tint, Clock& clock, QWidget* parent)
    : ActionCard(symbol, tint, parent)
    , m_date(new LivingDate(clock, [this] { tell(); }, this)) {}

} // namespace quillane
