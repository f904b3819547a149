#include "OneInstance.h"
#include <algorithm>

namespace quillane::OneInstance {
namespace {

void awaitEnd(const System& system, int process) {
    while (system.isThere(process)) {
        system.pause(kBetweenLooks);
    }
}

void awaitEnds(const System& system, const std::vector<int>& others) {
    for (auto waited = std::chrono::milliseconds(0);
         waited < kPatience && std::ranges::any_of(others, system.isThere); waited += kBetweenLooks) {
        system.pause(kBetweenLooks);
    }
}

} // namespace

bool isSecond(const System& system, bool isRelaunched) {
    const auto others = system.others();
    if (isRelaunched && !others.empty()) {
        awaitEnd(system, others.front());
        awaitEnds(system, others);
    }
    const auto comesForward = [&system](int process) {
        return system.isThere(process) && system.bringForward(process);
    };
    return std::ranges::any_of(others, comesForward) || std::ranges::any_of(others, system.isThere);
}

} // namespace quillane::OneInstance
