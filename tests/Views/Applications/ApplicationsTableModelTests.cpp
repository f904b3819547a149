#include "AppRecords.h"
#include "Applications/ApplicationsTableModel.h"
#include "Components/Tint.h"
#include "ManualClock.h"
#include "Tables/TableRole.h"
#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <gtest/gtest.h>
#include <random>

using namespace quillane;

namespace {

class ApplicationsTableModelTest : public testing::Test {
  protected:
    using Column = ApplicationsTableModel::Column;

    QVariant at(int row, Column column, int role = Qt::DisplayRole) const {
        return model.index(row, column).data(role);
    }
    Tint tint(int row, Column column) const { return static_cast<Tint>(at(row, column, kTintRole).toInt()); }

    void show(const std::vector<InstalledApp>& apps, bool areProtected = false) {
        std::vector<AppRecord> records;
        for (const auto& app : apps) {
            records.push_back({&app, areProtected});
        }
        model.updateFrom(std::move(records));
    }

    StepTaskRunner runner;
    ManualClock clock{runner};
    ApplicationsTableModel model{clock};
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
    QSignalSpy resets{&model, &QAbstractItemModel::modelReset};
    QSignalSpy inserted{&model, &QAbstractItemModel::rowsInserted};
    QSignalSpy removed{&model, &QAbstractItemModel::rowsRemoved};
    QSignalSpy moved{&model, &QAbstractItemModel::rowsMoved};
    QSignalSpy changed{&model, &QAbstractItemModel::dataChanged};
    QSignalSpy reordered{&model, &QAbstractItemModel::layoutChanged};
};

Date daysBefore(Date now, int days) {
    return now.addingSeconds(-86'400.0 * days);
}

} // namespace

TEST_F(ApplicationsTableModelTest, TheColumnsStandInTheirOrder) {
    QStringList titles;
    for (int column = 0; column < model.columnCount(); ++column) {
        titles << model.headerData(column, Qt::Horizontal).toString();
    }
    EXPECT_EQ(titles, QStringList({"Name", "Size", "Last Used", "Architecture", "Version"}));
}

TEST_F(ApplicationsTableModelTest, AStoreApplicationCarriesABagWithItsHelp) {
    auto bought = measuredApp("Bought", 1);
    bought.isMacAppStore = true;
    show({bought, measuredApp("Loaded", 1)});
    EXPECT_EQ(at(0, Column::kName, kTrailingSymbolRole), QStringLiteral("bag.fill"));
    EXPECT_EQ(at(0, Column::kName, kTrailingHelpRole), QStringLiteral("Installed from the Mac App Store"));
    EXPECT_FALSE(at(1, Column::kName, kTrailingSymbolRole).isValid());
}

TEST_F(ApplicationsTableModelTest, ANameThatWouldDeceiveTheEyeIsShownAsItIs) {
    auto app = measuredApp("x", 1);
    app.name = "photo\u202Egpj";
    app.version = "1\n2";
    show({app});
    EXPECT_EQ(at(0, Column::kName).toString(), QStringLiteral("photo‹U+202E›gpj"));
    EXPECT_EQ(at(0, Column::kVersion).toString(), QStringLiteral("1‹U+000A›2"));
}

TEST_F(ApplicationsTableModelTest, WhatHasNoNameIsReadByThatOfItsBundle) {
    auto nameless = measuredApp("Alder", 1);
    nameless.name.clear();
    show({nameless, measuredApp("Birch", 1)});
    EXPECT_EQ(at(0, Column::kName, Qt::AccessibleTextRole).toString(), "Alder.app");
    EXPECT_EQ(at(1, Column::kName, Qt::AccessibleTextRole).toString(), "Birch");
}

TEST_F(ApplicationsTableModelTest, AnUnmeasuredSizeIsASpinner) {
    show({unmeasuredApp("Waiting"), measuredApp("Done", 2'000'000)});
    EXPECT_TRUE(at(0, Column::kSize, kBusyRole).toBool());
    EXPECT_EQ(at(0, Column::kSize).toString(), QString());
    EXPECT_FALSE(at(1, Column::kSize, kBusyRole).toBool());
    EXPECT_EQ(at(1, Column::kSize).toString(), QStringLiteral("2 MB"));
}

TEST_F(ApplicationsTableModelTest, ExactlyOneGigabyteIsSecondaryAndOneByteMoreIsPrimary) {
    show({measuredApp("Even", 1'000'000'000), measuredApp("More", 1'000'000'001)});
    EXPECT_EQ(tint(0, Column::kSize), Tint::Secondary);
    EXPECT_EQ(tint(1, Column::kSize), Tint::Text);
}

TEST_F(ApplicationsTableModelTest, ALastUseIsOrangeFromDay181OnAndWhenMissing) {
    auto recent = measuredApp("Recent", 1);
    recent.lastUsed = daysBefore(clock.now(), 180);
    auto old = measuredApp("Old", 1);
    old.lastUsed = daysBefore(clock.now(), 181);
    show({recent, old, measuredApp("Unused", 1)});
    EXPECT_EQ(tint(0, Column::kLastUsed), Tint::Text);
    EXPECT_EQ(tint(1, Column::kLastUsed), Tint::Orange);
    EXPECT_EQ(tint(2, Column::kLastUsed), Tint::Orange);
    EXPECT_EQ(at(2, Column::kLastUsed).toString(), QStringLiteral("Never"));
}

TEST_F(ApplicationsTableModelTest, EveryArchitectureHasItsWordSymbolAndColour) {
    struct Case {
        Architecture architecture;
        const char* words;
        const char* symbol;
        Tint tint;
    };
    for (const auto& expected : {
             Case{Architecture::universal, "Universal", "checkmark.seal", Tint::Secondary},
             Case{Architecture::appleSilicon, "Apple Silicon", "cpu", Tint::Secondary},
             Case{Architecture::intel, "Intel", "arrow.triangle.2.circlepath", Tint::Orange},
             Case{Architecture::intel32, "32-bit Intel", "exclamationmark.triangle", Tint::Red},
             Case{Architecture::powerPC, "PowerPC", "exclamationmark.triangle", Tint::Red},
             Case{Architecture::unknown, "Unknown", "questionmark.circle", Tint::Secondary},
         }) {
        auto app = measuredApp("App", 1);
        app.architecture = expected.architecture;
        show({app});
        EXPECT_EQ(at(0, Column::kArchitecture).toString(), QString(expected.words));
        EXPECT_EQ(at(0, Column::kArchitecture, kSymbolRole).toString(), QString(expected.symbol));
        EXPECT_EQ(tint(0, Column::kArchitecture), expected.tint);
    }
}

TEST_F(ApplicationsTableModelTest, AMeasuredApplicationChangesItsOwnRowAlone) {
    show({unmeasuredApp("A"), unmeasuredApp("B"), unmeasuredApp("C")});
    changed.clear();
    show({unmeasuredApp("A"), measuredApp("B", 0), unmeasuredApp("C")});
    ASSERT_EQ(changed.size(), 1);
    EXPECT_EQ(changed[0][0].toModelIndex().row(), 1);
    EXPECT_EQ(changed[0][1].toModelIndex().row(), 1);
}

TEST_F(ApplicationsTableModelTest, AChangeThatNoColumnShowsPublishesNothing) {
    auto app = measuredApp("A", 5);
    show({app});
    changed.clear();
    app.minimumSystemVersion = "13.0";
    show({app});
    EXPECT_TRUE(changed.isEmpty());
}

TEST_F(ApplicationsTableModelTest, ARowThatRisesIsMovedAndKeepsItsPersistentIndex) {
    show({measuredApp("A", 3), measuredApp("B", 2), measuredApp("C", 1)});
    const QPersistentModelIndex c = model.index(2, 0);
    show({measuredApp("C", 9), measuredApp("A", 3), measuredApp("B", 2)});
    EXPECT_EQ(moved.size(), 1);
    EXPECT_EQ(c.row(), 0);
    EXPECT_TRUE(inserted.size() == 1 && removed.isEmpty());
}

TEST_F(ApplicationsTableModelTest, AnotherOrderOfManyRowsKeepsPersistentIndexesAndIsNoReset) {
    std::vector<InstalledApp> apps;
    for (int i = 0; i < 200; ++i) {
        apps.push_back(measuredApp("App " + std::to_string(i), i));
    }
    show(apps);
    const QPersistentModelIndex seventh = model.index(7, Column::kSize);
    std::ranges::reverse(apps);
    show(apps);
    EXPECT_EQ(reordered.size(), 1);
    EXPECT_EQ(seventh.row(), 192);
    EXPECT_EQ(seventh.column(), Column::kSize);
    EXPECT_TRUE(resets.isEmpty());
}

TEST_F(ApplicationsTableModelTest, TwoRecordsOfOneLocationAreOneRow) {
    show({measuredApp("A", 3), measuredApp("A", 4), measuredApp("B", 2)});
    EXPECT_EQ(model.rowCount(), 2);
    EXPECT_EQ(model.row(0).totalBytes, 3);
}

TEST_F(ApplicationsTableModelTest, NoSequenceOfListsEverResetsOrConfusesTheModel) {
    std::mt19937 random(7);
    for (int round = 0; round < 60; ++round) {
        std::vector<InstalledApp> apps;
        for (int i = 0; i < 60; ++i) {
            if (random() % 3 != 0) {
                apps.push_back(measuredApp("App " + std::to_string(i), static_cast<Bytes>(random() % 5)));
            }
        }
        std::shuffle(apps.begin(), apps.end(), random);
        show(apps);
        ASSERT_EQ(model.rowCount(), static_cast<int>(apps.size()));
        for (int row = 0; row < model.rowCount(); ++row) {
            ASSERT_EQ(at(row, Column::kName).toString().toStdString(),
                      apps[static_cast<std::size_t>(row)].name);
            ASSERT_EQ(model.rowOf(apps[static_cast<std::size_t>(row)].url), row);
        }
    }
    EXPECT_TRUE(resets.isEmpty());
}
