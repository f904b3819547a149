// The judgement that must never be wrong: whatever a name looks like, nothing of an installed vendor, nothing of
// the system's and nothing that was touched lately is called an orphan.
#include "OrphanFinder.h"
#include <version>
#ifndef _LIBCPP_VERSION // the system's rapidcheck is built with libstdc++
#include "FakeMetadata.h"
#include "FakeWorkspace.h"
#include "ForwardingFileSystem.h"
#include "ManualClock.h"
#include "PosixFileSystem.h"
#include "RemovalFakes.h"
#include "ScriptedCommandRunner.h"
#include "StepTaskRunner.h"
#include <algorithm>
#include <map>
#include <rapidcheck/gtest.h>

namespace quillane {
namespace {

using Letters = std::vector<std::string>;

constexpr double kDay = 24 * 60 * 60;
const FileURL kCaches("/Users/alex/Library/Caches");

// A volume that consists of names with dates in one location.
class NamesAlone final : public ForwardingFileSystem {
  public:
    using ForwardingFileSystem::ForwardingFileSystem;

    std::map<std::string, Date> names;

    Result<std::vector<DirectoryEntry>> list(const FileURL& folder) const override {
        std::vector<DirectoryEntry> entries;
        for (const auto& [name, date] : names) {
            if (folder == kCaches) {
                entries.push_back({name, EntryType::directory});
            }
        }
        return entries;
    }
    Result<ResourceValues> resourceValues(const FileURL& url) const override {
        ResourceValues values;
        values.type = EntryType::directory;
        values.contentModified = names.at(std::string(url.lastPathComponent()));
        return values;
    }
    Result<> walk(const FileURL&, WalkOptions, Visitor) const override { return success(); }
};

// Finds among these names, each with its age in days.
std::set<std::string> orphansAmong(const std::map<std::string, double>& daysByName,
                                   const std::set<std::string>& installed) {
    StepTaskRunner runner;
    ManualClock clock{runner};
    PosixFileSystem nothing{"/nonexistent", FileURL("/Users/alex")};
    NamesAlone files{nothing};
    ScriptedCommandRunner commands;
    FakeMetadata metadata;
    FakeWorkspace workspace;
    RemovalFakes fakes;
    const Platform platform{files,     commands,    metadata,      clock,         runner,
                            workspace, fakes.trash, fakes.running, fakes.defaults};
    for (const auto& [name, days] : daysByName) {
        files.names[name] = clock.now().addingSeconds(-days * kDay);
    }
    std::set<std::string> found;
    for (const auto& item : OrphanFinder::orphans(platform, installed)) {
        found.insert(std::string(item.url.lastPathComponent()));
    }
    return found;
}

bool isOrphan(const std::string& name, const std::set<std::string>& installed, double days = 400) {
    return !orphansAmong({{name, days}}, installed).empty();
}

std::string joined(const Letters& letters) {
    std::string text;
    for (const auto& letter : letters) {
        text += letter;
    }
    return text;
}

// Letters that change with their case and letters that don't, each with the spellings that mean the same.
const std::vector<Letters>& alphabet() {
    static const std::vector<Letters> letters = {{"a", "A"},
                                                 {"m", "M"},
                                                 {"z", "Z"},
                                                 {"0"},
                                                 {"7"},
                                                 {"-"},
                                                 {"_"},
                                                 {" "},
                                                 {"\u00E9", "\u00C9", "e\u0301", "E\u0301"},
                                                 {"\u0436", "\u0416"},
                                                 {"\u03C3", "\u03A3"},
                                                 {"\u00DF"},
                                                 {"\u6F22"},
                                                 {"\U0001F4BE"}};
    return letters;
}

// A part of an identifier, as places in the alphabet: neither empty nor with a full stop.
rc::Gen<std::vector<int>> parts() {
    return rc::gen::nonEmpty(rc::gen::resize(
        6, rc::gen::container<std::vector<int>>(rc::gen::inRange(0, static_cast<int>(alphabet().size())))));
}

// One of the spellings of a part; which of them, is drawn for each letter anew.
rc::Gen<std::string> spellings(const std::vector<int>& part) {
    return rc::gen::map(rc::gen::container<std::vector<int>>(part.size(), rc::gen::inRange(0, 12)),
                        [part](const std::vector<int>& choices) {
                            std::string text;
                            for (std::size_t i = 0; i < part.size(); ++i) {
                                const auto& letter = alphabet()[static_cast<std::size_t>(part[i])];
                                text += letter[static_cast<std::size_t>(choices[i]) % letter.size()];
                            }
                            return text;
                        });
}

rc::Gen<std::string> anySpelling() {
    return rc::gen::mapcat(parts(), spellings);
}

// Any tail of a name: dots in odd places, empty parts, accents on dots, the words of wrappers and suffixes.
rc::Gen<std::string> tails() {
    const auto piece =
        rc::gen::elementOf(Letters{".", "..", ".tool", ".Helper", ".group", ".plist", ".apple", "com", " ",
                                   "\u0301", "\u200D", "ABCDE12345.", ".app", "\xff", "-beta"});
    return rc::gen::map(rc::gen::resize(6, rc::gen::container<Letters>(piece)), joined);
}

// What the system puts around an identifier: at most as much as is taken off again.
rc::Gen<std::string> wrappers() {
    const auto wrapper =
        rc::gen::elementOf(Letters{"ABCDE12345.", "0123456789.", "QQQQQQQQQQ.", "group.", "groups."});
    return rc::gen::map(rc::gen::resize(3, rc::gen::container<Letters>(wrapper)), [](Letters chosen) {
        chosen.resize(std::min<std::size_t>(chosen.size(), 3));
        return joined(chosen);
    });
}

rc::Gen<std::string> suffixes() {
    return rc::gen::elementOf(Letters{"", "", ".plist", ".savedState", ".binarycookies"});
}

// More installed applications, that make no difference.
rc::Gen<std::set<std::string>> otherApplications() {
    const auto identifier = rc::gen::map(rc::gen::pair(anySpelling(), anySpelling()), [](const auto& two) {
        return "net." + two.first + "." + two.second;
    });
    return rc::gen::resize(4, rc::gen::container<std::set<std::string>>(identifier));
}

// Not what would change the part before it.
bool beginsWithoutAnAccent(const std::string& tail) {
    return !tail.starts_with("\u0301") && !tail.starts_with("\u200D");
}

RC_GTEST_PROP(OrphanJudgement, NothingOfAnInstalledVendorIsEverReported, ()) {
    const auto first = *parts();
    const auto second = *parts();
    auto installed = *otherApplications();
    installed.insert(*spellings(first) + "." + *spellings(second) +
                     *rc::gen::element<std::string>("", ".app", ".a.b"));
    const auto tail = *rc::gen::suchThat(tails(), beginsWithoutAnAccent);
    const auto name = *wrappers() + *spellings(first) + "." + *spellings(second) + "." + tail + *suffixes();
    RC_CLASSIFY(name.size() > 30, "long");
    RC_ASSERT(!isOrphan(name, installed));
}

RC_GTEST_PROP(OrphanJudgement, NothingThatExtendsAnInstalledIdentifierIsEverReported, ()) {
    const auto only = *parts();
    auto installed = *otherApplications();
    installed.insert(*spellings(only)); // of a single part: it has no vendor
    const auto tail = *rc::gen::suchThat(tails(), beginsWithoutAnAccent);
    RC_ASSERT(!isOrphan(*wrappers() + *spellings(only) + "." + tail + *suffixes(), installed));
}

RC_GTEST_PROP(OrphanJudgement, NothingOfTheSystemIsEverReported, ()) {
    const auto name = *rc::gen::elementOf(Letters{"com.apple", "Com.Apple", "COM.APPLE", "com.aPPle"});
    const auto tail = *rc::gen::suchThat(tails(), beginsWithoutAnAccent);
    RC_ASSERT(!isOrphan(*wrappers() + name + "." + tail + *suffixes(), *otherApplications()));
    RC_ASSERT(!isOrphan(*wrappers() + name + *suffixes(), *otherApplications()));
}

RC_GTEST_PROP(OrphanJudgement, NothingTouchedInTheLastThirtyDaysIsEverReported, ()) {
    const auto name = *wrappers() + "org." + *anySpelling() + "." + *anySpelling() + *tails() + *suffixes();
    const auto seconds = *rc::gen::inRange<int>(-365 * 24 * 60 * 60, 30 * 24 * 60 * 60); // the future as well
    RC_ASSERT(!isOrphan(name, {}, seconds / kDay));
}

RC_GTEST_PROP(OrphanJudgement, WhatNobodyClaimsIsReportedInAnyDress, ()) {
    const auto name = *wrappers() + "org." + *anySpelling() + "." + *anySpelling() + *suffixes();
    RC_ASSERT(isOrphan(name, *otherApplications()));
}

RC_GTEST_PROP(OrphanJudgement, WhatIsReportedHasTheShapeOfAnIdentifier, ()) {
    std::map<std::string, double> names;
    for (const auto& name : *rc::gen::container<Letters>(tails())) {
        if (!name.empty() && name.find('/') == std::string::npos) {
            names[name] = 400;
        }
    }
    for (const auto& name : orphansAmong(names, {})) {
        RC_ASSERT(!name.starts_with('.'));
        RC_ASSERT(std::ranges::count(name, '.') >= 2);
    }
}

RC_GTEST_PROP(OrphanJudgement, AnotherInstalledApplicationNeverMakesAnOrphan, ()) {
    std::map<std::string, double> names;
    for (const auto& name : *rc::gen::container<Letters>(
             rc::gen::map(rc::gen::pair(wrappers(), anySpelling()),
                          [](const auto& two) { return two.first + "net." + two.second + ".tool"; }))) {
        names[name] = 400;
    }
    const auto few = *otherApplications();
    auto more = few;
    more.merge(*otherApplications());
    const auto among = orphansAmong(names, few);
    for (const auto& name : orphansAmong(names, more)) {
        RC_ASSERT(among.contains(name));
    }
}

} // namespace
} // namespace quillane
#endif
