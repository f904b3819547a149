// What is known of running applications, over this system's and over the fake.
#include "RunningApplicationsKinds.h"
#include <gtest/gtest.h>

namespace quillane {
namespace {

template <class Kind>
struct RunningApplicationsContract : testing::Test {
    Kind kind;
    RunningApplications& applications = kind.applications();
};

TYPED_TEST_SUITE(RunningApplicationsContract, RunningApplicationsKinds);

TYPED_TEST(RunningApplicationsContract, WhatNobodyStartedDoesNotRunAndIsAskedForNothing) {
    this->kind.start("org.example.one");
    for (const char* other : {"org.example.two", "org.example.on", "org.example.one.helper", ""}) {
        EXPECT_FALSE(this->applications.isRunning(other)) << other;
        this->applications.terminate(other);
    }
    EXPECT_TRUE(this->applications.isRunning("org.example.one"));
}

TYPED_TEST(RunningApplicationsContract, WhatRunsEndsWhenItIsAskedAndNothingElseDoes) {
    this->kind.start("org.example.one");
    this->kind.start("org.example.two");
    this->applications.terminate("org.example.one");
    this->kind.waitForEndOf("org.example.one");
    EXPECT_FALSE(this->applications.isRunning("org.example.one"));
    EXPECT_TRUE(this->applications.isRunning("org.example.two"));
}

TYPED_TEST(RunningApplicationsContract, EachOfSeveralWithOneIdentifierIsAsked) {
    this->kind.start("org.example.one");
    this->kind.start("org.example.one");
    EXPECT_TRUE(this->applications.isRunning("org.example.one"));
    this->applications.terminate("org.example.one");
    this->kind.waitForEndOf("org.example.one");
    EXPECT_FALSE(this->applications.isRunning("org.example.one"));
}

TYPED_TEST(RunningApplicationsContract, OneThatDoesNotWantToEndIsNotForced) {
    this->kind.start("org.example.one", true);
    this->applications.terminate("org.example.one");
    this->applications.terminate("org.example.one");
    EXPECT_TRUE(this->applications.isRunning("org.example.one"));
}

} // namespace
} // namespace quillane
