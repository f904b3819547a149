#include "EnvironmentVariable.h"
#include "PosixFileSystem.h"
#include "UserHome.h"
#include <gtest/gtest.h>

namespace quillane {
namespace {

constexpr const char* kOverride = "CFFIXED_USER_HOME";

TEST(MacHome, TheAccountDecidesWhateverTheEnvironmentSays) {
    const EnvironmentVariable none(kOverride, nullptr);
    const EnvironmentVariable home("HOME", "/somewhere/else");
    EXPECT_EQ(PosixFileSystem().home(), UserHome::fromAccount());
    EXPECT_NE(PosixFileSystem().home(), FileURL("/somewhere/else"));
    EXPECT_TRUE(PosixFileSystem().exists(PosixFileSystem().home()));
}

TEST(MacHome, TheSystemsOwnVariableOverridesTheAccountWhereItIsAbsolute) {
    const EnvironmentVariable fixed(kOverride, "/somewhere/else/");
    EXPECT_EQ(PosixFileSystem().home(), FileURL("/somewhere/else"));
    const EnvironmentVariable relative(kOverride, "relative/home");
    EXPECT_EQ(PosixFileSystem().home(), UserHome::fromAccount());
}

} // namespace
} // namespace quillane
