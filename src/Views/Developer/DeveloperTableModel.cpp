#include "Developer/DeveloperTableModel.h"
#include "Components/ProtectedMark.h"
#include "Components/ShownText.h"
#include "Components/Tint.h"
#include "Tables/CellData.h"
#include "Tables/TableRole.h"

namespace quillane {

namespace {

QVariant kindData(const DeveloperRow& row, int role) {
    switch (role) {
    case Qt::DisplayRole:
        return shownName(row.kind);
    case kProtectedRole:
        return row.isProtected;
    case Qt::AccessibleDescriptionRole:
        return row.isProtected ? QVariant(ProtectedMark::helpText()) : QVariant();
    default:
        return {};
    }
}

QVariant sweepData(bool isIncluded, int role) {
    switch (role) {
    case kSymbolRole:
        return isIncluded ? QStringLiteral("checkmark.circle.fill") : QStringLiteral("minus.circle");
    case kTintRole:
        return static_cast<int>(isIncluded ? Tint::Green : Tint::Secondary);
    case Qt::ToolTipRole:
    case Qt::AccessibleTextRole:
        return isIncluded ? QStringLiteral("Included in Clean Now")
                          : QStringLiteral("Shown only - remove it yourself if you mean to");
    default:
        return {};
    }
}

} // namespace

DeveloperTableModel::DeveloperTableModel(const Clock& clock, QObject* parent)
    : SectionModel({{QStringLiteral("Tool")},
                    {QStringLiteral("What")},
                    {QStringLiteral("Size"), true},
                    {QStringLiteral("In Sweep")},
                    {QStringLiteral("Last Touched")}},
                   parent)
    , m_clock(clock) {}

QVariant DeveloperTableModel::cellData(const DeveloperRow& row, int column, int role) const {
    switch (column) {
    case kTool:
        return role == Qt::DisplayRole ? QVariant(shownName(row.tool)) : QVariant();
    case kWhat:
        return kindData(row, role);
    case kSize:
        return CellData::size(row.bytes, role);
    case kInSweep:
        return sweepData(row.safeToSweep, role);
    default:
        return CellData::lastTouched(row.lastModified, m_clock, role);
    }
}

} // namespace quillane
