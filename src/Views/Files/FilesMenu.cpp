#include "Files/FilesMenu.h"
#include "AppLibrary.h"
#include "Tables/RecordsWithKeys.h"
#include "Workspace.h"
#include <algorithm>
#include <utility>

namespace quillane {

namespace {

std::vector<UserFile> filesAt(const AppLibrary& library, const std::vector<FileURL>& urls) {
    return recordsWithKeys(library.files.get(), &UserFile::url, urls);
}

QString moveTitle(std::size_t count) {
    return count == 1 ? QStringLiteral("Move to Trash…")
                      : QStringLiteral("Move %1 Files to Trash…").arg(MenuEntries::number(count));
}

void addOpen(QMenu& menu, AppLibrary& library, const std::vector<FileURL>& urls) {
    MenuEntries::add(menu, QStringLiteral("Open"), [&workspace = library.platform().workspace, urls] {
        for (const auto& url : urls) {
            workspace.open(url);
        }
    });
}

} // namespace

QMenu* makeFilesMenu(AppLibrary& library, const std::vector<FileURL>& urls,
                     std::function<void(const FileURL&)> look, MenuEntries::Present present,
                     QWidget* parent) {
    std::vector<FileURL> found;
    for (const auto& file : filesAt(library, urls)) {
        found.push_back(file.url);
    }
    if (found.empty()) {
        return nullptr;
    }
    const bool canMove =
        !std::ranges::all_of(found, [&](const FileURL& url) { return library.isProtected(url); });

    auto* const menu = MenuEntries::makeMenu(parent);
    MenuEntries::add(*menu, QStringLiteral("Quick Look"),
                     [look = std::move(look), first = found.front()] { look(first); });
    addOpen(*menu, library, found);
    MenuEntries::addReveal(*menu, library, found);
    menu->addSeparator();
    MenuEntries::addProtection(*menu, library, found, QStringLiteral("Never Touch This"));
    auto* const move =
        MenuEntries::add(*menu, moveTitle(found.size()), [&library, found, present = std::move(present)] {
            present(library.removalForFiles(filesAt(library, found)));
        });
    MenuEntries::markDestructive(move)->setEnabled(canMove);
    return menu;
}

} // namespace quillane
