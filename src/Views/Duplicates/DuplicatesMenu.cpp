#include "Duplicates/DuplicatesMenu.h"
#include "AppLibrary.h"
#include "Duplicates/Copies.h"
#include "Tables/RecordsWithKeys.h"
#include <utility>

namespace quillane {

namespace {

std::vector<DuplicateGroup> groupsWith(const AppLibrary& library, const std::vector<std::string>& ids) {
    return recordsWithKeys(library.duplicates.get(), &DuplicateGroup::id, ids);
}

} // namespace

QMenu* makeDuplicatesMenu(AppLibrary& library, const std::vector<std::string>& ids,
                          MenuEntries::Present present, QWidget* parent) {
    const auto groups = groupsWith(library, ids);
    if (groups.empty()) {
        return nullptr;
    }
    auto* const menu = MenuEntries::makeMenu(parent);
    MenuEntries::addReveal(*menu, library, Copies::urlsOf(groups),
                           QStringLiteral("Reveal All Copies in Finder"));
    auto* const move = MenuEntries::add(
        *menu, QStringLiteral("Keep Newest, Trash the Rest…"), [&library, ids, present = std::move(present)] {
            present(library.removalForDuplicates(groupsWith(library, ids), {}));
        });
    MenuEntries::markDestructive(move)->setEnabled(Copies::anyCanGo(library, groups));
    return menu;
}

} // namespace quillane
