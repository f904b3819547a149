#pragma once
#include "FakeRunningApplications.h"
#include <string>

namespace quillane {

struct FakeApplicationsKind {
    FakeRunningApplications fake;
    RunningApplications& applications() { return fake; }
    void start(const std::string& identifier, bool isStubborn = false) { fake.start(identifier, isStubborn); }
    void waitForEndOf(const std::string&) {}
};

} // namespace quillane
