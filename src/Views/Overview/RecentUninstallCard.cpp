#include "Overview/RecentUninstallCard.h"
#include "Components/Label.h"
#include "Components/ShownText.h"
#include "Components/SymbolButton.h"
#include "Components/ToolTipText.h"
#include "Formatting.h"
#include <QEvent>
#include <cstdint>

namespace quillane {

RecentUninstallCard::RecentUninstallCard(Clock& clock, QWidget* parent)
    : DatedCard(QStringLiteral("trash.slash.circle.fill"), Tint::Apps, clock, parent)
    , m_review(new PushButton(QStringLiteral("Review Leftovers…")))
    , m_dismiss(new PushButton(QStringLiteral("Dismiss"), {}, PushButton::Role::Plain))
    , m_close(new SymbolButton(QStringLiteral("xmark"), QStringLiteral("Dismiss"))) {
    for (auto* const button : {m_review, m_dismiss, static_cast<PushButton*>(m_close)}) {
        addButton(button);
    }
    m_review->hide();
    title()->setMinimumWidth(1); // a name without a blank must not widen the column
    title()->installEventFilter(this);
    connect(m_review, &QPushButton::clicked, this, &RecentUninstallCard::reviewWanted);
    connect(m_dismiss, &QPushButton::clicked, this, &RecentUninstallCard::dismissWanted);
    connect(m_close, &QPushButton::clicked, this, &RecentUninstallCard::dismissWanted);
}

void RecentUninstallCard::setRecord(const RecentUninstall& record) {
    m_record = record;
    m_review->setVisible(!record.leftovers.empty());
    follow(record.removedAt);
}

// A name never takes more than a line; whole it stands in the tooltip, and assistive tools read it.
void RecentUninstallCard::tell() {
    const QString name = shownName(m_record.name);
    const QString fitting = title()->fontMetrics().elidedText(name, Qt::ElideMiddle, title()->width() - 1);
    const QString whole = titleWith(name);
    setTexts(titleWith(fitting), sentenceOfRecord());
    setAccessibleName(whole);
    title()->setAccessibleName(whole);
    setToolTipText(*title(), fitting == name ? QString() : whole);
}

QString RecentUninstallCard::titleWith(const QString& name) const {
    return QStringLiteral("You removed ") + name + QLatin1Char(' ') + when();
}

QString RecentUninstallCard::sentenceOfRecord() const {
    const auto& leftovers = m_record.leftovers;
    if (leftovers.empty()) {
        return QStringLiteral("It left nothing behind. Clean uninstall.");
    }
    const Bytes left = sumOfBytes(leftovers, [](const auto& leftover) { return leftover.bytes; });
    return words("It left " + Formatting::byteCount(left) + " in " +
                 Formatting::counted(static_cast<std::int64_t>(leftovers.size()), "file") +
                 " across your Library.");
}

bool RecentUninstallCard::eventFilter(QObject* watched, QEvent* event) {
    if (watched == title() && event->type() == QEvent::Resize) {
        tell();
    }
    return DatedCard::eventFilter(watched, event);
}

} // namespace quillane
