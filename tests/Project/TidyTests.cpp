// Which sources clang-tidy is given: seen in a copy of the script, with programs that only answer and note.
#include "SourceTree.h"
#include "TemporaryFolder.h"
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <set>
#include <sstream>
#include <string>

namespace {
namespace fs = std::filesystem;
using quillane::TemporaryFolder;

class Tidy : public ::testing::Test {
  protected:
    Tidy() {
        fs::create_directories(m_checkout / "tools");
        fs::copy_file(fs::path(QUILLANE_SOURCE_DIR) / "tools/tidy", m_checkout / "tools/tidy");
        program("git", "printf '%s\\n' src/Both.cpp src/Mac/Here.cpp src/Mac/There.cpp tools/one.cpp");
        program("clang-tidy-19", "for file; do :; done\necho \"$file\" >>'" + m_disk.at("read") + "'");
        fs::create_directories(m_checkout / "build/asan");
    }

    // A build whose commands are for these sources.
    void builds(const std::set<std::string>& sources) const {
        std::ofstream commands(m_checkout / "build/asan/compile_commands.json");
        commands << "[\n";
        for (const auto& source : sources) {
            const auto path = (m_checkout / source).string();
            commands << "{\n  \"directory\": \"/build\",\n  \"command\": \"c++ -c " << path
                     << "\",\n  \"file\": \"" << path << "\"\n},\n";
        }
        commands << "{ }\n]\n";
    }

    int run() const {
        const std::string command = "PATH='" + m_disk.at("programs") + "':\"$PATH\" '" + m_checkout.string() +
                                    "/tools/tidy' >/dev/null 2>&1";
        const int status = std::system(command.c_str());
        return WEXITSTATUS(status);
    }

    std::set<std::string> read() const {
        std::istringstream lines(readFile(m_disk.at("read")));
        std::set<std::string> found;
        for (std::string line; std::getline(lines, line);) {
            found.insert(line);
        }
        return found;
    }

  private:
    void program(const std::string& name, const std::string& text) const {
        const fs::path path = m_disk.at("programs/" + name);
        fs::create_directories(path.parent_path());
        std::ofstream(path) << "#!/bin/sh\n" << text << "\n";
        fs::permissions(path, fs::perms::owner_all);
    }

    const TemporaryFolder m_disk;
    const fs::path m_checkout = fs::canonical(m_disk.path()) / "checkout";
};

TEST_F(Tidy, ReadsEachSourceThatThisSystemsBuildCompilesWhereverItLies) {
    builds({"src/Both.cpp", "src/Mac/Here.cpp", "tools/one.cpp", "tests/NotOfTheProduct.cpp"});
    ASSERT_EQ(run(), 0);
    EXPECT_EQ(read(), (std::set<std::string>{"src/Both.cpp", "src/Mac/Here.cpp", "tools/one.cpp"}));
}

TEST_F(Tidy, ThatWouldReadNothingFails) {
    builds({"tests/NotOfTheProduct.cpp"});
    EXPECT_EQ(run(), 2);
    EXPECT_TRUE(read().empty());
}

} // namespace
