#include "Overview/AccessNotice.h"
#include "Components/PushButton.h"
#include "Components/ShownText.h"
#include "Formatting.h"

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
