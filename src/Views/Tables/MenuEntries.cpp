#include "Tables/MenuEntries.h"
#include "AppLibrary.h"
#include "Components/ShownText.h"
#include "Components/Symbols.h"
#include "Formatting.h"
#include "Workspace.h"
#include <QClipboard>
#include <QGuiApplication>
#include <algorithm>
#include <cstdint>
#include <utility>

namespace quillane::MenuEntries {

QMenu* makeMenu(QWidget* parent) {
    auto* const menu = new QMenu(parent);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->setAccessibleName(QStringLiteral("Menu"));
    return menu;
}

QAction* add(QMenu& menu, const QString& text, std::function<void()> action) {
    return menu.addAction(QString(text).replace(QLatin1Char('&'), QLatin1String("&&")), std::move(action));
}

QAction* addCopy(QMenu& menu, const QString& title, const QStringList& lines) {
    auto* const entry =
        add(menu, title, [lines] { QGuiApplication::clipboard()->setText(lines.join(QLatin1Char('\n'))); });
    entry->setEnabled(!lines.isEmpty());
    return entry;
}

void addReveal(QMenu& menu, AppLibrary& library, std::vector<FileURL> urls, const QString& title) {
    add(menu, title,
        [&workspace = library.platform().workspace, urls = std::move(urls)] { workspace.reveal(urls); });
}

void addProtection(QMenu& menu, AppLibrary& library, std::vector<FileURL> urls, const QString& title) {
    const bool isProtected =
        std::ranges::all_of(urls, [&](const FileURL& url) { return library.isProtected(url); });
    add(menu, isProtected ? QStringLiteral("Remove Protection") : title,
        [&library, urls = std::move(urls), isProtected] { library.setProtected(urls, !isProtected); });
}

QAction* markDestructive(QAction* entry) {
    entry->setIcon(Symbols::icon(QStringLiteral("trash"), Tint::Red));
    return entry;
}

QString moveItems(std::size_t count) {
    return count == 1 ? QStringLiteral("Move to Trash…")
                      : QStringLiteral("Move %1 Items to Trash…").arg(number(count));
}

QString number(std::size_t count) {
    return words(Formatting::number(static_cast<std::int64_t>(count)));
}

QString rawText(const std::string& text) {
    return words(text);
}

} // namespace quillane::MenuEntries
