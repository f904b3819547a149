#pragma once
#include "BundleProcesses.h"
#include "FakeApplicationsKind.h"
#include "PosixFileSystem.h"
#include "TemporaryFolder.h"
#include <array>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace quillane {

// Processes of programs that lie in bundles. They wait for this process to end.
class ProcessesKind {
  public:
    ProcessesKind() { EXPECT_EQ(::pipe2(m_pipe.data(), O_CLOEXEC), 0); }
    ~ProcessesKind() {
        for (const auto& process : m_processes) {
            ::kill(process.id, SIGKILL);
            ::waitpid(process.id, nullptr, 0);
        }
        ::close(m_pipe[0]);
        ::close(m_pipe[1]);
    }
    ProcessesKind(const ProcessesKind&) = delete;
    ProcessesKind& operator=(const ProcessesKind&) = delete;

    RunningApplications& applications() { return m_applications; }

    void start(const std::string& identifier, bool isStubborn = false) {
        const auto bundle = identifier + ".app/Contents/";
        m_folder.file(bundle + "Info.plist", "<plist><dict><key>CFBundleIdentifier</key><string>" +
                                                 identifier + "</string></dict></plist>");
        const auto program = m_folder.at(bundle + "run");
        std::filesystem::copy_file("/bin/cat", program, std::filesystem::copy_options::skip_existing);
        posix_spawn_file_actions_t actions;
        ::posix_spawn_file_actions_init(&actions);
        ::posix_spawn_file_actions_adddup2(&actions, m_pipe[0], STDIN_FILENO);
        std::array<char*, 2> words{const_cast<char*>(program.c_str()), nullptr};
        const auto before =
            std::signal(SIGTERM, isStubborn ? SIG_IGN : SIG_DFL); // a program starts with what stands
        pid_t id = 0;
        EXPECT_EQ(::posix_spawn(&id, program.c_str(), &actions, nullptr, words.data(), environ), 0);
        std::signal(SIGTERM, before);
        ::posix_spawn_file_actions_destroy(&actions);
        m_processes.push_back({identifier, id});
    }
    void waitForEndOf(const std::string& identifier) {
        std::erase_if(m_processes, [&](const Process& process) {
            return process.identifier == identifier && ::waitpid(process.id, nullptr, 0) == process.id;
        });
    }

  private:
    struct Process {
        std::string identifier;
        pid_t id = 0;
    };
    TemporaryFolder m_folder;
    PosixFileSystem m_files;
    BundleProcesses m_applications{m_files};
    std::array<int, 2> m_pipe{-1, -1};
    std::vector<Process> m_processes;
};

using RunningApplicationsKinds = testing::Types<FakeApplicationsKind, ProcessesKind>;

} // namespace quillane
