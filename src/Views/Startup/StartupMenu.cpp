#include "Startup/StartupMenu.h"
#include "AppLibrary.h"
#include "Tables/RecordsWithKeys.h"
#include <utility>

namespace quillane {

namespace {

std::vector<StartupItem> itemsAt(const AppLibrary& library, const std::vector<FileURL>& urls) {
    return recordsWithKeys(library.startupItems.get(), &StartupItem::url, urls);
}

} // namespace

QMenu* makeStartupMenu(AppLibrary& library, const std::vector<FileURL>& urls, MenuEntries::Present present,
                       QWidget* parent) {
    const auto items = itemsAt(library, urls);
    if (items.empty()) {
        return nullptr;
    }
    std::vector<FileURL> found;
    QStringList labels;
    for (const auto& item : items) {
        found.push_back(item.url);
        labels << MenuEntries::rawText(item.label);
    }
    const bool canMove = !library.removalForStartupItems(items).entries.empty();

    auto* const menu = MenuEntries::makeMenu(parent);
    MenuEntries::addReveal(*menu, library, found);
    MenuEntries::addCopy(
        *menu, found.size() == 1 ? QStringLiteral("Copy Label") : QStringLiteral("Copy Labels"), labels);
    menu->addSeparator();
    MenuEntries::addProtection(*menu, library, found, QStringLiteral("Never Touch This"));
    auto* const move = MenuEntries::add(*menu, MenuEntries::moveItems(found.size()),
                                        [&library, found, present = std::move(present)] {
                                            present(library.removalForStartupItems(itemsAt(library, found)));
                                        });
    MenuEntries::markDestructive(move)->setEnabled(canMove);
    return menu;
}

} // namespace quillane
