#include "LibraryTest.h"
#include "SweepTest.h"
#include <gmock/gmock.h>

namespace quillane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Texts = std::vector<std::string>;

UserFile copyAt(const std::string& below, Bytes bytes = 4'096, std::optional<Date> used = std::nullopt) {
    UserFile file;
    file.url = FileURL("/Users/alex/" + below);
    file.bytes = bytes;
    file.lastUsed = used;
    return file;
}

DuplicateGroup groupOf(const std::string& id, const Texts& paths, Bytes bytesEach = 1'000'000) {
    DuplicateGroup group{id, {}, bytesEach};
    for (const auto& path : paths) {
        group.files.push_back(copyAt(path));
    }
    return group;
}

Texts idsOf(const std::vector<DuplicateGroup>& groups) {
    Texts ids;
    for (const auto& group : groups) {
        ids.push_back(group.id);
    }
    return ids;
}

// Keeps every status of a load that is published.
class StatusLog final : public Observer {
  public:
    explicit StatusLog(const AppLibrary& library)
        : m_library(library) {
        const Tracking tracking(*this);
        (void)library.duplicateStatus.get();
    }
    void fieldDidChange() override { m_told.push_back(m_library.duplicateStatus->value_or("nothing")); }
    const Texts& told() const { return m_told; }

  private:
    const AppLibrary& m_library;
    Texts m_told;
};

// The load

class AppLibraryDuplicates : public LibraryTest {
  protected:
    // Two copies in the Documents folder, told by the search.
    void addCopies() {
        std::string answer;
        for (const auto* name : {"a.txt", "b.txt"}) {
            disk.file("Users/alex/Documents/" + std::string(name), "same");
            answer += "/Users/alex/Documents/" + std::string(name) + "   kMDItemFSSize = 1000000\n";
        }
        answerSearch(answer);
    }
    void answerSearch(const std::string& answer) {
        commands.answer("/usr/bin/mdfind",
                        {"-onlyin", "/Users/alex/Documents", "-attr", "kMDItemFSSize",
                         "kMDItemFSSize >= 1000000 && kMDItemContentType != 'public.folder'"},
                        answer);
    }
};

TEST_F(AppLibraryDuplicates, ALoadBringsTheGroupsAndItsBadge) {
    addCopies();
    EXPECT_EQ(library->badge(LibrarySection::duplicates), 0);
    library->loadDuplicates();
    EXPECT_TRUE(*library->isLoadingDuplicates) << "at once";
    runner.runAll();
    EXPECT_FALSE(*library->isLoadingDuplicates);
    ASSERT_EQ(library->duplicates->size(), 1U);
    EXPECT_EQ(library->duplicates->front().count(), 2U);
    EXPECT_EQ(library->badge(LibrarySection::duplicates), 1);
    EXPECT_EQ(library->totalWastedBytes(), 1'000'000);
}

TEST_F(AppLibraryDuplicates, AScanDoesNotLookForCopies) {
    addCopies();
    scan();
    EXPECT_THAT(*library->duplicates, IsEmpty());
}

TEST_F(AppLibraryDuplicates, TheWordsOfTheStagesAreToldAndTakenBack) {
    addCopies();
    const StatusLog log(*library);
    library->loadDuplicates();
    EXPECT_EQ(*library->duplicateStatus, std::nullopt);
    runner.runAll();
    EXPECT_THAT(log.told(), ElementsAre("Listing files", "Comparing 2 files", "nothing"));
}

TEST_F(AppLibraryDuplicates, TheLoadRunsWhereTheUserWaitsForIt) {
    library->loadDuplicates();
    runner.settle();
    EXPECT_EQ(runner.waitingPriority(0), Priority::userInitiated);
}

TEST_F(AppLibraryDuplicates, AResultStaysUntilTheNextLoadIsDone) {
    addCopies();
    library->loadDuplicates();
    runner.runAll();
    answerSearch("");
    library->loadDuplicates();
    runner.settle();
    EXPECT_EQ(library->duplicates->size(), 1U);
    runner.runAll();
    EXPECT_THAT(*library->duplicates, IsEmpty());
}

