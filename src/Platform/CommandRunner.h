#pragma once
#include "Result.h"
#include "StopToken.h"
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace quillane {

// Runs programs of the system.
class CommandRunner {
  public:
    static constexpr std::size_t kUnbounded = std::numeric_limits<std::size_t>::max();
    // What becomes of what a program writes to its standard error: nothing, or it is output too, in the order in
    // which both are written.
    enum class ErrorOutput { dropped, joined };

    virtual ~CommandRunner() = default;

    // Runs the program at `path` with these arguments (never through a shell), reads its standard output to
    // the end and waits for its exit. The exit status is not looked at. The bytes are returned as they came.
    // Fails when the program can't be started; with kUserCancelled when stop is requested, however far it got,
    // also before it began; with kReadTooLarge when it writes more than `mostBytes`. In the last two cases the
    // program is ended, with what it started in turn, and what it wrote is dropped. No time limit. Blocks; any
    // thread, many at once.
    Result<std::string> run(const std::string& path, const std::vector<std::string>& arguments,
                            const StopToken& stop = {}, std::size_t mostBytes = kUnbounded,
                            ErrorOutput errors = ErrorOutput::dropped) {
        if (stop.stopRequested()) {
            return PlatformError{ErrorCode::kUserCancelled, std::nullopt};
        }
        auto output = outputOf({path, arguments, stop, mostBytes, errors});
        if (stop.stopRequested()) {
            return PlatformError{ErrorCode::kUserCancelled, std::nullopt};
        }
        if (output && output->size() > mostBytes) {
            return PlatformError{ErrorCode::kReadTooLarge, std::nullopt};
        }
        return output;
    }

    // The number of the user as whom programs run.
    virtual std::uint32_t userID() const = 0;

  protected:
    // What run() was asked for; lives as long as the call.
    struct Run {
        const std::string& path;
        const std::vector<std::string>& arguments;
        const StopToken& stop;
        std::size_t mostBytes;
        ErrorOutput errors;
    };

    // The output, or why the program can't be started. When stop is requested or the output grows beyond the
    // bound, an adapter ends what it began and returns anything of no more use, such as what came so far with one
    // byte too many: run() tells the failure.
    virtual Result<std::string> outputOf(const Run& run) = 0;
};

} // namespace quillane
