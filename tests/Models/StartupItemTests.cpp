#include "StartupItem.h"
#include <algorithm>
#include <gtest/gtest.h>
#include <vector>

namespace quillane {
namespace {

using Kind = StartupItem::Kind;
using Health = StartupItem::Health;

StartupItem made() {
    StartupItem item;
    item.url = FileURL("/Users/alex/Library/LaunchAgents/com.example.tool.plist");
    item.label = "com.example.tool";
    item.program = "/usr/local/bin/tool";
    item.interval = 60;
    item.ownerName = "Tool";
    item.isLoaded = true;
    item.bytes = 400;
    return item;
}

std::string schedule(Kind kind, bool runAtLoad, bool keepAlive,
                     std::optional<std::int64_t> interval = std::nullopt) {
    StartupItem item;
    item.kind = kind;
    item.runAtLoad = runAtLoad;
    item.keepAlive = keepAlive;
    item.interval = interval;
    return item.schedule();
}

TEST(StartupItem, WhatNothingStartsRunsOnDemand) {
    for (const auto kind : kAllStartupItemKinds) {
        EXPECT_EQ(schedule(kind, false, false), "on demand") << rawValue(kind);
    }
}

TEST(StartupItem, ADaemonRunsAtBootAndEverythingElseAtLogin) {
    EXPECT_EQ(schedule(Kind::agent, true, false), "at login");
    EXPECT_EQ(schedule(Kind::daemon, true, false), "at boot");
    EXPECT_EQ(schedule(Kind::helper, true, false), "at login");
}

TEST(StartupItem, ADaemonThatRunsAtLoadAndIsKeptAliveSaysBoth) {
    EXPECT_EQ(schedule(Kind::daemon, true, true), "at boot, kept alive");
}

TEST(StartupItem, TheScheduleTellsStartThenLifeThenInterval) {
    EXPECT_EQ(schedule(Kind::agent, true, true, 3'600), "at login, kept alive, every 1 hr");
    EXPECT_EQ(schedule(Kind::agent, false, true), "kept alive");
    EXPECT_EQ(schedule(Kind::daemon, true, false, 300), "at boot, every 5 min");
}

TEST(StartupItem, AnIntervalIsToldInItsPartsThatAreNotZero) {
    EXPECT_EQ(schedule(Kind::agent, false, false, 3'600), "every 1 hr");
    EXPECT_EQ(schedule(Kind::agent, false, false, 90), "every 1 min, 30 sec");
    EXPECT_EQ(schedule(Kind::agent, false, false, 7'325), "every 2 hr, 2 min, 5 sec");
    EXPECT_EQ(schedule(Kind::agent, false, false, 604'800), "every 168 hr");
    EXPECT_EQ(schedule(Kind::agent, false, false, 0), "every 0 sec");
    EXPECT_EQ(schedule(Kind::agent, false, false, -90), "every -1 min, 30 sec");
}

TEST(StartupItem, KindsAndHealthsHaveTheirWords) {
    EXPECT_EQ(rawValue(Kind::agent), "Agent");
    EXPECT_EQ(rawValue(Kind::daemon), "Daemon");
    EXPECT_EQ(rawValue(Kind::helper), "Privileged Helper");
    EXPECT_EQ(rawValue(Health::ok), "OK");
    EXPECT_EQ(rawValue(Health::orphaned), "Orphaned");
    EXPECT_EQ(rawValue(Health::broken), "Broken");
}

TEST(StartupItem, KindsAreOrderedByTheirWords) {
    for (const auto a : kAllStartupItemKinds) {
        for (const auto b : kAllStartupItemKinds) {
            EXPECT_EQ(a <=> b, rawValue(a) <=> rawValue(b));
        }
    }
}

TEST(StartupItem, TheWorstHealthComesFirst) {
    std::vector<Health> healths(kAllStartupItemHealths.begin(), kAllStartupItemHealths.end());
    std::ranges::sort(healths);
    EXPECT_EQ(healths, (std::vector{Health::broken, Health::orphaned, Health::ok}));
    EXPECT_LT(Health::broken, Health::orphaned);
    EXPECT_LT(Health::orphaned, Health::ok);
}

TEST(StartupItem, ItsLocationIsItsIdentity) {
    EXPECT_EQ(made().id(), made().url);
}

TEST(StartupItem, EveryFieldCounts) {
    const auto plain = made();
    const auto differs = [&](auto change) {
        auto other = plain;
        change(other);
        return other != plain && std::hash<StartupItem>{}(other) != std::hash<StartupItem>{}(plain);
    };
    EXPECT_TRUE(differs([](StartupItem& other) { other.url = FileURL("/other"); }));
    EXPECT_TRUE(differs([](StartupItem& other) { other.label = "other"; }));
    EXPECT_TRUE(differs([](StartupItem& other) { other.kind = Kind::daemon; }));
    EXPECT_TRUE(differs([](StartupItem& other) { other.program.reset(); }));
    EXPECT_TRUE(differs([](StartupItem& other) { other.runAtLoad = true; }));
    EXPECT_TRUE(differs([](StartupItem& other) { other.keepAlive = true; }));
    EXPECT_TRUE(differs([](StartupItem& other) { other.interval.reset(); }));
    EXPECT_TRUE(differs([](StartupItem& other) { other.ownerName.reset(); }));
    EXPECT_TRUE(differs([](StartupItem& other) { other.health = Health::broken; }));
    EXPECT_TRUE(differs([](StartupItem& other) { other.isLoaded.reset(); }));
    EXPECT_TRUE(differs([](StartupItem& other) { other.isLoaded = false; }));
    EXPECT_TRUE(differs([](StartupItem& other) { other.bytes = 401; }));
}

} // namespace
} // namespace quillane