TEST_F(AppLibraryDuplicates, OnlyTheLastOfTwoLoadsStoresAndTheFirstReadsNothing) {
    addCopies();
    library->loadDuplicates();
    runner.settle();
    library->loadDuplicates();
    runner.settle();
    ASSERT_EQ(runner.waitingJobs(), 2U);
    runner.runJob();
    runner.settle();
    EXPECT_THAT(commands.calls(), IsEmpty()) << "the first was told to stop";
    EXPECT_THAT(*library->duplicates, IsEmpty());
    EXPECT_TRUE(*library->isLoadingDuplicates);
    EXPECT_EQ(*library->duplicateStatus, std::nullopt) << "words of a replaced load";
    runner.runAll();
    EXPECT_EQ(library->duplicates->size(), 1U);
    EXPECT_FALSE(*library->isLoadingDuplicates);
}

TEST_F(AppLibraryDuplicates, ALoadThatOutlivesTheLibraryTellsNobody) {
    addCopies();
    library->loadDuplicates();
    runner.settle();
    library.reset();
    runner.runAll();
    EXPECT_EQ(runner.waitingJobs(), 0U);
}

// Showing

TEST_F(AppLibraryDuplicates, TheSearchLetsAGroupThroughByThePathOfAnyFile) {
    library->duplicates = std::vector{groupOf("1", {"Documents/Tax.pdf", "Desktop/copy.pdf"}),
                                      groupOf("2", {"Music/a.mp3", "Music/b.mp3"}),
                                      groupOf("3", {"Movies/x.mov", "Desktop/y.mov"})};
    EXPECT_THAT(idsOf(library->visibleDuplicates()), ElementsAre("1", "2", "3"));
    library->searchText = std::string("DESKTOP");
    EXPECT_THAT(idsOf(library->visibleDuplicates()), ElementsAre("1", "3"));
    library->searchText = std::string("tax");
    EXPECT_THAT(idsOf(library->visibleDuplicates()), ElementsAre("1"));
    library->searchText = std::string("nowhere");
    EXPECT_THAT(library->visibleDuplicates(), IsEmpty());
    EXPECT_EQ(library->totalWastedBytes(), 3'000'000) << "whatever the search says";
}

// Removing

TEST_F(AppLibraryDuplicates, AllCopiesButTheSuggestedOneAreRows) {
    auto group = groupOf("1", {});
    group.files = {copyAt("Documents/deep/first.pdf", 5), copyAt("Desktop/b.pdf", 7),
                   copyAt("Documents/c.pdf", 9)};
    const auto removal = library->removalForDuplicates({group}, {});
    EXPECT_EQ(removal.label, "Remove copies of first.pdf");
    EXPECT_THAT(removal.initiallyExcluded, IsEmpty());
    EXPECT_THAT(removal.entries,
                ElementsAre(SweepEntry{copyAt("Documents/deep/first.pdf").url, SweepCategory::files,
                                       "first.pdf", "~/Documents/deep", 5},
                            SweepEntry{copyAt("Documents/c.pdf").url, SweepCategory::files, "c.pdf",
                                       "~/Documents", 9}));
}

TEST_F(AppLibraryDuplicates, TheCopyThatWasChosenStays) {
    const auto removal = library->removalForDuplicates({groupOf("1", {"a", "bb"}), groupOf("2", {"c", "dd"})},
                                                       {{"1", copyAt("bb").url}});
    ASSERT_EQ(removal.entries.size(), 2U);
    EXPECT_EQ(removal.entries[0].url, copyAt("a").url);
    EXPECT_EQ(removal.entries[1].url, copyAt("dd").url);
    EXPECT_EQ(removal.label, "Remove copies in 2 groups");
}

