#include "PropertyListWriter.h"
#include "RemovalWorld.h"
#include "StartupFinder.h"
#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quillane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;
using Kind = StartupItem::Kind;
using Health = StartupItem::Health;
using Texts = std::vector<std::string>;
using Call = ScriptedCommandRunner::Call;

const std::string kLaunchctl = "/bin/launchctl";
const std::string kAgents = "Users/alex/Library/LaunchAgents/";
const std::string kMachineAgents = "Library/LaunchAgents/";
const std::string kDaemons = "Library/LaunchDaemons/";
const std::string kHelpers = "Library/PrivilegedHelperTools/";

class StartupFinderTest : public testing::Test {
  protected:
    void lay(const std::string& below, Plist::Dictionary keys) {
        world.disk.file(below, xmlPropertyList(Plist::dictionary(std::move(keys))));
    }
    // A job that says no more than its label.
    void layLabel(const std::string& below, const std::string& label) { lay(below, {{"Label", label}}); }
    void addApp(const std::string& path, const std::string& identifier) {
        InstalledApp app;
        app.url = FileURL(path);
        app.name = FileURL(path).deletingPathExtension().lastPathComponent();
        app.bundleIdentifier = identifier;
        apps.push_back(app);
    }
    void answerList(const std::string& output) { world.commands.answer(kLaunchctl, {"list"}, output); }

    std::vector<StartupItem> found() const { return StartupFinder::find(world.platform, apps); }
    Texts labels() const {
        Texts labels;
        for (const auto& item : found()) {
            labels.push_back(item.label);
        }
        return labels;
    }
    // The only item of a Mac that has this one list among the agents of the home folder.
    StartupItem itemOf(Plist::Dictionary keys) {
        lay(kAgents + "com.example.tool.plist", std::move(keys));
        const auto items = found();
        EXPECT_EQ(items.size(), 1U);
        return items.empty() ? StartupItem() : items.front();
    }
    StartupItem at(const std::string& below) const {
        const auto items = found();
        const auto item = std::ranges::find(items, FileURL("/" + below), &StartupItem::url);
        EXPECT_NE(item, items.end()) << below;
        return item == items.end() ? StartupItem() : *item;
    }

    RemovalWorld world;
    std::vector<InstalledApp> apps;
};

// Where items lie

TEST_F(StartupFinderTest, FourFoldersAreLookedThroughEachForItsKind) {
    layLabel(kAgents + "a.plist", "a");
    layLabel(kMachineAgents + "b.plist", "b");
    layLabel(kDaemons + "c.plist", "c");
    world.disk.file(kHelpers + "d");
    layLabel("System/Library/LaunchAgents/e.plist", "e");
    layLabel("System/Library/LaunchDaemons/f.plist", "f");
    layLabel("Users/alex/Library/LaunchDaemons/g.plist", "g");
    EXPECT_THAT(labels(), ElementsAre("a", "b", "c", "d"));
    EXPECT_EQ(at(kAgents + "a.plist").kind, Kind::agent);
    EXPECT_EQ(at(kMachineAgents + "b.plist").kind, Kind::agent);
    EXPECT_EQ(at(kDaemons + "c.plist").kind, Kind::daemon);
    EXPECT_EQ(at(kHelpers + "d").kind, Kind::helper);
}

TEST_F(StartupFinderTest, FoldersThatAreMissingOrCannotBeListedAreEmpty) {
    EXPECT_THAT(found(), IsEmpty());
    layLabel(kDaemons + "c.plist", "c");
    world.disk.file("Library/LaunchAgents", "no folder");
    EXPECT_THAT(labels(), ElementsAre("c"));
    world.files.fail(FileURL("/Library/LaunchDaemons"), {ErrorCode::kReadNoPermission, EACCES});
    EXPECT_THAT(found(), IsEmpty());
}

TEST_F(StartupFinderTest, OnlyVisibleListsDirectlyInAFolderCount) {
    for (const auto* name : {".hidden.plist", "tool.PLIST", "tool.plist.off", "plist", "sub/tool.plist"}) {
        layLabel(kAgents + name, name);
    }
    layLabel(kAgents + "com.example.tool.plist", "listed");
    EXPECT_THAT(labels(), ElementsAre("listed"));
}

