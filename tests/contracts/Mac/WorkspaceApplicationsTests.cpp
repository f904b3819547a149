// What the workspace's list makes of running applications.
#include "StandIns.h"
#include "WorkspaceApplications.h"
#include <gtest/gtest.h>
#include <unistd.h>

namespace quillane {
namespace {

struct WorkspaceApplicationsTest : testing::Test {
    WorkspaceApplicationsTest() { StandIns::applications().clear(); }
    WorkspaceApplications workspace;
};

// The list moves only when the run loop turns.
TEST_F(WorkspaceApplicationsTest, WhatHasEndedRunsNoLongerThoughItIsStillListed) {
    StandIns::applications().push_back({.identifier = "org.example.one", .isTerminated = true});
    EXPECT_FALSE(workspace.isRunning("org.example.one"));
    StandIns::applications().push_back({.identifier = "org.example.one"});
    EXPECT_TRUE(workspace.isRunning("org.example.one"));
}

TEST_F(WorkspaceApplicationsTest, EachIsAskedOnceAndThisProgramNever) {
    StandIns::applications() = {{.identifier = "org.example.one", .process = 4711, .isStubborn = true},
                                {.identifier = "org.example.one", .process = ::getpid()},
                                {.identifier = "org.example.one", .process = 4712},
                                {.identifier = "org.example.two", .process = 4713}};
    workspace.terminate("org.example.one");
    std::vector<int> asked;
    for (const auto& application : StandIns::applications()) {
        asked.push_back(application.asked);
    }
    EXPECT_EQ(asked, (std::vector<int>{1, 0, 1, 0}));
    EXPECT_TRUE(workspace.isRunning("org.example.one"));
}

} // namespace
} // namespace quillane
