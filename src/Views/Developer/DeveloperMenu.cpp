#include "Developer/DeveloperMenu.h"
#include "AppLibrary.h"
#include "Tables/RecordsWithKeys.h"
#include <algorithm>
#include <utility>

namespace quillane {

namespace {

std::vector<DevCacheItem> itemsAt(const AppLibrary& library, const std::vector<FileURL>& urls) {
    return recordsWithKeys(library.developerCaches.get(), &DevCacheItem::url, urls);
}

} // namespace

QMenu* makeDeveloperMenu(AppLibrary& library, const std::vector<FileURL>& urls, MenuEntries::Present present,
                         QWidget* parent) {
    std::vector<FileURL> found;
    QStringList paths;
    for (const auto& item : itemsAt(library, urls)) {
        found.push_back(item.url);
        paths << MenuEntries::rawText(item.url.path());
    }
    if (found.empty()) {
        return nullptr;
    }
    const bool canMove =
        !std::ranges::all_of(found, [&](const FileURL& url) { return library.isProtected(url); });

    auto* const menu = MenuEntries::makeMenu(parent);
    MenuEntries::addReveal(*menu, library, found);
    MenuEntries::addCopy(
        *menu, found.size() == 1 ? QStringLiteral("Copy Path") : QStringLiteral("Copy Paths"), paths);
    menu->addSeparator();
    MenuEntries::addProtection(*menu, library, found, QStringLiteral("Never Touch This"));
    auto* const move = MenuEntries::add(
        *menu, MenuEntries::moveItems(found.size()), [&library, found, present = std::move(present)] {
            present(library.removalForDeveloperItems(itemsAt(library, found)));
        });
    MenuEntries::markDestructive(move)->setEnabled(canMove);
    return menu;
}

} // namespace quillane
