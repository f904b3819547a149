#include "LaunchdJob.h"
#include "FileSystem.h"
#include "PropertyList.h"
#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace quillane::LaunchdJob {
namespace {

constexpr std::string_view kSuffix = ".plist"; // launchd loads nothing else
// Where launchd looks for a program without a path.
constexpr std::array<std::string_view, 4> kProgramFolders = {"/usr/bin", "/bin", "/usr/sbin", "/sbin"};

std::optional<std::string> firstArgument(const PropertyList::Dictionary& job) {
    const auto* const arguments = PropertyList::asArray(job.find("ProgramArguments"));
    return arguments == nullptr || arguments->empty() ? std::nullopt
                                                      : PropertyList::asString(&arguments->front());
}

// As the list has it; an empty text names nothing.
std::optional<std::string> programOf(const PropertyList::Dictionary& job) {
    auto program = PropertyList::asString(job.find("Program"));
    if (!program) {
        program = firstArgument(job);
    }
    return program && !program->empty() ? program : std::nullopt;
}

// A name without a slash is looked for as launchd does. A path that begins neither at the root nor so is none that
// anybody could resolve: launchd expands no tilde and promises no working folder.
bool isThere(const Platform& platform, const std::string& program) {
    if (program.front() == '/') {
        return platform.files.exists(FileURL(program));
    }
    return program.find('/') == std::string::npos &&
           std::ranges::any_of(kProgramFolders, [&](std::string_view folder) {
               return platform.files.exists(FileURL(std::string(folder)).appending(program));
           });
}

} // namespace

bool hasItsProgram(const Platform& platform, const FileURL& propertyList) {
    if (!propertyList.lastPathComponent().ends_with(kSuffix)) {
        return false;
    }
    // One byte beyond the limit, so that a list that is too large is seen to be.
    const auto bytes = platform.files.read(propertyList, kLargestList + 1);
    if (!bytes) {
        return false;
    }
    const auto parsed = PropertyList::parse(*bytes, {.bytes = kLargestList});
    const auto* const job = parsed ? PropertyList::asDictionary(&*parsed) : nullptr;
    if (job == nullptr) {
        return false;
    }
    const auto program = programOf(*job);
    return program && isThere(platform, *program);
}

} // namespace quillane::LaunchdJob
