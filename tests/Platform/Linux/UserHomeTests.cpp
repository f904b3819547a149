#include "EnvironmentVariable.h"
#include "PosixFileSystem.h"
#include <gtest/gtest.h>

namespace quillane {
namespace {

TEST(UserHome, HomeIsWhatTheEnvironmentSays) {
    const EnvironmentVariable home("HOME", "/somewhere/else/");
    EXPECT_EQ(PosixFileSystem().home(), FileURL("/somewhere/else"));
}

TEST(UserHome, WithoutAnAbsoluteHomeTheAccountDecides) {
    for (const char* value : {static_cast<const char*>(nullptr), "", "relative/home"}) {
        const EnvironmentVariable home("HOME", value);
        const PosixFileSystem files;
        EXPECT_TRUE(files.home().path().starts_with('/'));
        EXPECT_TRUE(files.exists(files.home()));
        EXPECT_FALSE(files.home().path().ends_with("relative/home"));
    }
}

} // namespace
} // namespace quillane
