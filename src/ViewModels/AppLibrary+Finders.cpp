// What a finder joins, each as one row of a table, and all that works from the table.
#include "AppLibrary.h"
#include <algorithm>
#include <array>

namespace quillane {
namespace {

template <auto List>
int sizeOf(const AppLibrary& library) {
    return static_cast<int>((library.*List)->size());
}

template <auto List>
void addLocations(const AppLibrary& library, std::unordered_set<FileURL>& locations) {
    for (const auto& item : *(library.*List)) {
        locations.insert(item.url);
    }
}

template <auto List>
void dropGone(AppLibrary& library, const std::unordered_set<FileURL>& gone) {
    const auto isGone = [&](const auto& item) { return gone.contains(item.url); };
    if (std::ranges::any_of(*(library.*List), isGone)) {
        (library.*List).modify([&](auto& list) { std::erase_if(list, isGone); });
    }
}

} // namespace

std::span<const AppLibrary::Finder> AppLibrary::finders() {
    static constexpr std::array kFinders = {
        Finder{.section = LibrarySection::orphans,
               .category = SweepCategory::orphans,
               .badge = [](const AppLibrary& library) { return library.orphanGroupCount(); },
               .find = &AppLibrary::findOrphans,
               .mayReuse = nullptr,
               .plan = &AppLibrary::orphanPlan,
               .addLocations = addLocations<&AppLibrary::orphans>,
               .forget = dropGone<&AppLibrary::orphans>},
        Finder{.section = LibrarySection::developer,
               .category = SweepCategory::developer,
               .badge = sizeOf<&AppLibrary::developerCaches>,
               .find = &AppLibrary::findDeveloperCaches,
               .mayReuse = &AppLibrary::mayReuseDeveloperCaches,
               .plan = &AppLibrary::developerPlan,
               .addLocations = addLocations<&AppLibrary::developerCaches>,
               .forget = dropGone<&AppLibrary::developerCaches>},
        Finder{.section = LibrarySection::files,
               .category = SweepCategory::files,
               .badge = sizeOf<&AppLibrary::files>,
               .find = nullptr,
               .mayReuse = nullptr,
               .plan = nullptr,
               .addLocations = addLocations<&AppLibrary::files>,
               .forget = dropGone<&AppLibrary::files>},
        Finder{.section = LibrarySection::startup,
               .category = SweepCategory::startup,
               .badge = [](const AppLibrary& library) { return library.startupProblemCount(); },
               .find = nullptr,
               .mayReuse = nullptr,
               .plan = nullptr,
               .addLocations = addLocations<&AppLibrary::startupItems>,
               .forget = dropGone<&AppLibrary::startupItems>},
        Finder{.section = LibrarySection::duplicates,
               .category = SweepCategory::files,
               .badge = sizeOf<&AppLibrary::duplicates>,
               .find = nullptr,
               .mayReuse = nullptr,
               .plan = nullptr,
               .addLocations =
                   [](const AppLibrary& library, std::unordered_set<FileURL>& locations) {
                       for (const auto& group : *library.duplicates) {
                           for (const auto& file : group.files) {
                               locations.insert(file.url);
                           }
                       }
                   },
               .forget = [](AppLibrary& library,
                            const std::unordered_set<FileURL>& gone) { library.forgetCopies(gone); }},
    };
    return kFinders;
}

Task<> AppLibrary::findAll(int generation, ScanReason reason, StopToken stop) {
    for (const auto& finder : finders()) {
        const bool isKept = finder.mayReuse != nullptr && (this->*finder.mayReuse)(reason);
        if (finder.find == nullptr || isKept) {
            continue;
        }
        co_await (this->*finder.find)(generation, reason, stop);
        if (isStale(generation)) {
            co_return;
        }
    }
}

int AppLibrary::badge(LibrarySection section) const {
    if (section == LibrarySection::applications) {
        return visibleAppCount();
    }
    const auto finder = std::ranges::find(finders(), section, &Finder::section);
    return finder == finders().end() ? 0 : finder->badge(*this);
}

SweepPlan AppLibrary::planOfFinders(SweepCategory category, SweepPlan::Keeps keeps) const {
    for (const auto& finder : finders()) {
        if (finder.category == category && finder.plan != nullptr) {
            return (this->*finder.plan)(keeps);
        }
    }
    return SweepPlan(keeps); // reached only through a removal that the user asks for
}

// Most rows of a sweep are in no list, and to read all lists for each of them would cost rows times items.
void AppLibrary::forgetFound(const std::unordered_set<FileURL>& gone) {
    if (!m_found) {
        m_found.emplace();
        for (const auto& finder : finders()) {
            finder.addLocations(*this, *m_found);
        }
    }
    if (std::ranges::none_of(gone, [&](const FileURL& url) { return m_found->erase(url) > 0; })) {
        return;
    }
    for (const auto& finder : finders()) {
        finder.forget(*this, gone);
    }
}

} // namespace quillane