TEST_F(StartupFinderTest, EveryVisibleChildAmongTheHelpersIsOne) {
    world.disk.file(kHelpers + "com.example.tool").file(kHelpers + ".hidden").file(kHelpers + "a.plist");
    world.disk.file(kHelpers + "com.example.bundle.app/Contents/MacOS/tool");
    EXPECT_THAT(labels(), ElementsAre("a.plist", "com.example.bundle.app", "com.example.tool"));
}

TEST_F(StartupFinderTest, WhatTheSystemHidesIsNotListed) {
    layLabel(kAgents + "hidden.plist", "hidden");
    layLabel(kAgents + "plain.plist", "plain");
    world.disk.file(kHelpers + "com.example.hidden");
    world.files.flagHidden(FileURL("/" + kAgents + "hidden.plist"));
    world.files.flagHidden(FileURL("/" + kHelpers + "com.example.hidden"));
    EXPECT_THAT(labels(), ElementsAre("plain"));
}

TEST_F(StartupFinderTest, AListThatCannotBeReadIsLeftOutWithoutAWord) {
    world.disk.file(kAgents + "damaged.plist", "<plist><dict><key>").file(kAgents + "empty.plist");
    world.disk.file(kAgents + "list.plist", xmlPropertyList(Plist::array({"Label"})));
    world.disk.folder(kAgents + "folder.plist").link(kAgents + "dangling.plist", "nowhere");
    layLabel(kAgents + "forbidden.plist", "forbidden");
    world.files.fail(FileURL("/" + kAgents + "forbidden.plist"), {ErrorCode::kReadNoPermission, EACCES});
    layLabel(kAgents + "good.plist", "good");
    EXPECT_THAT(labels(), ElementsAre("good"));
}

TEST_F(StartupFinderTest, AListThatIsALinkIsReadWhereItPoints) {
    layLabel("opt/tool.plist", "linked");
    world.disk.link(kAgents + "tool.plist", "/opt/tool.plist");
    EXPECT_THAT(labels(), ElementsAre("linked"));
}

// What a list says

TEST_F(StartupFinderTest, AListWithoutALabelTakesItFromTheNameOfTheFile) {
    EXPECT_EQ(itemOf({}).label, "com.example.tool");
    EXPECT_EQ(itemOf({{"Label", 5}}).label, "com.example.tool");
    EXPECT_EQ(itemOf({{"Label", "org.other"}}).label, "org.other");
}

TEST_F(StartupFinderTest, TheKeysOfAListAreToldAsTheyStand) {
    world.disk.file("Users/alex/bin/tool");
    const auto item = itemOf({{"Label", "com.example.tool"},
                              {"ProgramArguments", Plist::array({"~/bin/tool", "--quiet"})},
                              {"RunAtLoad", true},
                              {"KeepAlive", true},
                              {"StartInterval", 90}});
    EXPECT_EQ(item.url, FileURL("/" + kAgents + "com.example.tool.plist"));
    EXPECT_EQ(item.program, "~/bin/tool");
    EXPECT_TRUE(item.runAtLoad);
    EXPECT_TRUE(item.keepAlive);
    EXPECT_EQ(item.interval, 90);
    EXPECT_EQ(item.schedule(), "at login, kept alive, every 1 min, 30 sec");
    EXPECT_EQ(item.bytes, world.files.resourceValues(item.url)->fileSize);
    EXPECT_GT(item.bytes, 0);
}

TEST_F(StartupFinderTest, ConditionsThatAreAllFalseStillKeepAlive) {
    const auto item = itemOf({{"KeepAlive", Plist::dictionary({{"SuccessfulExit", false}})}});
    EXPECT_TRUE(item.keepAlive);
    EXPECT_EQ(item.schedule(), "kept alive");
}

TEST_F(StartupFinderTest, ALengthThatCannotBeReadIsZero) {
    layLabel(kAgents + "a.plist", "a");
    world.files.failEvery(FileCall::resourceValues, {ErrorCode::kReadNoPermission, EACCES});
    EXPECT_EQ(at(kAgents + "a.plist").bytes, 0);
}

// Health

