#pragma once
#include "ManualClock.h"
#include "Sleep.h"
#include "StepTaskRunner.h"
#include "TaskScope.h"
#include <exception>
#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace quillane {

// A scope on a stepped runner and a manual clock.
class AsyncTest : public testing::Test {
  protected:
    StepTaskRunner runner;
    ManualClock clock{runner};
    std::exception_ptr error; // what left a task of the scope
    std::unique_ptr<TaskScope> scope =
        std::make_unique<TaskScope>(runner, [this](std::exception_ptr thrown) { error = std::move(thrown); });

    Sleep after(Duration duration, StopToken stop) { return Sleep(runner, clock, duration, std::move(stop)); }
};

// The message of an exception; empty for none.
inline std::string messageOf(const std::exception_ptr& error) {
    if (!error) {
        return {};
    }
    try {
        std::rethrow_exception(error);
    } catch (const std::exception& exception) {
        return exception.what();
    }
}

} // namespace quillane
