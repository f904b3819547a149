#include "BulkAnswer.h"
#include "BulkEntries.h"
#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <ostream>
#include <tuple>

namespace quillane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// An entry as it was told, with a copy of its name.
struct Told {
    std::string name;
    std::optional<EntryType> type = std::nullopt;
    std::optional<Bytes> allocated = std::nullopt;
    bool isFlaggedHidden = false;
    bool isMarkedAsPackage = false;
    friend bool operator==(const Told&, const Told&) = default;
    friend void PrintTo(const Told& told, std::ostream* out) {
        *out << told.name << " (type " << (told.type ? static_cast<int>(*told.type) : -1) << ", allocated "
             << told.allocated.value_or(-1) << ", hidden " << told.isFlaggedHidden << ", package "
             << told.isMarkedAsPackage << ")";
    }
};

// From a block of memory that ends where the answer does, so that a look behind it is a fault.
std::vector<Told> toldOf(std::vector<std::byte> bytes, std::size_t count, std::size_t skipped = 0) {
    bytes.shrink_to_fit();
    BulkEntries entries(bytes, count);
    entries.skip(skipped);
    std::vector<Told> told;
    RawEntry entry;
    while (entries.next(entry)) {
        EXPECT_EQ(std::char_traits<char>::length(entry.name), entry.length);
        told.push_back({{entry.name, entry.length},
                        entry.type,
                        entry.allocated,
                        entry.isFlaggedHidden,
                        entry.isMarkedAsPackage});
    }
    return told;
}

std::vector<Told> toldOf(const BulkAnswer& answer) {
    return toldOf(answer.bytes(), answer.count());
}

std::vector<std::string> namesIn(const BulkAnswer& answer) {
    std::vector<std::string> names;
    for (const auto& told : toldOf(answer)) {
        names.push_back(told.name);
    }
    return names;
}

BulkAnswer::Entry file(const std::string& name) {
    return {.name = name, .type = BulkAnswer::kRegular, .finderFlags = 0, .flags = 0, .allocated = 4096};
}

BulkAnswer::Entry folder(const std::string& name) {
    return {.name = name, .type = BulkAnswer::kFolder, .finderFlags = 0, .flags = 0, .mountStatus = 0};
}

TEST(BulkEntries, AnAnswerTellsNamesTypesSizesAndMarks) {
    auto hidden = folder("Library");
    hidden.flags = BulkAnswer::kHidden;
    auto invisible = file("Icon\r");
    invisible.finderFlags = BulkAnswer::kInvisible;
    auto package = folder("Notes");
    package.finderFlags = BulkAnswer::kBundle;
    EXPECT_THAT(toldOf({file("a"), hidden, invisible, package, {.name = "link", .type = BulkAnswer::kLink}}),
                ElementsAre(Told{"a", EntryType::regular, 4096},
                            Told{.name = "Library", .type = EntryType::directory, .isFlaggedHidden = true},
                            Told{"Icon\r", EntryType::regular, 4096, true},
                            Told{.name = "Notes", .type = EntryType::directory, .isMarkedAsPackage = true},
                            Told{"link", EntryType::symbolicLink}));
}

TEST(BulkEntries, EveryTypeOfTheSystemIsOneOfOurs) {
    const std::vector<std::optional<EntryType>> types = {
        std::nullopt,     EntryType::regular, EntryType::directory,
        EntryType::other, EntryType::other,   EntryType::symbolicLink,
        EntryType::other, EntryType::other,   std::nullopt, // what is bad
        std::nullopt};
    for (std::uint32_t type = 0; type < types.size(); ++type) {
        EXPECT_THAT(toldOf({{.name = "x", .type = type}}), ElementsAre(Told{"x", types[type]})) << type;
    }
}

TEST(BulkEntries, WhatIsNotReturnedTakesNoRoom) {
    for (unsigned subset = 0; subset < 32; ++subset) {
        BulkAnswer::Entry entry{.name = "name"};
        Told told{"name"};
        if ((subset & 1U) != 0) {
            entry.type = BulkAnswer::kRegular;
            told.type = EntryType::regular;
        }
        if ((subset & 2U) != 0) {
            entry.finderFlags = BulkAnswer::kInvisible;
            told.isFlaggedHidden = true;
        }
        if ((subset & 4U) != 0) {
            entry.flags = BulkAnswer::kHidden;
            told.isFlaggedHidden = true;
        }
        if ((subset & 8U) != 0) {
            entry.mountStatus = 0;
        }
        if ((subset & 16U) != 0) {
            entry.allocated = 8192;
            told.allocated = told.type ? std::optional<Bytes>(8192) : std::nullopt;
        }
        EXPECT_THAT(toldOf({entry, file("next")}), ElementsAre(told, Told{"next", EntryType::regular, 4096}))
            << subset;
    }
}

