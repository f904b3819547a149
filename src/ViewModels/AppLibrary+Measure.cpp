#include "AppLibrary.h"
#include "FootprintCalculator.h"
#include "Group.h"
#include "LeftoverFinder.h"
#include "ScanPace.h"
#include <algorithm>
#include <cstddef>
#include <utility>

namespace quillane {

// A batch ends before the next one begins, so one slow bundle holds back its batch: the price of bounding
// what runs at once without a queue of work.
Task<> AppLibrary::measureAll(int generation, ScanReason reason, StopToken stop) {
    const auto snapshot = *apps;
    if (snapshot.empty()) {
        co_return;
    }
    IndexByURL indexByURL;
    for (std::size_t i = 0; i < snapshot.size(); ++i) {
        indexByURL[snapshot[i].url] = i; // of two at one location the later is filled in
    }
    const auto total = static_cast<int>(snapshot.size());
    int done = 0;
    phase = Phase{Phase::Kind::measuring, done, total};

    const auto pace = ScanPace::of(reason);
    for (std::size_t begin = 0; begin < snapshot.size(); begin += pace.bundlesAtOnce) {
        if (isStale(generation)) {
            co_return;
        }
        const auto end = std::min(begin + pace.bundlesAtOnce, snapshot.size());
        std::vector<Group<Measurement>::Child> children;
        for (auto i = begin; i < end; ++i) {
            children.emplace_back([platform = m_platform, app = snapshot[i], stop] {
                Measurement measured{app.url, FootprintCalculator::size(platform, app.url, stop), {}};
                if (app.source != AppSource::system) {
                    measured.leftovers = LeftoverFinder::leftovers(platform, app, stop);
                }
                return measured;
            });
        }
        auto results = co_await Group<Measurement>(m_platform.tasks, pace.measuring, std::move(children));
        if (isStale(generation)) {
            co_return;
        }
        for (auto& measured : results) {
            publish(std::move(measured), indexByURL);
        }
        done += static_cast<int>(results.size());
        phase = Phase{Phase::Kind::measuring, done, total};
    }
}

// A removal during the scan may have shortened the list, but nothing joins it and the order stays: what stands at
// its place no more stands before it, or nowhere.
void AppLibrary::publish(Measurement measured, const IndexByURL& indexByURL) {
    const auto found = indexByURL.find(measured.url);
    if (found == indexByURL.end()) {
        return;
    }
    auto place = std::min(found->second + 1, apps->size());
    while (place > 0 && (*apps)[place - 1].url != measured.url) {
        --place;
    }
    if (place == 0) {
        return; // it has gone
    }
    m_holders.reset(); // new leftovers
    apps.modify([index = place - 1, &measured](std::vector<InstalledApp>& list) {
        auto& app = list[index];
        app.bundleBytes = measured.bundleBytes;
        app.leftovers = std::move(measured.leftovers);
        app.isMeasured = true;
    });
}

} // namespace quillane
