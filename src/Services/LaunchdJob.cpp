#include "LaunchdJob.h"
#include "FileSystem.h"
#include "PropertyList.h"
#include <algorithm>
#include <array>
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

std::optional<std::string> program(const PropertyList::Dictionary& job) {
    if (auto named = PropertyList::asString(job.find("Program"))) {
        return named;
    }
    return PropertyList::asStringArray(job.find("ProgramArguments")) ? firstArgument(job) : std::nullopt;
}

bool keepAlive(const PropertyList::Dictionary& job) {
    const auto* const value = job.find("KeepAlive");
    return PropertyList::asBool(value).value_or(PropertyList::asDictionary(value) != nullptr);
}

} // namespace

std::optional<Description> read(const Platform& platform, const FileURL& propertyList) {
    // One byte beyond the limit, so that a list that is too large is seen to be.
    const auto bytes = platform.files.read(propertyList, kLargestList + 1);
    if (!bytes) {
        return std::nullopt;
    }
    const auto parsed = PropertyList::parse(*bytes, {.bytes = kLargestList});
    const auto* const job = parsed ? PropertyList::asDictionary(&*parsed) : nullptr;
    if (job == nullptr) {
        return std::nullopt;
    }
    return Description{.label = PropertyList::asString(job->find("Label")),
                       .program = program(*job),
                       .firstArgument = firstArgument(*job),
                       .runAtLoad = PropertyList::asBool(job->find("RunAtLoad")).value_or(false),
                       .keepAlive = keepAlive(*job),
                       .interval = PropertyList::asInt(job->find("StartInterval"))};
}

// A path that begins neither at the root nor is a bare name is none that anybody could resolve: launchd promises no
// working folder.
bool isThere(const Platform& platform, const std::string& program) {
    if (program.starts_with('/')) {
        return platform.files.exists(FileURL(program));
    }
    return !program.empty() && program.find('/') == std::string::npos &&
           std::ranges::any_of(kProgramFolders, [&](std::string_view folder) {
               return platform.files.exists(FileURL(std::string(folder)).appending(program));
           });
}

bool hasItsProgram(const Platform& platform, const FileURL& propertyList) {
    if (!propertyList.lastPathComponent().ends_with(kSuffix)) {
        return false;
    }
    const auto job = read(platform, propertyList);
    const auto program = job && !job->program ? job->firstArgument : job ? job->program : std::nullopt;
    return program && isThere(platform, *program);
}

} // namespace quillane::LaunchdJob
