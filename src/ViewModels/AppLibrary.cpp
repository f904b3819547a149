#include "AppLibrary.h"
#include <utility>

namespace quillane {

AppLibrary::AppLibrary(const Platform& platform)
    : m_platform(platform)
    , m_tasks(platform.tasks) {
    followProtection();
    followOperation();
    followUninstalls();
}

bool AppLibrary::isStoredAnew(std::string_view key, std::optional<Defaults::Value>& known) const {
    auto stored = m_platform.defaults.value(key);
    if (stored == known) {
        return false;
    }
    known = std::move(stored);
    return true;
}

} // namespace quillane
