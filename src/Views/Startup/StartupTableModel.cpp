#include "Startup/StartupTableModel.h"
#include "Components/ProtectedMark.h"
#include "Components/ShownText.h"
#include "Components/Tint.h"
#include "Panes/DetailPane.h"
#include "Startup/HealthBadge.h"
#include "Tables/TableRole.h"
#include <QStringList>

namespace quillane {

namespace {

constexpr double kLoadedSide = 11;

QVariant description(const StartupRow& row) {
    QStringList marks;
    if (!row.isAtHome) {
        marks << DetailPane::lockHelp();
    }
    if (row.isProtected) {
        marks << ProtectedMark::helpText();
    }
    return marks.isEmpty() ? QVariant() : QVariant(marks.join(QStringLiteral(". ")));
}

QVariant labelData(const StartupRow& row, int role) {
    switch (role) {
    case Qt::DisplayRole:
        return shownName(row.label);
    case kElideRole:
        return static_cast<int>(Qt::ElideMiddle);
    case kTrailingSymbolRole:
        return row.isAtHome ? QVariant() : QVariant(QStringLiteral("lock.fill"));
    case kTrailingHelpRole:
        return row.isAtHome ? QVariant() : QVariant(DetailPane::lockHelp());
    case kProtectedRole:
        return row.isProtected;
    case Qt::AccessibleDescriptionRole:
        return description(row);
    default:
        return {};
    }
}

QVariant text(const QString& shown, Tint tint, int role) {
    switch (role) {
    case Qt::DisplayRole:
        return shown;
    case kTintRole:
        return static_cast<int>(tint);
    default:
        return {};
    }
}

QVariant loadedData(bool isLoaded, int role) {
    switch (role) {
    case kSymbolRole:
        return isLoaded ? QStringLiteral("circle.fill") : QStringLiteral("circle");
    case kSymbolSideRole:
        return kLoadedSide;
    case kTintRole:
        return static_cast<int>(isLoaded ? Tint::Green : Tint::Secondary);
    case Qt::ToolTipRole:
    case Qt::AccessibleTextRole:
        return isLoaded ? QStringLiteral("Running under launchd now") : QStringLiteral("Not loaded");
    default:
        return {};
    }
}

bool isProblem(const StartupRow& row) {
    return row.health != StartupItem::Health::ok;
}

} // namespace

StartupTableModel::StartupTableModel(QObject* parent)
    : SectionModel({{QStringLiteral("Status")},
                    {QStringLiteral("Label")},
                    {.title = QStringLiteral("Owner"), .isSortable = false},
                    {QStringLiteral("Kind")},
                    {.title = QStringLiteral("Runs"), .isSortable = false},
                    {.title = QStringLiteral("Loaded"), .isSortable = false}},
                   parent) {}

QVariant StartupTableModel::cellData(const StartupRow& row, int column, int role) const {
    switch (column) {
    case kStatus:
        return HealthBadge::cell(row.health, role);
    case kLabel:
        return labelData(row, role);
    case kOwner:
        return text(shownName(row.ownerName.value_or(std::string())), Tint::Secondary, role);
    case kKind:
        return text(words(rawValue(row.kind)), isProblem(row) ? Tint::Orange : Tint::Secondary, role);
    case kRuns:
        return text(words(row.schedule), Tint::Text, role);
    default:
        return row.isLoaded ? loadedData(*row.isLoaded, role) : text(QStringLiteral("—"), Tint::Text, role);
    }
}

} // namespace quillane
