#include "Orphans/OrphanTableModel.h"
#include "Components/ShownText.h"
#include "Components/Tint.h"
#include "Tables/CellData.h"
#include "Tables/TableRole.h"

namespace quillane {

namespace {

QVariant titleData(const OrphanRow& row, int role) {
    switch (role) {
    case Qt::DisplayRole:
        return shownName(row.title);
    case kSymbolRole:
        return QStringLiteral("questionmark.folder");
    case kSymbolTintRole:
        return static_cast<int>(Tint::Secondary);
    case kTrailingSymbolRole:
        return row.requiresAdmin ? QVariant(QStringLiteral("lock.fill")) : QVariant();
    case kTrailingHelpRole:
    case Qt::AccessibleDescriptionRole:
        return row.requiresAdmin ? QVariant(QStringLiteral("Some files need admin rights to remove"))
                                 : QVariant();
    default:
        return {};
    }
}

} // namespace

OrphanTableModel::OrphanTableModel(const Clock& clock, QObject* parent)
    : SectionModel({{QStringLiteral("Left Behind By")},
                    {QStringLiteral("Size"), true},
                    {QStringLiteral("Files"), true},
                    {QStringLiteral("Last Touched")}},
                   parent)
    , m_clock(clock) {}

QVariant OrphanTableModel::cellData(const OrphanRow& row, int column, int role) const {
    switch (column) {
    case kLeftBehindBy:
        return titleData(row, role);
    case kSize:
        return CellData::size(row.totalBytes, role);
    case kFiles:
        return CellData::count(row.itemCount, role);
    default:
        return CellData::lastTouched(row.lastModified, m_clock, role);
    }
}

} // namespace quillane