TEST(BulkEntries, AnEntryWithAnErrorHasANameAlone) {
    auto refused = file("refused");
    refused.error = 1;
    auto fine = file("fine");
    fine.error = 0;
    EXPECT_THAT(toldOf({{.name = "lost", .error = 5}, refused, fine}),
                ElementsAre(Told{"lost"}, Told{"refused"}, Told{"fine", EntryType::regular, 4096}));
}

TEST(BulkEntries, WhatIsCoveredTellsNothingOfWhatLiesBehind) {
    auto mountPoint = folder("Volume");
    mountPoint.mountStatus = 1;
    mountPoint.flags = BulkAnswer::kHidden;
    auto firmlink = folder("Users");
    firmlink.flags = BulkAnswer::kFirmlink;
    firmlink.finderFlags = BulkAnswer::kBundle;
    auto trigger = folder("net");
    trigger.mountStatus = 2; // something would be mounted there, and is not
    EXPECT_THAT(toldOf({mountPoint, firmlink, trigger}),
                ElementsAre(Told{"Volume"}, Told{"Users"}, Told{"net", EntryType::directory}));
}

TEST(BulkEntries, AnEntryWithAnAttributeThatNobodyAskedForHasANameAlone) {
    for (std::size_t group = 0; group < 5; ++group) {
        BulkAnswer answer{file("odd"), file("next")};
        answer.overwrite(0, BulkAnswer::kReturned + group, group == 0 ? 0x8004000B : 0x10); // with the device
        EXPECT_THAT(toldOf(answer), ElementsAre(Told{"odd"}, Told{"next", EntryType::regular, 4096}))
            << group;
    }
}

TEST(BulkEntries, OnlyFilesHaveSizesAndOnlyFoldersAreMarkedAsPackages) {
    auto link = file("link");
    link.type = BulkAnswer::kLink;
    link.finderFlags = BulkAnswer::kBundle;
    auto negative = file("negative");
    negative.allocated = -1;
    auto large = file("large");
    large.allocated = std::int64_t{1} << 40U;
    EXPECT_THAT(toldOf({link, negative, large}),
                ElementsAre(Told{"link", EntryType::symbolicLink}, Told{"negative", EntryType::regular},
                            Told{"large", EntryType::regular, Bytes{1} << 40U}));
}

TEST(BulkEntries, TheFolderItselfIsLeftOutAndWhatIsNamedAlikeIsNot) {
    EXPECT_THAT(namesIn({file("."), file(".."), file("._"), file(".hidden"), file("...")}),
                ElementsAre("._", ".hidden", "..."));
}

TEST(BulkEntries, ANameThatIsNoneIsLeftOut) {
    EXPECT_THAT(namesIn({file(""), file("a/b"), file("/"), file(std::string("a\0b", 3)), file("fine")}),
                ElementsAre("fine"));
}

TEST(BulkEntries, ANameOutsideItsEntryIsLeftOut) {
    const auto entryLength = static_cast<std::uint32_t>(BulkAnswer{file("name")}.bytes().size());
    const std::vector<std::pair<std::uint32_t, std::uint32_t>> wrong = {{0x80000000U, 5},
                                                                        {0x7FFFFFFFU, 5},
                                                                        {static_cast<std::uint32_t>(-28), 5},
                                                                        {entryLength - 24, 5},
                                                                        {entryLength, 5},
                                                                        {12, 0},
                                                                        {12, 1},
                                                                        {12, 0xFFFFFFFFU},
                                                                        {12, 0x80000000U}};
    for (const auto& [offset, length] : wrong) {
        BulkAnswer answer{file("name"), file("next")};
        answer.overwrite(0, BulkAnswer::kNameOffset, offset).overwrite(0, BulkAnswer::kNameLength, length);
        EXPECT_THAT(namesIn(answer), ElementsAre("next")) << offset << ' ' << length;
    }
}

TEST(BulkEntries, ANameThatDoesNotEndIsLeftOut) {
    BulkAnswer answer{file("name"), file("next")};
    answer.overwrite(0, BulkAnswer::kNameLength, 4); // without its NUL
    EXPECT_THAT(namesIn(answer), ElementsAre("next"));
}

TEST(BulkEntries, AnEntryWithoutANameIsLeftOut) {
    BulkAnswer answer{file("name"), file("next")};
    answer.overwrite(0, BulkAnswer::kReturned, 0x80044008);
    EXPECT_THAT(namesIn(answer), ElementsAre("next"));
}

