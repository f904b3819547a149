#include "LeftoverIndex.h"
#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <string>

namespace quillane {
namespace {

constexpr int kApps = 40;
constexpr int kLocations = 120; // fewer than leftovers, so that some belong to several applications

FileURL location(int number) {
    return FileURL("/leftovers/" + std::to_string(number));
}

bool holds(const InstalledApp& app, const FileURL& url) {
    return std::ranges::any_of(app.leftovers, [&](const LeftoverItem& item) { return item.url == url; });
}

// What the index is to answer, by looking at every application.
std::set<std::size_t> holdersByLooking(const std::vector<InstalledApp>& apps, const FileURL& url) {
    std::set<std::size_t> places;
    for (std::size_t i = 0; i < apps.size(); ++i) {
        if (holds(apps[i], url)) {
            places.insert(i);
        }
    }
    return places;
}

TEST(LeftoverIndex, AnswersAsALookAtEveryApplicationWouldHoweverManyHaveLeft) {
    for (unsigned seed = 1; seed <= 20; ++seed) {
        std::mt19937 random(seed);
        const auto below = [&](std::size_t end) {
            return std::uniform_int_distribution<std::size_t>(0, end - 1)(random);
        };
        std::vector<InstalledApp> apps(kApps);
        for (auto& app : apps) {
            for (int i = 0; i < 5; ++i) {
                LeftoverItem item;
                item.url = location(static_cast<int>(below(kLocations)));
                app.leftovers.push_back(item);
            }
        }
        LeftoverIndex index(apps);
        while (!apps.empty()) {
            const auto url = location(static_cast<int>(below(kLocations)));
            ASSERT_EQ(index.take({url}), holdersByLooking(apps, url)) << "seed " << seed;
            for (auto& app : apps) {
                std::erase_if(app.leftovers, [&](const LeftoverItem& item) { return item.url == url; });
            }
            std::set<std::size_t> leaving;
            for (std::size_t i = below(3); i > 0; --i) {
                leaving.insert(below(apps.size()));
            }
            index.appsLeft({leaving.begin(), leaving.end()});
            for (auto place = leaving.rbegin(); place != leaving.rend(); ++place) {
                apps.erase(apps.begin() + static_cast<std::ptrdiff_t>(*place));
            }
        }
    }
}

TEST(LeftoverIndex, SeveralLocationsAreAskedForAtOnceAndEachIsToldOnce) {
    std::vector<InstalledApp> apps(3);
    LeftoverItem item;
    item.url = location(1);
    apps[0].leftovers = {item};
    apps[2].leftovers = {item};
    item.url = location(2);
    apps[1].leftovers = {item};
    LeftoverIndex index(apps);
    EXPECT_EQ(index.take({location(1), location(2), location(3)}), (std::set<std::size_t>{0, 1, 2}));
    EXPECT_TRUE(index.take({location(1), location(2)}).empty());
}

} // namespace
} // namespace quillane