TEST_F(StartupFinderTest, AnItemWithoutAProgramIsJudgedByItsOwnerAlone) {
    EXPECT_EQ(itemOf({{"ProgramArguments", Plist::array({})}}).health, Health::orphaned);
    EXPECT_EQ(itemOf({{"ProgramArguments", Plist::array({"/gone", 1})}}).health, Health::orphaned);
    addApp("/Applications/Tool.app", "com.example.tool");
    const auto item = itemOf({{"ProgramArguments", Plist::array({})}});
    EXPECT_EQ(item.program, std::nullopt);
    EXPECT_EQ(item.health, Health::ok);
    EXPECT_EQ(item.ownerName, "Tool");
}

TEST_F(StartupFinderTest, AProgramThatIsThereLeavesTheJudgementToTheOwner) {
    world.disk.file("opt/tool").file("Users/alex/bin/tool").link("opt/link", "/opt/tool");
    for (const auto* program : {"/opt/tool", "/opt/link", "~/bin/tool", "/opt"}) {
        EXPECT_EQ(itemOf({{"Program", program}}).health, Health::orphaned) << program;
    }
    addApp("/Applications/Tool.app", "com.example.tool");
    EXPECT_EQ(itemOf({{"Program", "/opt/tool"}}).health, Health::ok);
}

TEST_F(StartupFinderTest, AnItemWhoseProgramIsGoneIsBrokenWhoeverOwnsIt) {
    world.disk.link("opt/dangling", "/opt/gone").file("opt/tool").file("opt/relative");
    for (const auto* program :
         {"/opt/gone", "/opt/dangling", "~/bin/tool", "~alex/tool", "opt/relative", ""}) {
        EXPECT_EQ(itemOf({{"Program", program}}).health, Health::broken) << program;
    }
    addApp("/Applications/Tool.app", "com.example.tool");
    const auto item = itemOf({{"Program", "/opt/gone"}});
    EXPECT_EQ(item.health, Health::broken);
    EXPECT_EQ(item.ownerName, "Tool");
}

TEST_F(StartupFinderTest, AProgramInABundleThatNoLongerExistsIsBrokenAndNotOrphaned) {
    EXPECT_EQ(itemOf({{"Program", "/Applications/Gone.app/Contents/MacOS/agent"}}).health, Health::broken);
}

TEST_F(StartupFinderTest, AProgramInABundleThatIsInstalledIsThatBundles) {
    world.disk.file("Applications/Tool.app/Contents/MacOS/agent");
    addApp("/Applications/Tool.app", "net.else");
    const auto item = itemOf({{"Program", "/Applications/Tool.app/Contents/MacOS/agent"}});
    EXPECT_EQ(item.health, Health::ok);
    EXPECT_EQ(item.ownerName, "Tool");
}

TEST_F(StartupFinderTest, TheSystemsOwnIsClaimedAndStillBrokenWithoutItsProgram) {
    const auto broken = itemOf({{"Label", "com.apple.thing"}, {"Program", "/gone"}});
    EXPECT_EQ(broken.ownerName, "macOS");
    EXPECT_EQ(broken.health, Health::broken);
    EXPECT_EQ(itemOf({{"Label", "com.apple.thing"}}).health, Health::ok);
}

TEST_F(StartupFinderTest, ANameWithoutAPathIsLookedForWhereLaunchdLooks) {
    EXPECT_EQ(itemOf({{"ProgramArguments", Plist::array({"searched"})}}).health, Health::broken);
    world.disk.file("usr/sbin/searched");
    EXPECT_EQ(itemOf({{"ProgramArguments", Plist::array({"searched"})}}).health, Health::orphaned);
}

// Helpers

