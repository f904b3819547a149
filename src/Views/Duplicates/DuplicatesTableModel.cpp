#include "Duplicates/DuplicatesTableModel.h"
#include "Components/FileKindSymbol.h"
#include "Components/ShownText.h"
#include "Components/Tint.h"
#include "Tables/CellData.h"
#include "Tables/TableRole.h"

namespace quillane {

namespace {

QVariant fileData(const DuplicateRow& row, int role) {
    switch (role) {
    case Qt::DisplayRole:
        return shownName(row.name);
    case kSymbolRole:
        return fileKindSymbol(row.kind);
    case kSymbolTintRole:
        return static_cast<int>(Tint::Secondary);
    default:
        return {};
    }
}

} // namespace

DuplicatesTableModel::DuplicatesTableModel(QObject* parent)
    : SectionModel({{QStringLiteral("File")},
                    {QStringLiteral("Copies"), true},
                    {QStringLiteral("Each"), true},
                    {QStringLiteral("Wasted"), true}},
                   parent) {}

QVariant DuplicatesTableModel::cellData(const DuplicateRow& row, int column, int role) const {
    switch (column) {
    case kFile:
        return fileData(row, role);
    case kCopies:
        return CellData::count(row.count, role);
    case kEach:
        return CellData::size(row.bytesEach, role);
    default:
        return CellData::size(row.wastedBytes, role);
    }
}

} // namespace quillane
