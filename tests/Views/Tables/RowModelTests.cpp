#include "Tables/RowModel.h"
#include <QAbstractItemModelTester>
#include <QPersistentModelIndex>
#include <QSignalSpy>
#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace quillane {
namespace {

struct Entry {
    std::string name;
    int figure = 0;
    friend bool operator==(const Entry&, const Entry&) = default;
};

class EntryModel : public RowModel<Entry, std::string> {
  public:
    EntryModel()
        : RowModel(nullptr) {}
    int columnCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : 2; }
    QVariant data(const QModelIndex& index, int role) const override {
        if (!index.isValid() || role != Qt::DisplayRole) {
            return {};
        }
        const Entry& entry = row(index.row());
        return index.column() == 0 ? QVariant(QString::fromStdString(entry.name)) : QVariant(entry.figure);
    }

  protected:
    const std::string& key(const Entry& entry) const override { return entry.name; }
};

// A copy of a model's rows that learns of changes through its notifications alone.
class Follower : public QObject {
  public:
    explicit Follower(const EntryModel& model)
        : m_model(model) {
        connect(&model, &QAbstractItemModel::rowsRemoved, this,
                [this](const QModelIndex&, int first, int last) {
                    m_rows.erase(m_rows.begin() + first, m_rows.begin() + last + 1);
                });
        connect(&model, &QAbstractItemModel::rowsInserted, this,
                [this](const QModelIndex&, int first, int last) {
                    for (int row = first; row <= last; ++row) {
                        m_rows.insert(m_rows.begin() + row, m_model.row(row));
                    }
                });
        connect(&model, &QAbstractItemModel::rowsMoved, this,
                [this](const QModelIndex&, int first, int last, const QModelIndex&, int before) {
                    const auto at = [this](int row) { return m_rows.begin() + row; };
                    if (before < first) {
                        std::rotate(at(before), at(first), at(last + 1));
                    } else {
                        std::rotate(at(first), at(last + 1), at(before));
                    }
                });
        connect(&model, &QAbstractItemModel::layoutChanged, this, [this] { readAll(); });
        connect(&model, &QAbstractItemModel::dataChanged, this,
                [this](const QModelIndex& first, const QModelIndex& last) {
                    for (int row = first.row(); row <= last.row(); ++row) {
                        m_rows[static_cast<std::size_t>(row)] = m_model.row(row);
                    }
                });
    }
    const std::vector<Entry>& rows() const { return m_rows; }

  private:
    void readAll() {
        m_rows.clear();
        for (int row = 0; row < m_model.rowCount(); ++row) {
            m_rows.push_back(m_model.row(row));
        }
    }

    const EntryModel& m_model;
    std::vector<Entry> m_rows;
};

class RowModelTest : public testing::Test {
  protected:
    static std::vector<Entry> entries(int count) {
        std::vector<Entry> all;
        for (int i = 0; i < count; ++i) {
            all.push_back({std::to_string(i), i});
        }
        return all;
    }
    // Every other one.
    static std::vector<Entry> half(const std::vector<Entry>& all) {
        std::vector<Entry> kept;
        for (std::size_t i = 0; i < all.size(); i += 2) {
            kept.push_back(all[i]);
        }
        return kept;
    }
    std::vector<Entry> shown() const {
        std::vector<Entry> all;
        for (int row = 0; row < model.rowCount(); ++row) {
            all.push_back(model.row(row));
        }
        return all;
    }

    EntryModel model;
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
    Follower follower{model};
    QSignalSpy resets{&model, &QAbstractItemModel::modelReset};
    QSignalSpy inserted{&model, &QAbstractItemModel::rowsInserted};
    QSignalSpy removed{&model, &QAbstractItemModel::rowsRemoved};
    QSignalSpy reordered{&model, &QAbstractItemModel::layoutChanged};
};

} // namespace

TEST_F(RowModelTest, RowsThatGoFromAllOverTheListGoAtOnce) {
    const auto all = entries(200);
    model.update(all);
    model.update(half(all));
    EXPECT_EQ(shown(), half(all));
    EXPECT_EQ(removed.size(), 1);
    EXPECT_EQ(reordered.size(), 1);
}

TEST_F(RowModelTest, RowsThatComeAllOverTheListComeAtOnce) {
    const auto all = entries(200);
    model.update(half(all));
    inserted.clear();
    model.update(all);
    EXPECT_EQ(shown(), all);
    EXPECT_EQ(inserted.size(), 1);
    EXPECT_EQ(reordered.size(), 1);
}

TEST_F(RowModelTest, AFewRowsGoEachByItselfAndNothingElseIsTold) {
    auto all = entries(200);
    model.update(all);
    all.erase(all.begin() + 100);
    all.erase(all.begin() + 3);
    model.update(all);
    ASSERT_EQ(removed.size(), 2);
    EXPECT_EQ(removed[0][1].toInt(), 100);
    EXPECT_EQ(removed[1][1].toInt(), 3);
    EXPECT_TRUE(reordered.isEmpty());
}

TEST_F(RowModelTest, WhoeverHoldsARowHoldsItWhenOthersGoAndComeAllOverTheList) {
    const auto all = entries(200);
    model.update(all);
    const QPersistentModelIndex held = model.index(100, 1);
    const QPersistentModelIndex lost = model.index(101, 1);
    model.update(half(all));
    EXPECT_EQ(held.row(), 50);
    EXPECT_EQ(held.column(), 1);
    EXPECT_FALSE(lost.isValid());
    model.update(all);
    EXPECT_EQ(held.row(), 100);
}

TEST_F(RowModelTest, RandomListsAreToldAsTheyAreWhicheverWayIsTaken) {
    std::mt19937 random(11);
    auto all = entries(150);
    for (int round = 0; round < 80; ++round) {
        if (round % 5 == 0) {
            std::shuffle(all.begin(), all.end(), random);
        }
        std::swap(all[random() % all.size()], all[random() % all.size()]);
        const auto share = random() % 4; // none of them goes, or one in four, two or three
        std::vector<Entry> next;
        for (auto& entry : all) {
            if (random() % 4 >= share) {
                entry.figure += random() % 20 == 0 ? 1 : 0;
                next.push_back(entry);
            }
        }
        std::vector<std::pair<QPersistentModelIndex, std::string>> held;
        for (int row = 0; row < model.rowCount(); ++row) {
            held.emplace_back(model.index(row, 1), model.keyAt(row));
        }
        model.update(next);
        for (const auto& [index, name] : held) {
            ASSERT_EQ(index.isValid(), model.rowOf(name).has_value());
            ASSERT_TRUE(!index.isValid() || model.keyAt(index.row()) == name);
        }
        ASSERT_EQ(shown(), next);
        ASSERT_EQ(follower.rows(), next);
        for (const auto& entry : all) {
            const auto at = std::ranges::find(next, entry.name, &Entry::name);
            ASSERT_EQ(model.rowOf(entry.name).value_or(kGone),
                      at == next.end() ? kGone : static_cast<int>(at - next.begin()));
        }
    }
    EXPECT_TRUE(resets.isEmpty());
    EXPECT_FALSE(reordered.isEmpty() || inserted.isEmpty() || removed.isEmpty());
}

} // namespace quillane
