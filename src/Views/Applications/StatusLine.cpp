#include "Applications/StatusLine.h"
#include "Components/Label.h"
#include "Components/ProgressBar.h"
#include "Components/ShownText.h"
#include "Components/Spinner.h"
#include "Formatting.h"

namespace quillane {

using Kind = AppLibrary::Phase::Kind;

StatusLine::StatusLine(QWidget* parent)
    : StatusRow(parent)
    , m_spinner(new Spinner(12))
    , m_bar(new ProgressBar(120)) {
    m_bar->setAccessibleName(QStringLiteral("Measured applications"));
    addBefore(m_spinner);
    addBehind(m_bar);
}

void StatusLine::show(const AppLibrary::Phase& phase, std::size_t visibleApps, Bytes totalBytes) {
    const bool isReady = phase.kind == Kind::ready;
    setTexts(words(phase, visibleApps), {},
             isReady ? quillane::words(Formatting::byteCount(totalBytes)) + QStringLiteral(" total")
                     : QString());
    m_spinner->setVisible(phase.kind == Kind::scanning || phase.kind == Kind::findingOrphans ||
                          phase.kind == Kind::findingDeveloperCaches);
    m_bar->setVisible(phase.kind == Kind::measuring);
    m_bar->setRange(0, std::max(phase.total, 1));
    m_bar->setValue(phase.done);
}

QString StatusLine::words(const AppLibrary::Phase& phase, std::size_t visibleApps) {
    switch (phase.kind) {
    case Kind::idle:
        return QStringLiteral("Ready");
    case Kind::scanning:
        return QStringLiteral("Finding applications…");
    case Kind::measuring:
        return quillane::words("Measuring " + Formatting::number(phase.done) + " of " +
                               Formatting::number(phase.total));
    case Kind::findingOrphans:
        return QStringLiteral("Looking for orphaned files…");
    case Kind::findingDeveloperCaches:
        return QStringLiteral("Measuring developer caches…");
    case Kind::ready:
        return quillane::words(Formatting::counted(static_cast<std::int64_t>(visibleApps), "app"));
    }
    __builtin_unreachable();
}

} // namespace quillane