TEST(BulkEntries, AnEntryThatClaimsMoreThanItHasRoomForHasANameAlone) {
    BulkAnswer answer{{.name = "n", .type = BulkAnswer::kRegular}, file("next")};
    answer.overwrite(0, BulkAnswer::kReturned, 0x80044009); // 36 bytes that are not there
    EXPECT_THAT(toldOf(answer), ElementsAre(Told{"n"}, Told{"next", EntryType::regular, 4096}));
}

TEST(BulkEntries, AnImpossibleLengthEndsTheAnswer) {
    for (const std::uint32_t length : {0U, 1U, 3U, 10'000U, 0xFFFFFFFFU, 0x80000000U}) {
        BulkAnswer answer{file("first"), file("second"), file("third")};
        answer.overwrite(1, BulkAnswer::kLength, length);
        EXPECT_THAT(namesIn(answer), ElementsAre("first")) << length;
    }
}

TEST(BulkEntries, AnEntryTooShortForItsHeadIsLeftOut) {
    for (std::uint32_t length = 4; length < 32; length += 4) {
        BulkAnswer answer{file("name")};
        answer.overwrite(0, BulkAnswer::kLength, length);
        EXPECT_THAT(toldOf(answer.bytes(), 1), IsEmpty()) << length;
    }
}

TEST(BulkEntries, NoMoreIsToldThanWasPromisedNorThanIsThere) {
    const BulkAnswer answer{file("a"), file("b"), file("c")};
    EXPECT_EQ(toldOf(answer.bytes(), 2).size(), 2U);
    EXPECT_EQ(toldOf(answer.bytes(), 0).size(), 0U);
    EXPECT_EQ(toldOf(answer.bytes(), 4).size(), 3U);
    EXPECT_THAT(toldOf({}, 3), IsEmpty());
}

TEST(BulkEntries, OfATruncatedAnswerTheWholeEntriesAreTold) {
    const BulkAnswer answer{
        file("first"), folder("second"), {.name = "lost", .error = 5}, file("the last one")};
    const auto all = toldOf(answer);
    for (std::size_t length = 0; length < answer.bytes().size(); ++length) {
        auto bytes = answer.bytes();
        bytes.resize(length);
        std::size_t whole = 0;
        while (whole + 1 < answer.count() && answer.begin(whole + 1) <= length) {
            ++whole;
        }
        EXPECT_EQ(toldOf(bytes, answer.count()),
                  std::vector(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(whole)))
            << length;
    }
}

TEST(BulkEntries, AnAnswerMayBeginAtAnyAddress) {
    const BulkAnswer answer{file("first"), folder("second")};
    for (std::size_t shift = 0; shift < 8; ++shift) {
        std::vector<std::byte> bytes(shift);
        bytes.insert(bytes.end(), answer.bytes().begin(), answer.bytes().end());
        BulkEntries entries(std::span(bytes).subspan(shift), 2);
        RawEntry entry;
        ASSERT_TRUE(entries.next(entry));
        EXPECT_EQ(entry.allocated, 4096);
        ASSERT_TRUE(entries.next(entry));
        EXPECT_EQ(entry.allocated, std::nullopt); // and nothing of the one before
        EXPECT_FALSE(entries.next(entry));
    }
}

// Each byte of an answer takes each of some values: names stay within the answer, and what is told ends.
TEST(BulkEntries, NoByteThatIsWrongLeadsOutOfTheAnswer) {
    const BulkAnswer answer{file("first"), {.name = "lost", .error = 5}, folder("last")};
    for (std::size_t at = 0; at < answer.bytes().size(); ++at) {
        for (const int value : {0x00, 0x01, 0x04, 0x08, 0x20, 0x40, 0x7F, 0x80, 0xFF}) {
            auto bytes = answer.bytes();
            bytes[at] = static_cast<std::byte>(value);
            EXPECT_LE(toldOf(bytes, answer.count()).size(), 3U);
        }
    }
}

TEST(BulkEntries, EntriesArePassedOverWithThoseThatAreLeftOut) {
    const BulkAnswer answer{file("a"), file(""), file("b"), file("c")};
    const auto namesAfter = [&](std::size_t skipped) {
        std::string names;
        for (const auto& told : toldOf(answer.bytes(), answer.count(), skipped)) {
            names += told.name;
        }
        return names;
    };
    EXPECT_EQ(namesAfter(0), "abc");
    EXPECT_EQ(namesAfter(1), "bc");
    EXPECT_EQ(namesAfter(2), "bc");
    EXPECT_EQ(namesAfter(3), "c");
    EXPECT_EQ(namesAfter(4), "");
    EXPECT_EQ(namesAfter(9), "");
}

} // namespace
} // namespace quillane
