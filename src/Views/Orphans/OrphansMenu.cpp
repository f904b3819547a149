#include "Orphans/OrphansMenu.h"
#include "AppLibrary.h"
#include "Tables/RecordsWithKeys.h"
#include <utility>

namespace quillane {

namespace {

std::vector<OrphanGroup> groupsOf(const AppLibrary& library, const std::vector<std::string>& vendors) {
    return recordsWithKeys(OrphanGroup::grouped(library.orphans.get()), &OrphanGroup::vendor, vendors);
}

} // namespace

QMenu* makeOrphansMenu(AppLibrary& library, const std::vector<std::string>& vendors,
                       MenuEntries::Present present, QWidget* parent) {
    const auto groups = groupsOf(library, vendors);
    if (groups.empty()) {
        return nullptr;
    }
    std::vector<FileURL> urls;
    QStringList identifiers;
    std::size_t sweepable = 0;
    for (const auto& group : groups) {
        for (const auto& item : group.items) {
            urls.push_back(item.url);
            identifiers << MenuEntries::rawText(item.identifier);
        }
        sweepable += library.sweepableItems(group).size();
    }

    auto* const menu = MenuEntries::makeMenu(parent);
    MenuEntries::addReveal(*menu, library, urls);
    MenuEntries::addCopy(*menu, QStringLiteral("Copy Identifiers"), identifiers);
    menu->addSeparator();
    MenuEntries::addProtection(*menu, library, urls, QStringLiteral("Never Touch This"));
    menu->addSeparator();
    auto* const move =
        MenuEntries::add(*menu, QStringLiteral("Move %1 Files to Trash…").arg(MenuEntries::number(sweepable)),
                         [&library, vendors, present = std::move(present)] {
                             present(library.removalForOrphanGroups(groupsOf(library, vendors)));
                         });
    MenuEntries::markDestructive(move)->setEnabled(sweepable > 0);
    return menu;
}

} // namespace quillane
