#pragma once
#include "BulkRemoval.h"
#include "FileURL.h"
#include <QAction>
#include <QMenu>
#include <QString>
#include <QStringList>
#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace quillane {

class AppLibrary;

// What the context menus of the sections have in common. Main thread only.
namespace MenuEntries {

// Where a request for a removal goes: to the review.
using Present = std::function<void(BulkRemoval)>;

// An empty menu that belongs to `parent` and deletes itself when it closes.
QMenu* makeMenu(QWidget* parent);

// An entry with this very text: an ampersand in it marks no key.
QAction* add(QMenu& menu, const QString& text, std::function<void()> action);
// Puts the lines on the clipboard; disabled when there are none.
QAction* addCopy(QMenu& menu, const QString& title, const QStringList& lines);
// "Reveal in Finder", or what the title says.
void addReveal(QMenu& menu, AppLibrary& library, std::vector<FileURL> urls,
               const QString& title = QStringLiteral("Reveal in Finder"));
// "Remove Protection" when all of them are protected, else what the title says, which protects them all.
void addProtection(QMenu& menu, AppLibrary& library, std::vector<FileURL> urls, const QString& title);
// Marks an entry as one that removes: menus know no red words, so a symbol tells it. Hands the entry back.
QAction* markDestructive(QAction* entry);

// What the entry says that moves so many items: "Move to Trash…" for one.
QString moveItems(std::size_t count);

// With grouped thousands, as all numbers that are shown.
QString number(std::size_t count);
// As it is, for others to work with; only what is shown is made safe for the eye.
QString rawText(const std::string& text);

} // namespace MenuEntries
} // namespace quillane
