#pragma once
#include "SweepReview.h"
#include <QAbstractItemModel>

namespace quillane {

// A SweepReview as a tree of one column: categories over their checkable rows. Ticking a row costs the same
// however many there are.
class SweepReviewModel : public QAbstractItemModel {
    Q_OBJECT
  public:
    enum Role : int {
        kSubtitleRole = Qt::UserRole + 1, // QString, of rows
        kSizeRole,                        // QString: of a row, or of the ticked rows of a category
        kSymbolRole,                      // QString, of categories
        kCategoryRole,                    // int(SweepCategory)
    };

    explicit SweepReviewModel(SweepReview review, QObject* parent = nullptr);

    const SweepReview& review() const { return m_review; }
    // Whether the index is a row that can be ticked, not a category.
    static bool isEntry(const QModelIndex& index);
    QModelIndex indexOfEntry(std::size_t entry) const;
    void toggle(const QModelIndex& index);

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

  signals:
    // After every change of a tick: counts and sums of the review are different.
    void tickedChanged();

  private:
    const SweepReview::Section& sectionOf(const QModelIndex& index) const;
    std::size_t entryOf(const QModelIndex& index) const;
    QVariant sectionData(const SweepReview::Section& section, int role) const;
    QVariant entryData(std::size_t entry, int role) const;

    SweepReview m_review;
};

} // namespace quillane
