#include "FakeUpdater.h"
#include "StepTaskRunner.h"
#include "UpdaterController.h"
#include <gtest/gtest.h>

using namespace quillane;

namespace {

class UpdaterControllerTest : public testing::Test {
  protected:
    StepTaskRunner m_runner;
    FakeUpdater m_updater{m_runner};
};

} // namespace

TEST_F(UpdaterControllerTest, TheFlagIsReadFromTheUpdaterAtTheStart) {
    m_updater.isAutomatic = true;
    const UpdaterController controller(m_updater);
    EXPECT_TRUE(controller.automaticallyChecksForUpdates.get());
    EXPECT_EQ(m_updater.timesSet, 0);
}

TEST_F(UpdaterControllerTest, TheFlagIsHandedOnAlsoWhenItDoesNotChange) {
    UpdaterController controller(m_updater);
    controller.setAutomaticallyChecksForUpdates(true);
    EXPECT_TRUE(controller.automaticallyChecksForUpdates.get());
    EXPECT_TRUE(m_updater.isAutomatic);
    controller.setAutomaticallyChecksForUpdates(true);
    EXPECT_EQ(m_updater.timesSet, 2);
}

TEST_F(UpdaterControllerTest, WhatTheUpdaterChangesItselfIsPublished) {
    const UpdaterController controller(m_updater);
    m_updater.canCheck = false;
    m_updater.lastCheck = Date{12};
    m_updater.isAutomatic = true;
    m_updater.tellOfChange();
    m_runner.settle();
    EXPECT_FALSE(controller.canCheckForUpdates.get());
    EXPECT_EQ(controller.lastUpdateCheckDate.get(), Date{12});
    EXPECT_TRUE(controller.automaticallyChecksForUpdates.get());
}

TEST_F(UpdaterControllerTest, ACheckIsTheUpdatersOwn) {
    UpdaterController controller(m_updater);
    controller.checkForUpdates();
    EXPECT_EQ(m_updater.checks, 1);
    EXPECT_EQ(controller.installedVersion(), "1.0");
}

TEST_F(UpdaterControllerTest, NobodyIsToldOnceTheControllerHasGone) {
    {
        const UpdaterController controller(m_updater);
    }
    m_updater.tellOfChange();
    m_runner.settle();
}
