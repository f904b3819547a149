#include "AccessNotice.h"
#include "Formatting.h"
#include "PushButton.h"
#include "ShownText.h"

namespace quillane {

AccessNotice::AccessNotice(QWidget* parent)
    : ActionCard(QStringLiteral("lock.shield"), Tint::Orange, parent)
    , m_grant(new PushButton(QStringLiteral("Grant Access…"))) {
    addButton(m_grant);
}

void AccessNotice::setCount(int count) {
    setTexts(words(Formatting::counted(count, "item") + " blocked by macOS"),
             QStringLiteral("These are left out of the total until Quillane has Full Disk Access."));
}

} // namespace quillane
