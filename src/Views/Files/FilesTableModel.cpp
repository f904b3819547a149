#include "Files/FilesTableModel.h"
#include "Components/FileKindSymbol.h"
#include "Components/ProtectedMark.h"
#include "Components/ShownText.h"
#include "Components/Tint.h"
#include "Tables/CellData.h"
#include "Tables/TableRole.h"
#include <QStringList>

namespace quillane {

namespace {

QVariant ifSo(bool holds, const QString& text) {
    return holds ? QVariant(text) : QVariant();
}

QVariant description(const FileRow& row) {
    QStringList marks;
    if (row.isCloudPlaceholder) {
        marks << FilesTableModel::placeholderHelp();
    }
    if (row.installsAnInstalledApp) {
        marks << FilesTableModel::installedHelp();
    }
    if (row.isProtected) {
        marks << ProtectedMark::helpText();
    }
    return marks.isEmpty() ? QVariant() : QVariant(marks.join(QStringLiteral(". ")));
}

QVariant nameData(const FileRow& row, int role) {
    switch (role) {
    case Qt::DisplayRole:
        return shownName(std::string(row.url.lastPathComponent()));
    case kSymbolRole:
        return fileKindSymbol(row.kind);
    case kSymbolTintRole:
        return static_cast<int>(Tint::Secondary);
    case kElideRole:
        return static_cast<int>(Qt::ElideMiddle);
    case kTrailingSymbolRole:
        return ifSo(row.isCloudPlaceholder, QStringLiteral("icloud"));
    case kTrailingHelpRole:
        return ifSo(row.isCloudPlaceholder, FilesTableModel::placeholderHelp());
    case kFurtherSymbolRole:
        return ifSo(row.installsAnInstalledApp, QStringLiteral("checkmark.seal"));
    case kFurtherHelpRole:
        return ifSo(row.installsAnInstalledApp, FilesTableModel::installedHelp());
    case kProtectedRole:
        return row.isProtected;
    case Qt::AccessibleDescriptionRole:
        return description(row);
    default:
        return {};
    }
}

QVariant kindData(UserFile::Kind kind, int role) {
    switch (role) {
    case Qt::DisplayRole:
        return words(rawValue(kind));
    case kTintRole:
        return static_cast<int>(Tint::Secondary);
    default:
        return {};
    }
}

QVariant whereData(const std::string& folder, int role) {
    switch (role) {
    case Qt::DisplayRole:
        return shownName(folder);
    case kTintRole:
        return static_cast<int>(Tint::Secondary);
    case kElideRole:
        return static_cast<int>(Qt::ElideMiddle);
    default:
        return {};
    }
}

} // namespace

FilesTableModel::FilesTableModel(const Clock& clock, QObject* parent)
    : SectionModel({{QStringLiteral("Name")},
                    {QStringLiteral("Kind")},
                    {QStringLiteral("Size"), true},
                    {QStringLiteral("Last Opened")},
                    {QStringLiteral("Where")}},
                   parent)
    , m_clock(clock) {}

QString FilesTableModel::placeholderHelp() {
    return QStringLiteral("Only a placeholder is on this Mac");
}

QString FilesTableModel::installedHelp() {
    return QStringLiteral("This app is already installed");
}

QVariant FilesTableModel::cellData(const FileRow& row, int column, int role) const {
    switch (column) {
    case kName:
        return nameData(row, role);
    case kKind:
        return kindData(row.kind, role);
    case kSize:
        return CellData::size(row.bytes, role);
    case kLastOpened:
        return CellData::lastTouched(row.lastUsed, m_clock, role);
    default:
        return whereData(row.folder, role);
    }
}

} // namespace quillane
