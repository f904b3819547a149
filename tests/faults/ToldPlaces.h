#pragma once
#include "RealHome.h"
#include <gtest/gtest.h>
#include <ostream>

namespace quillane {

inline void PrintTo(const FileURL& url, std::ostream* out) {
    *out << url.path();
}

inline std::set<FileURL> urlsOf(const std::vector<Uninstaller::Failure>& failures) {
    std::set<FileURL> urls;
    for (const auto& failure : failures) {
        urls.insert(failure.url);
    }
    return urls;
}

// Each item is there once, whole, and where it was told to be; one in the Trash has its record.
template <class Adapters>
void expectTold(const RealHome& home, const std::vector<std::string>& items,
                const std::set<FileURL>& toldAtHome, const std::set<FileURL>& toldInTrash) {
    std::set<FileURL> atHome;
    std::set<FileURL> inTrash;
    for (const auto& item : items) {
        const auto places = placesOf<Adapters>(home, item);
        ASSERT_EQ(places.size(), 1U) << item;
        const bool isHome = places[0] == home.path(item);
        (isHome ? atHome : inTrash).insert(Adapters::url(home, item));
        if (Adapters::kHasRecords && !isHome) {
            EXPECT_EQ(recordedOrigin(places[0]), home.path(item).string());
        }
    }
    EXPECT_EQ(toldAtHome, atHome);
    EXPECT_EQ(toldInTrash, inTrash);
}

} // namespace quillane
