#include "Review/SweepReviewModel.h"
#include "Components/ShownText.h"
#include "Formatting.h"
#include <algorithm>
#include <utility>

namespace quillane {

namespace {

// The internal id of a category; that of its rows is one more than the category's place.
constexpr quintptr kSectionId = 0;

// What is read aloud: the words, the size and, where it cannot come back, that.
QString spoken(const QString& title, const QString& size, SweepCategory category) {
    QString text = title + QStringLiteral(", ") + size;
    if (category == SweepCategory::trash) {
        text += QStringLiteral(", permanent");
    }
    return text;
}

} // namespace

SweepReviewModel::SweepReviewModel(SweepReview review, QObject* parent)
    : QAbstractItemModel(parent)
    , m_review(std::move(review)) {}

bool SweepReviewModel::isEntry(const QModelIndex& index) {
    return index.isValid() && index.internalId() != kSectionId;
}

const SweepReview::Section& SweepReviewModel::sectionOf(const QModelIndex& index) const {
    const auto place = isEntry(index) ? index.internalId() - 1 : static_cast<quintptr>(index.row());
    return m_review.sections()[place];
}

std::size_t SweepReviewModel::entryOf(const QModelIndex& index) const {
    return sectionOf(index).rows[static_cast<std::size_t>(index.row())];
}

QModelIndex SweepReviewModel::indexOfEntry(std::size_t entry) const {
    const auto& sections = m_review.sections();
    const auto category = m_review.entries()[entry].category;
    const auto section = std::ranges::find(sections, category, &SweepReview::Section::category);
    const auto row = std::ranges::lower_bound(section->rows, entry); // they keep the order of the entries
    return createIndex(static_cast<int>(row - section->rows.begin()), 0,
                       static_cast<quintptr>(section - sections.begin()) + 1);
}

QModelIndex SweepReviewModel::index(int row, int column, const QModelIndex& parent) const {
    if (!hasIndex(row, column, parent)) {
        return {};
    }
    return createIndex(row, column, parent.isValid() ? static_cast<quintptr>(parent.row()) + 1 : kSectionId);
}

QModelIndex SweepReviewModel::parent(const QModelIndex& child) const {
    if (!isEntry(child)) {
        return {};
    }
    return createIndex(static_cast<int>(child.internalId() - 1), 0, kSectionId);
}

int SweepReviewModel::rowCount(const QModelIndex& parent) const {
    if (!parent.isValid()) {
        return static_cast<int>(m_review.sections().size());
    }
    return isEntry(parent) || parent.column() > 0 ? 0 : static_cast<int>(sectionOf(parent).rows.size());
}

int SweepReviewModel::columnCount(const QModelIndex&) const {
    return 1;
}

QVariant SweepReviewModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    return isEntry(index) ? entryData(entryOf(index), role) : sectionData(sectionOf(index), role);
}

QVariant SweepReviewModel::sectionData(const SweepReview::Section& section, int role) const {
    switch (role) {
    case Qt::DisplayRole:
        return words(rawValue(section.category));
    case Qt::AccessibleTextRole:
        return spoken(words(rawValue(section.category)), words(Formatting::byteCount(section.tickedBytes)),
                      section.category);
    case kSizeRole:
        return words(Formatting::byteCount(section.tickedBytes));
    case kSymbolRole:
        return words(symbol(section.category));
    case kCategoryRole:
        return static_cast<int>(section.category);
    default:
        return {};
    }
}

QVariant SweepReviewModel::entryData(std::size_t entry, int role) const {
    const SweepEntry& row = m_review.entries()[entry];
    switch (role) {
    case Qt::DisplayRole:
        return shownName(row.title);
    case Qt::CheckStateRole:
        return static_cast<int>(m_review.isTicked(entry) ? Qt::Checked : Qt::Unchecked);
    case Qt::AccessibleTextRole:
        return spoken(shownName(row.title), words(Formatting::byteCount(row.bytes)), row.category);
    case Qt::AccessibleDescriptionRole:
    case kSubtitleRole:
        return shownName(row.subtitle);
    case kSizeRole:
        return words(Formatting::byteCount(row.bytes));
    case kCategoryRole:
        return static_cast<int>(row.category);
    default:
        return {};
    }
}

bool SweepReviewModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role != Qt::CheckStateRole || !checkIndex(index, CheckIndexOption::IndexIsValid) || !isEntry(index)) {
        return false;
    }
    const auto changed = m_review.setTicked(entryOf(index), value.toInt() == Qt::Checked);
    for (const auto entry : changed) {
        const QModelIndex row = indexOfEntry(entry);
        const QModelIndex section = row.parent();
        emit dataChanged(row, row, {Qt::CheckStateRole});
        emit dataChanged(section, section, {kSizeRole, Qt::AccessibleTextRole});
    }
    if (!changed.empty()) {
        emit tickedChanged();
    }
    return true;
}

void SweepReviewModel::toggle(const QModelIndex& index) {
    const bool ticked = index.data(Qt::CheckStateRole).toInt() == Qt::Checked;
    setData(index, ticked ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
}

Qt::ItemFlags SweepReviewModel::flags(const QModelIndex& index) const {
    if (!index.isValid()) {
        return Qt::NoItemFlags;
    }
    if (!isEntry(index)) {
        return Qt::ItemIsEnabled;
    }
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable | Qt::ItemNeverHasChildren;
}

} // namespace quillane
