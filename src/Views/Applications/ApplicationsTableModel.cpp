#include "Applications/ApplicationsTableModel.h"
#include "Applications/AppWords.h"
#include "Components/ProtectedMark.h"
#include "Components/ShownText.h"
#include "Formatting.h"
#include "Tables/TableRole.h"
#include <QGuiApplication>

namespace quillane {

namespace {

const QString kStoreHelp = QStringLiteral("Installed from the Mac App Store");

// What the marks behind a name tell, for those who do not see them.
QString marksAloud(const AppRow& row) {
    QStringList told;
    if (row.isMacAppStore) {
        told << kStoreHelp;
    }
    if (row.isProtected) {
        told << ProtectedMark::helpText();
    }
    return told.join(QStringLiteral(". "));
}

QVariant tinted(Tint tint) {
    return static_cast<int>(tint);
}

} // namespace

ApplicationsTableModel::ApplicationsTableModel(const Clock& clock, QObject* parent)
    : SectionModel({{QStringLiteral("Name")},
                    {QStringLiteral("Size"), true},
                    {QStringLiteral("Last Used")},
                    {QStringLiteral("Architecture")},
                    {QStringLiteral("Version")}},
                   parent)
    , m_clock(clock) {}

void ApplicationsTableModel::iconsArrived() {
    if (rowCount() > 0) {
        emit dataChanged(index(0, kName), index(rowCount() - 1, kName), {Qt::DecorationRole});
    }
}

QVariant ApplicationsTableModel::cellData(const AppRow& row, int column, int role) const {
    switch (column) {
    case kName:
        return nameData(row, role);
    case kSize:
        return sizeData(row, role);
    case kLastUsed:
        return lastUsedData(row, role);
    case kArchitecture:
        return architectureData(row, role);
    default:
        return versionData(row, role);
    }
}

QVariant ApplicationsTableModel::nameData(const AppRow& row, int role) const {
    switch (role) {
    case Qt::DisplayRole:
        return shownName(row.name);
    case Qt::AccessibleTextRole: // a name may be empty, and then something has to be read all the same
        return shownName(row.name.empty() ? row.url.lastPathComponent() : row.name);
    case Qt::DecorationRole:
        return m_icons.at(row.url, qGuiApp->devicePixelRatio());
    case kTrailingSymbolRole:
        return row.isMacAppStore ? QVariant(QStringLiteral("bag.fill")) : QVariant();
    case kTrailingHelpRole:
        return row.isMacAppStore ? QVariant(kStoreHelp) : QVariant();
    case kProtectedRole:
        return row.isProtected;
    case Qt::AccessibleDescriptionRole: {
        const QString told = marksAloud(row);
        return told.isEmpty() ? QVariant() : QVariant(told);
    }
    default:
        return {};
    }
}

QVariant ApplicationsTableModel::sizeData(const AppRow& row, int role) const {
    switch (role) {
    case Qt::DisplayRole:
        return row.isMeasured ? QVariant(words(Formatting::byteCount(row.totalBytes))) : QVariant();
    case Qt::AccessibleTextRole:
        return row.isMeasured ? QVariant() : QVariant(QStringLiteral("Measuring…"));
    case kBusyRole:
        return !row.isMeasured;
    case kTintRole:
        return tinted(AppWords::sizeTint(row.totalBytes));
    case kTabularRole:
        return true;
    default:
        return {};
    }
}

QVariant ApplicationsTableModel::lastUsedData(const AppRow& row, int role) const {
    switch (role) {
    case Qt::DisplayRole:
        return AppWords::lastUsed(row.lastUsed, m_clock);
    case kTintRole:
        return tinted(AppWords::lastUsedTint(row.lastUsed, m_clock));
    default:
        return {};
    }
}

QVariant ApplicationsTableModel::architectureData(const AppRow& row, int role) const {
    switch (role) {
    case Qt::DisplayRole:
        return words(rawValue(row.architecture));
    case kSymbolRole:
        return AppWords::architectureSymbol(row.architecture);
    case kTintRole:
        return tinted(AppWords::architectureTint(row.architecture));
    default:
        return {};
    }
}

QVariant ApplicationsTableModel::versionData(const AppRow& row, int role) const {
    switch (role) {
    case Qt::DisplayRole:
        return shownName(row.version);
    case kTintRole:
        return tinted(Tint::Secondary);
    default:
        return {};
    }
}

} // namespace quillane
