#include "OneInstance.h"
#include <algorithm>
#include <utility>

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

// Of which nothing is told was there before, and so was what was launched in the future: the clock has been put back.
bool isAfter(const System& system, int other) {
    const auto own = system.launched(system.own);
    const auto launched = system.launched(other);
    return own && launched && *launched <= system.now() &&
           std::pair(*own, system.own) < std::pair(*launched, other);
}

// The first of several of which nothing is told.
int oldestOf(const System& system, const std::vector<int>& others) {
    return *std::ranges::min_element(others, {}, [&system](int other) { return system.launched(other); });
}

} // namespace

bool isSecond(const System& system, bool isRelaunched) {
    auto others = system.others();
    // They find this one, and end.
    std::erase_if(others, [&system](int other) { return isAfter(system, other); });
    if (isRelaunched && !others.empty()) {
        awaitEnd(system, oldestOf(system, others));
        awaitEnds(system, others);
    }
    const auto comesForward = [&system](int process) {
        return system.isThere(process) && system.bringForward(process);
    };
    return std::ranges::any_of(others, comesForward) || std::ranges::any_of(others, system.isThere);
}

} // namespace quillane::OneInstance
