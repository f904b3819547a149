#include "DesktopWorkspace.h"
#include "FakeWorkspace.h"
#include "PosixFileSystem.h"
#include "StepTaskRunner.h"
#include "TemporaryFolder.h"
#include <gtest/gtest.h>

namespace quillane {
namespace {

// What a workspace may need, below it.
struct Ground {
    TemporaryFolder volume;
    PosixFileSystem files{volume.path(), FileURL("/Users/alex")};
    StepTaskRunner tasks;
};

struct Adapter {
    const char* name;
    std::unique_ptr<Workspace> (*make)(Ground& ground);
};

class WorkspaceContract : public testing::TestWithParam<Adapter> {
  protected:
    Ground m_ground;
    std::unique_ptr<Workspace> m_workspace = GetParam().make(m_ground);
};

TEST_P(WorkspaceContract, WhatDoesNotExistHasAnIconToo) {
    for (const char* path : {"/none", "/none.app", "/none.txt", "/", "/\xFF"}) {
        const auto icon = m_workspace->icon(FileURL(path), 32);
        ASSERT_NE(icon, nullptr) << path;
        EXPECT_FALSE(icon->isEmpty()) << path;
        EXPECT_EQ(icon->rgba.size(),
                  static_cast<std::size_t>(icon->width) * static_cast<std::size_t>(icon->height) * 4);
    }
}

TEST_P(WorkspaceContract, ASideOfNothingStillGivesAnIcon) {
    for (const int side : {0, -1}) {
        EXPECT_FALSE(m_workspace->icon(FileURL("/none"), side)->isEmpty());
    }
}

TEST_P(WorkspaceContract, TheSameItemHasTheSameIcon) {
    EXPECT_EQ(*m_workspace->icon(FileURL("/none.app"), 64), *m_workspace->icon(FileURL("/none.app"), 64));
}

INSTANTIATE_TEST_SUITE_P(Adapters, WorkspaceContract,
                         testing::Values(Adapter{"Desktop",
                                                 [](Ground& ground) {
                                                     return std::unique_ptr<Workspace>(new DesktopWorkspace(
                                                         ground.files, ground.tasks,
                                                         DesktopWorkspace::Reach::machine));
                                                 }},
                                         Adapter{"Fake",
                                                 [](Ground& /*ground*/) {
                                                     return std::unique_ptr<Workspace>(new FakeWorkspace);
                                                 }}),
                         [](const auto& adapter) { return adapter.param.name; });

} // namespace
} // namespace quillane
