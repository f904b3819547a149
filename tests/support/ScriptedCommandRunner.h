#pragma once
#include "CommandRunner.h"
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace quillane {

// Programs that exist only as a table from their path and arguments to their output. What is not in the table
// can't be started. Calls are kept in their order. Any thread.
class ScriptedCommandRunner final : public CommandRunner {
  public:
    struct Call {
        std::string path;
        std::vector<std::string> arguments;
        friend bool operator==(const Call&, const Call&) = default;
        friend auto operator<=>(const Call&, const Call&) = default;
    };

    // From now on this call writes `output`, and then `errors` to its standard error.
    void answer(std::string path, std::vector<std::string> arguments, std::string output,
                std::string errors = {}) {
        set({std::move(path), std::move(arguments)}, Written{std::move(output), std::move(errors)});
    }
    // From now on this call can't be started.
    void fail(std::string path, std::vector<std::string> arguments,
              PlatformError error = {ErrorCode::kReadNoSuchFile, std::nullopt}) {
        set({std::move(path), std::move(arguments)}, error);
    }

    std::uint32_t userID() const override { return kUserID; }

    static constexpr std::uint32_t kUserID = 501;

    std::vector<Call> calls() const {
        const std::lock_guard lock(m_mutex);
        return m_calls;
    }

  protected:
    Result<std::string> outputOf(const Run& run) override {
        const std::lock_guard lock(m_mutex);
        const auto& call = m_calls.emplace_back(Call{run.path, run.arguments});
        const auto found = m_answers.find(call);
        if (found == m_answers.end()) {
            return PlatformError{ErrorCode::kReadNoSuchFile, std::nullopt};
        }
        if (!found->second) {
            return found->second.error();
        }
        const auto& [output, errors] = *found->second;
        return run.errors == ErrorOutput::joined ? output + errors : output;
    }

  private:
    struct Written {
        std::string output;
        std::string errors;
    };

    void set(Call call, Result<Written> answer) {
        const std::lock_guard lock(m_mutex);
        m_answers.insert_or_assign(std::move(call), std::move(answer));
    }

    mutable std::mutex m_mutex; // guards both
    std::map<Call, Result<Written>> m_answers;
    std::vector<Call> m_calls;
};

} // namespace quillane
