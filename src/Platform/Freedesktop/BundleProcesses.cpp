#include "BundleProcesses.h"
#include "PropertyList.h"
#include <array>
#include <charconv>
#include <climits>
#include <csignal>
#include <dirent.h>
#include <memory>
#include <optional>
#include <string_view>
#include <unistd.h>
#include <utility>

namespace quillane {
namespace {

struct CloseDirectory {
    void operator()(DIR* directory) const { ::closedir(directory); }
};

// The bundle that an executable lies in; nothing for an executable outside of one.
std::optional<FileURL> bundleOf(std::string_view executable) {
    const auto inside = executable.find(".app/Contents/");
    if (inside == std::string_view::npos) {
        return std::nullopt;
    }
    return FileURL(std::string(executable.substr(0, inside + std::string_view(".app").size())));
}

std::optional<std::string> identifierOf(const FileSystem& files, const FileURL& bundle) {
    const auto bytes = files.read(bundle.appending("Contents/Info.plist"), PropertyList::Limits().bytes + 1);
    if (!bytes) {
        return std::nullopt;
    }
    const auto parsed = PropertyList::parse(*bytes);
    const auto* info = parsed ? PropertyList::asDictionary(&*parsed) : nullptr;
    return info == nullptr ? std::nullopt : PropertyList::asString(info->find("CFBundleIdentifier"));
}

} // namespace

BundleProcesses::BundleProcesses(const FileSystem& files, std::string processFolder)
    : m_files(files)
    , m_processFolder(std::move(processFolder)) {}

std::vector<int> BundleProcesses::processes(const std::string& bundleIdentifier) const {
    const std::unique_ptr<DIR, CloseDirectory> directory(::opendir(m_processFolder.c_str()));
    std::vector<int> found;
    // NOLINTNEXTLINE(concurrency-mt-unsafe): nobody else reads this directory
    while (const dirent* entry = directory ? ::readdir(directory.get()) : nullptr) {
        const std::string_view name = entry->d_name;
        int process = 0;
        const auto parsed = std::from_chars(name.data(), name.data() + name.size(), process);
        if (parsed.ec != std::errc() || parsed.ptr != name.data() + name.size() || process <= 1) {
            continue;
        }
        const std::string link = m_processFolder + "/" + std::string(name) + "/exe";
        std::array<char, PATH_MAX> executable{};
        const auto length = ::readlink(link.c_str(), executable.data(), executable.size());
        if (length <= 0) {
            continue; // not ours, or gone
        }
        const auto bundle = bundleOf({executable.data(), static_cast<std::size_t>(length)});
        if (bundle && identifierOf(m_files, *bundle) == bundleIdentifier) {
            found.push_back(process);
        }
    }
    return found;
}

bool BundleProcesses::isRunning(const std::string& bundleIdentifier) const {
    return !processes(bundleIdentifier).empty();
}

void BundleProcesses::terminate(const std::string& bundleIdentifier) {
    for (const int process : processes(bundleIdentifier)) {
        ::kill(process, SIGTERM);
    }
}

} // namespace quillane