TEST_F(StartupFinderTest, AHelperIsToldFromItsFileAlone) {
    world.disk.allocated(kHelpers + "com.example.tool.helper", 10'000);
    addApp("/Applications/Tool.app", "com.example.tool");
    answerList("PID\tStatus\tLabel\n1\t0\tcom.example.tool.helper\n");
    const auto item = at(kHelpers + "com.example.tool.helper");
    EXPECT_EQ(item.label, "com.example.tool.helper");
    EXPECT_EQ(item.program, "/Library/PrivilegedHelperTools/com.example.tool.helper");
    EXPECT_EQ(item.ownerName, "Tool");
    EXPECT_EQ(item.health, Health::ok);
    EXPECT_FALSE(item.runAtLoad);
    EXPECT_FALSE(item.keepAlive);
    EXPECT_EQ(item.interval, std::nullopt);
    EXPECT_EQ(item.isLoaded, std::nullopt);
    EXPECT_EQ(item.bytes, world.disk.allocationOf(kHelpers + "com.example.tool.helper"));
    EXPECT_EQ(item.schedule(), "on demand");
}

TEST_F(StartupFinderTest, AHelperOfAVendorWhoseOneApplicationIsInstalledIsInOrder) {
    world.disk.file(kHelpers + "com.example.licence");
    addApp("/Applications/Tool.app", "com.example.tool");
    const auto item = at(kHelpers + "com.example.licence");
    EXPECT_EQ(item.ownerName, "Tool (same vendor)");
    EXPECT_EQ(item.health, Health::ok);
}

TEST_F(StartupFinderTest, AHelperThatNobodyClaimsIsOrphanedAndNeverBroken) {
    world.disk.file(kHelpers + "org.gone.helper").file(kHelpers + "com.apple.helper");
    world.disk.link(kHelpers + "org.gone.link", "/nowhere");
    EXPECT_EQ(at(kHelpers + "org.gone.helper").health, Health::orphaned);
    EXPECT_EQ(at(kHelpers + "org.gone.helper").ownerName, std::nullopt);
    EXPECT_EQ(at(kHelpers + "org.gone.link").health, Health::orphaned);
    EXPECT_EQ(at(kHelpers + "com.apple.helper").ownerName, "macOS");
    EXPECT_EQ(at(kHelpers + "com.apple.helper").health, Health::ok);
}

TEST_F(StartupFinderTest, ThePathOfAHelperMakesNoApplicationItsOwner) {
    world.disk.file(kHelpers + "org.gone.helper");
    addApp("/Library/PrivilegedHelperTools", "net.else");
    EXPECT_EQ(at(kHelpers + "org.gone.helper").ownerName, std::nullopt);
}

// Order

TEST_F(StartupFinderTest, TheWorstComesFirstAndThenUpperCaseBeforeLower) {
    addApp("/Applications/Tool.app", "com.example.tool");
    const auto gone = Plist("/gone");
    lay(kAgents + "1.plist", {{"Label", "zebra"}, {"Program", gone}});
    lay(kDaemons + "2.plist", {{"Label", "apple"}, {"Program", gone}});
    lay(kAgents + "3.plist", {{"Label", "Zebra"}, {"Program", gone}});
    lay(kAgents + "4.plist", {{"Label", "b"}});
    world.disk.file(kHelpers + "a");
    lay(kAgents + "5.plist", {{"Label", "com.example.tool"}});
    lay(kAgents + "6.plist", {{"Label", "Com.Example.tool.2"}});
    EXPECT_THAT(labels(),
                ElementsAre("Zebra", "apple", "zebra", "a", "b", "Com.Example.tool.2", "com.example.tool"));
}

TEST_F(StartupFinderTest, EqualLabelsStandInTheOrderOfTheFoldersAndNames) {
    for (const auto& below : {kDaemons + "a.plist", kMachineAgents + "a.plist", kAgents + "c.plist",
                              kAgents + "b.plist", kAgents + "e.plist", kAgents + "d.plist"}) {
        layLabel(below, "same");
    }
    Texts paths;
    for (const auto& item : found()) {
        paths.push_back(item.url.path().substr(1));
    }
    EXPECT_THAT(paths, ElementsAre(kAgents + "b.plist", kAgents + "c.plist", kAgents + "d.plist",
                                   kAgents + "e.plist", kMachineAgents + "a.plist", kDaemons + "a.plist"));
}

// What launchd has loaded

TEST_F(StartupFinderTest, OnlyAgentsInTheHomeFolderHaveALoadedState) {
    for (const auto& folder : {kAgents, kMachineAgents, kDaemons}) {
        layLabel(folder + "on.plist", "on");
        layLabel(folder + "off.plist", "off");
    }
    answerList("PID\tStatus\tLabel\n-\t0\ton\n");
    EXPECT_EQ(at(kAgents + "on.plist").isLoaded, true);
    EXPECT_EQ(at(kAgents + "off.plist").isLoaded, false);
    for (const auto& folder : {kMachineAgents, kDaemons}) {
        EXPECT_EQ(at(folder + "on.plist").isLoaded, std::nullopt) << folder;
        EXPECT_EQ(at(folder + "off.plist").isLoaded, std::nullopt) << folder;
    }
}

TEST_F(StartupFinderTest, ADaemonHasNoLoadedStateWhereverItLies) {
    layLabel(kAgents + "on.plist", "on");
    const StartupOwners owners(apps, FileURL("/Users/alex"));
    const auto item = StartupFinder::describe(world.platform, FileURL("/" + kAgents + "on.plist"),
                                              Kind::daemon, owners, {"on"});
    ASSERT_TRUE(item.has_value());
    EXPECT_EQ(item->kind, Kind::daemon);
    EXPECT_EQ(item->isLoaded, std::nullopt);
}

TEST_F(StartupFinderTest, LaunchctlIsAskedOnceForAllItems) {
    for (const auto* name : {"a.plist", "b.plist", "c.plist"}) {
        layLabel(kAgents + name, name);
    }
    EXPECT_EQ(found().size(), 3U);
    EXPECT_THAT(world.commands.calls(), ElementsAre(Call{kLaunchctl, {"list"}}));
}

TEST_F(StartupFinderTest, WithoutLaunchctlEveryAgentReadsAsNotLoaded) {
    layLabel(kAgents + "a.plist", "a");
    EXPECT_EQ(at(kAgents + "a.plist").isLoaded, false);
}

class LoadedLabels : public StartupFinderTest {
  protected:
    std::unordered_set<std::string> labelsOf(const std::string& output) {
        answerList(output);
        return StartupFinder::loadedUserLabels(world.platform);
    }
};

TEST_F(LoadedLabels, TheLastPieceOfEachLineButTheFirstIsALabel) {
    EXPECT_THAT(labelsOf("PID\tStatus\tLabel\n501\t0\tcom.example.a\n-\t-15\tcom.example.b\n"),
                UnorderedElementsAre("com.example.a", "com.example.b"));
}

TEST_F(LoadedLabels, EmptyLinesAndPiecesAreDroppedBeforeTheHeaderIs) {
    EXPECT_THAT(labelsOf("\n\nPID\tStatus\tLabel\n\n-\t0\t\tdoubled\n\t\t\nalone\ntrailing\t\t\nlast"),
                UnorderedElementsAre("doubled", "alone", "trailing", "last"));
}

TEST_F(LoadedLabels, AHeaderAloneAndNoOutputHoldNoLabels) {
    for (const auto* output : {"", "\n", " \n\t\n", "PID\tStatus\tLabel", "PID\tStatus\tLabel\n"}) {
        EXPECT_THAT(labelsOf(output), IsEmpty()) << output;
    }
}

TEST_F(LoadedLabels, HalfALineIsALabelToo) {
    EXPECT_THAT(labelsOf("PID\tStatus\tLabel\n-\t0\tcom.example.a\n-\t0\tcom.exa"),
                UnorderedElementsAre("com.example.a", "com.exa"));
    EXPECT_THAT(labelsOf("PID\tStatus\tLabel\n-\t0"), UnorderedElementsAre("0"));
}

TEST_F(LoadedLabels, BytesThatAreNoTextAreRepaired) {
    EXPECT_THAT(labelsOf("PID\tStatus\tLabel\n-\t0\ta\xFF\n"), UnorderedElementsAre("a\uFFFD"));
}

TEST_F(LoadedLabels, WhatLaunchctlComplainsOfIsNoLabel) {
    world.commands.answer(kLaunchctl, {"list"}, "PID\tStatus\tLabel\n-\t0\ta\n", "warning: x\n");
    EXPECT_THAT(StartupFinder::loadedUserLabels(world.platform), UnorderedElementsAre("a"));
}

TEST_F(LoadedLabels, MegabytesAreReadUpToABound) {
    const std::string header = "PID\tStatus\tLabel\n";
    const std::string line = "-\t0\tsame\n";
    std::string output = header;
    while (output.size() < 4'000'000) {
        output += line;
    }
    EXPECT_THAT(labelsOf(output), UnorderedElementsAre("same"));
    EXPECT_THAT(labelsOf(output + output), IsEmpty()) << "as if it could not be asked";
}

TEST_F(LoadedLabels, ARequestToStopEndsTheLook) {
    layLabel(kAgents + "a.plist", "a");
    const StopSource source;
    source.requestStop();
    EXPECT_THAT(StartupFinder::find(world.platform, apps, source.token()), IsEmpty());
    EXPECT_THAT(world.commands.calls(), IsEmpty());
}

// Stopping

class Unloading : public StartupFinderTest {
  protected:
    static constexpr const char* kRefusal =
        "Only your own launch agents can be stopped without admin rights.";

    static StartupItem item(const std::string& path, Kind kind = Kind::agent) {
        StartupItem item;
        item.url = FileURL(path);
        item.label = "com.example.tool";
        item.kind = kind;
        return item;
    }
    static StartupItem ownAgent() { return item("/" + kAgents + "com.example.tool.plist"); }
    std::optional<std::string> unload(const StartupItem& item) {
        return StartupFinder::unload(world.platform, item);
    }
    void answerBootout(const std::string& output, const std::string& errors = {}) {
        world.commands.answer(kLaunchctl, {"bootout", "gui/501/com.example.tool"}, output, errors);
    }
};

TEST_F(Unloading, AnOwnAgentIsTakenFromTheUsersDomainByItsLabel) {
    answerBootout("");
    EXPECT_EQ(unload(ownAgent()), std::nullopt);
    EXPECT_THAT(world.commands.calls(),
                ElementsAre(Call{kLaunchctl, {"bootout", "gui/501/com.example.tool"}}));
}

TEST_F(Unloading, WhatLaunchctlSaysIsTheMessage) {
    answerBootout("", "Boot-out failed: 3: No such process\n");
    EXPECT_EQ(unload(ownAgent()), "Boot-out failed: 3: No such process");
    answerBootout("said\n", "complained\n");
    EXPECT_EQ(unload(ownAgent()), "said\ncomplained");
    answerBootout(" \n\t\n");
    EXPECT_EQ(unload(ownAgent()), std::nullopt) << "blanks say nothing";
    answerBootout("bad \xFF byte");
    EXPECT_EQ(unload(ownAgent()), "bad \uFFFD byte");
}

TEST_F(Unloading, WithoutLaunchctlNothingIsSaid) {
    EXPECT_EQ(unload(ownAgent()), std::nullopt);
}

TEST_F(Unloading, WhatIsNoAgentInTheHomeFolderIsRefusedWithoutACommand) {
    EXPECT_EQ(unload(item("/Library/LaunchAgents/com.example.tool.plist")), kRefusal);
    EXPECT_EQ(unload(item("/Library/LaunchDaemons/com.example.tool.plist", Kind::daemon)), kRefusal);
    EXPECT_EQ(unload(item("/Library/PrivilegedHelperTools/com.example.tool", Kind::helper)), kRefusal);
    EXPECT_EQ(unload(item("/" + kAgents + "a.plist", Kind::daemon)), kRefusal);
    EXPECT_EQ(unload(item("/" + kAgents + "a", Kind::helper)), kRefusal);
    EXPECT_THAT(world.commands.calls(), IsEmpty());
}

TEST_F(Unloading, ALabelThatNamesNothingNeverNamesTheWholeSession) {
    for (const std::string label : {"", "/", "//"}) {
        auto agent = ownAgent();
        agent.label = label;
        EXPECT_EQ(unload(agent), kRefusal) << label;
    }
    EXPECT_THAT(world.commands.calls(), IsEmpty());
}

TEST_F(Unloading, AnAnswerOfManyMegabytesIsNoSuccess) {
    answerBootout(std::string(5'000'000, 'x'));
    EXPECT_EQ(unload(ownAgent()), "launchctl gave no answer that could be read.");
}

} // namespace
} // namespace quillane
