#include "RecentlyUsedFiles.h"
#include "RecentlyUsed.h"
#include <cstdlib>
#include <utility>

namespace quillane {

struct RecentlyUsedFiles::Known {
    ResourceValues of; // the register as it was when it was read
    RecentlyUsed::Dates dates;
};

RecentlyUsedFiles::RecentlyUsedFiles(const FileSystem& files, FileURL registry)
    : m_files(files)
    , m_registry(std::move(registry)) {}

FileURL RecentlyUsedFiles::registryOfThisUser(const FileURL& home) {
    constexpr const char* kName = "recently-used.xbel";
    const char* dataHome =
        std::getenv("XDG_DATA_HOME");                // NOLINT(concurrency-mt-unsafe): the header says when
    if (dataHome != nullptr && dataHome[0] == '/') { // a relative path is to be ignored
        return FileURL(dataHome).appending(kName);
    }
    return home.appending(".local/share").appending(kName);
}

std::optional<Date> RecentlyUsedFiles::lastUsed(const FileURL& url) const {
    const auto registered = known();
    if (!registered) {
        return std::nullopt;
    }
    const auto found = registered->dates.find(url);
    return found == registered->dates.end() ? std::nullopt : std::optional(found->second);
}

// One call of the system for each question, so that a program that writes the register is heard of at once.
std::shared_ptr<const RecentlyUsedFiles::Known> RecentlyUsedFiles::known() const {
    const auto values = m_files.resourceValues(m_registry);
    if (!values) {
        return nullptr;
    }
    const std::lock_guard lock(m_mutex);
    if (!m_known || m_known->of != *values) {
        // One byte beyond the limit, so that a register that is too large is seen to be.
        const auto bytes = m_files.read(m_registry, RecentlyUsed::kMostBytes + 1);
        m_known = std::make_shared<const Known>(
            Known{*values, bytes ? RecentlyUsed::parse(*bytes) : RecentlyUsed::Dates()});
    }
    return m_known;
}

} // namespace quillane