TEST_F(AppLibraryDuplicates, AChosenCopyThatIsNoneOfTheGroupDoesNotLetAllOfThemGo) {
    const auto removal =
        library->removalForDuplicates({groupOf("1", {"a", "bb"})}, {{"1", copyAt("elsewhere").url}});
    ASSERT_EQ(removal.entries.size(), 1U);
    EXPECT_EQ(removal.entries[0].url, copyAt("bb").url);
}

TEST_F(AppLibraryDuplicates, WhatIsProtectedIsNoRow) {
    library->setProtected(copyAt("bb").url, true);
    const auto removal = library->removalForDuplicates({groupOf("1", {"a", "bb", "ccc"})}, {});
    ASSERT_EQ(removal.entries.size(), 1U);
    EXPECT_EQ(removal.entries[0].url, copyAt("ccc").url);
}

TEST_F(AppLibraryDuplicates, TheLabelCountsTheGroupsThatWereAskedFor) {
    EXPECT_EQ(library->removalForDuplicates({}, {}).label, "Remove copies in 0 groups");
    EXPECT_EQ(library->removalForDuplicates({groupOf("1", {})}, {}).label, "Remove copies of ");
    EXPECT_THAT(library->removalForDuplicates({groupOf("1", {})}, {}).entries, IsEmpty());
}

// Forgetting

class AppLibraryForgottenCopies : public SweepTest {};

TEST_F(AppLibraryForgottenCopies, AGroupFallsToTwoOrDisappearsAsItsCopiesGo) {
    for (const auto* name : {"a1", "a2", "a3", "b1", "b2", "c1", "c2"}) {
        file("Documents/" + std::string(name));
    }
    library->duplicates = std::vector{groupOf("a", {"Documents/a1", "Documents/a2", "Documents/a3"}),
                                      groupOf("b", {"Documents/b1", "Documents/b2"}),
                                      groupOf("c", {"Documents/c1", "Documents/c2"})};
    static_cast<void>(sweep({entry(home("Documents/a2"), SweepCategory::files, 1),
                             entry(home("Documents/b1"), SweepCategory::files, 1)}));
    EXPECT_EQ(*library->duplicates, (std::vector{groupOf("a", {"Documents/a1", "Documents/a3"}),
                                                 groupOf("c", {"Documents/c1", "Documents/c2"})}));
}

TEST_F(AppLibraryForgottenCopies, NobodyIsToldWhenNoCopyGoes) {
    file("Documents/other");
    library->duplicates = std::vector{groupOf("a", {"Documents/a1", "Documents/a2"})};
    DevCacheItem item;
    item.url = home("Documents/other");
    library->developerCaches = std::vector{item};
    ChangeCounter counter([&] { static_cast<void>(library->duplicates.get()); });
    static_cast<void>(sweep({entry(home("Documents/other"), SweepCategory::files, 1)}));
    EXPECT_THAT(*library->developerCaches, IsEmpty());
    EXPECT_EQ(counter.changes, 0);
}

TEST_F(AppLibraryDuplicates, CopiesThatALoadFindsInTheMiddleOfASweepAreForgotten) {
    addCopies();
    disk.file("Users/alex/Documents/other");
    library->loadDuplicates();
    runner.settle();
    library->tasks().start([&](StopToken) -> Task<> {
        std::vector<SweepEntry> rows;
        for (const auto* name : {"Documents/other", "Documents/a.txt"}) {
            rows.push_back({copyAt(name).url, SweepCategory::files, name, "", 1});
        }
        static_cast<void>(co_await library->runSweep(std::move(rows), "Remove"));
    });
    runner.settle();
    while (*library->sweepProcessed < 1) {
        ASSERT_EQ(runner.waitingJobs(), 2U);
        runner.runJob(1); // the search waits
        runner.settle();
    }
    runner.runJob();
    runner.settle();
    ASSERT_EQ(library->duplicates->size(), 1U);
    runner.runAll();
    EXPECT_THAT(*library->duplicates, IsEmpty());
}

} // namespace
} // namespace quillane
