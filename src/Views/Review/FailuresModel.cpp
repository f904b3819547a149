#include "Review/FailuresModel.h"
#include "Components/ShownText.h"
#include "Components/ToolTipText.h"
#include <utility>

namespace quillane {

FailuresModel::FailuresModel(std::vector<Uninstaller::Failure> failures, QObject* parent)
    : QAbstractListModel(parent)
    , m_failures(std::move(failures)) {}

int FailuresModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_failures.size());
}

QVariant FailuresModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const auto& failure = m_failures[static_cast<std::size_t>(index.row())];
    switch (role) {
    case Qt::DisplayRole:
        return shownName(failure.url.lastPathComponent());
    case kReasonRole:
        return shownName(failure.reason);
    case Qt::AccessibleTextRole:
        return shownName(failure.url.lastPathComponent()) + QStringLiteral(", ") + shownName(failure.reason);
    case Qt::ToolTipRole:
        return toolTipText(shownName(failure.url.path()));
    default:
        return {};
    }
}

} // namespace quillane
