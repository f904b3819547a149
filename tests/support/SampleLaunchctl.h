#pragma once
#include "CommandRunner.h"
#include <algorithm>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace quillane {

// A launchd that has some jobs of the user loaded, behind the system's own program: "list" tells them, and "bootout"
// lets go of one for as long as this lives. Every other program is the wrapped runner's. Any thread.
class SampleLaunchctl final : public CommandRunner {
  public:
    static constexpr const char* kProgram = "/bin/launchctl";

    SampleLaunchctl(std::vector<std::string> loaded, CommandRunner& others)
        : m_others(others)
        , m_loaded(std::move(loaded)) {}

    std::uint32_t userID() const override { return m_others.userID(); }

    std::vector<std::string> loaded() const {
        const std::lock_guard lock(m_mutex);
        return m_loaded;
    }

  protected:
    Result<std::string> outputOf(const Run& run) override {
        if (run.path != kProgram) {
            return m_others.run(run.path, run.arguments, run.stop, run.mostBytes, run.errors);
        }
        const std::lock_guard lock(m_mutex);
        const auto command = run.arguments.empty() ? std::string() : run.arguments.front();
        if (command == "list" && run.arguments.size() == 1) {
            return list();
        }
        const auto complaint = command == "bootout" && run.arguments.size() == 2
                                   ? bootOut(run.arguments[1])
                                   : "Unrecognized subcommand: " + command + "\n";
        return run.errors == ErrorOutput::joined ? complaint : std::string();
    }

  private:
    std::string list() const {
        std::string output = "PID\tStatus\tLabel\n";
        for (const auto& label : m_loaded) {
            output.append("-\t0\t").append(label).append("\n");
        }
        return output;
    }
    // What it complains of.
    std::string bootOut(const std::string& target) {
        const auto domain = "gui/" + std::to_string(userID()) + "/";
        const auto job = std::ranges::find_if(
            m_loaded, [&](const std::string& label) { return target == domain + label; });
        if (job == m_loaded.end()) {
            return "Boot-out failed: 3: No such process\n";
        }
        m_loaded.erase(job);
        return {};
    }

    CommandRunner& m_others;
    mutable std::mutex m_mutex; // guards the jobs
    std::vector<std::string> m_loaded;
};

} // namespace quillane
