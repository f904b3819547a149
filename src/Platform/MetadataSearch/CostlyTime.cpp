#include "CostlyTime.h"
#include <algorithm>

namespace quillane {
namespace {

bool isSame(const std::weak_ptr<const void>& one, const std::weak_ptr<const void>& other) {
    return !one.owner_before(other) && !other.owner_before(one);
}

} // namespace

Duration CostlyTime::left(const StopToken& search) const {
    const std::lock_guard lock(m_mutex);
    const auto found = std::ranges::find_if(
        m_spent, [&](const Spent& spent) { return isSame(spent.search, search.identity()); });
    return found == m_spent.end() ? m_ofEach : std::max(m_ofEach - found->time, Duration::zero());
}

void CostlyTime::spend(const StopToken& search, Duration time) {
    if (!search.stopPossible()) {
        return;
    }
    const std::lock_guard lock(m_mutex);
    std::erase_if(m_spent, [](const Spent& spent) { return spent.search.expired(); });
    const auto found = std::ranges::find_if(
        m_spent, [&](const Spent& spent) { return isSame(spent.search, search.identity()); });
    if (found == m_spent.end()) {
        m_spent.push_back({search.identity(), time});
    } else {
        found->time += time;
    }
}

} // namespace quillane
