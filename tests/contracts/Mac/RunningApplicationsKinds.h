#pragma once
#include "FakeApplicationsKind.h"
#include "StandIns.h"
#include "WorkspaceApplications.h"
#include <gtest/gtest.h>
#include <string>

namespace quillane {

struct WorkspaceKind {
    WorkspaceApplications workspace;
    WorkspaceKind() { StandIns::applications().clear(); }
    RunningApplications& applications() { return workspace; }
    void start(const std::string& identifier, bool isStubborn = false) {
        StandIns::applications().push_back({identifier, 0, isStubborn, false, 0});
    }
    void waitForEndOf(const std::string& identifier) {
        std::erase_if(StandIns::applications(), [&](const StandIns::Application& application) {
            return application.identifier == identifier && application.isTerminated;
        });
    }
};

using RunningApplicationsKinds = testing::Types<FakeApplicationsKind, WorkspaceKind>;

} // namespace quillane
