#include "AppActions.h"
#include "AppLibrary.h"
#include "Formatting.h"
#include "RunningApplications.h"
#include "ShownText.h"
#include "Symbols.h"
#include "Workspace.h"
#include <QClipboard>
#include <QGuiApplication>
#include <QMenu>
#include <algorithm>
#include <functional>
#include <optional>
#include <utility>

namespace quillane::AppActions {

namespace {

QString number(std::size_t count) {
    return words(Formatting::number(static_cast<std::int64_t>(count)));
}

// A menu takes an ampersand for the mark of a key; in a name it is an ampersand.
QString menuText(QString text) {
    return text.replace(QLatin1Char('&'), QLatin1String("&&"));
}

// As it is, for others to work with; only what is shown is made safe for the eye.
QString rawText(const std::string& text) {
    return words(text);
}

std::vector<FileURL> urlsOf(const std::vector<InstalledApp>& apps) {
    std::vector<FileURL> urls;
    for (const auto& app : apps) {
        urls.push_back(app.url);
    }
    return urls;
}

template <class Do>
QAction* add(QMenu& menu, const QString& text, Do&& action) {
    return menu.addAction(menuText(text), std::forward<Do>(action));
}

QAction* addCopy(QMenu& menu, const QString& title, const QStringList& lines) {
    auto* const entry = add(menu, title, [lines] { copy(lines.join(QLatin1Char('\n'))); });
    entry->setEnabled(!lines.isEmpty());
    return entry;
}

// Menus know no red words: the symbol tells that the entry removes.
QAction* destructive(QAction* entry) {
    entry->setIcon(Symbols::icon(QStringLiteral("trash"), Tint::Red));
    return entry;
}

// The menu of one application. Its entries capture the location and find the record again.
class OneAppMenu {
  public:
    OneAppMenu(QMenu& menu, AppLibrary& library, const InstalledApp& app, Present present)
        : m_menu(menu)
        , m_library(library)
        , m_app(app)
        , m_present(std::move(present)) {}

    void fill() {
        Workspace& workspace = m_library.platform().workspace;
        add(m_menu, QStringLiteral("Open"), [&workspace, url = m_app.url] { workspace.open(url); });
        add(m_menu, QStringLiteral("Reveal in Finder"),
            [&workspace, url = m_app.url] { workspace.reveal({url}); });
        addQuit();
        addCopyMenu();
        addSupportFiles();
        addCleanCache();
        addProtection();
        addMoveToTrash();
    }

  private:
    void addQuit() {
        const Platform& platform = m_library.platform();
        const auto& identifier = m_app.bundleIdentifier;
        if (!identifier || !platform.runningApplications.isRunning(*identifier)) {
            return;
        }
        add(m_menu, QStringLiteral("Quit ") + shownName(m_app.name),
            [&platform, identifier] { AppLibrary::quit(platform, identifier); });
    }

    void addCopyMenu() {
        QMenu& copies = *m_menu.addMenu(QStringLiteral("Copy"));
        addCopy(copies, QStringLiteral("Name"), {rawText(m_app.name)});
        addCopy(copies, QStringLiteral("Bundle Identifier"),
                m_app.bundleIdentifier ? QStringList(rawText(*m_app.bundleIdentifier)) : QStringList());
        addCopy(copies, QStringLiteral("Path"), {rawText(m_app.url.path())});
        addCopy(copies, QStringLiteral("Version"), {rawText(m_app.version)});
    }

    void addSupportFiles() {
        if (m_app.leftovers.empty()) {
            return;
        }
        Workspace& workspace = m_library.platform().workspace;
        QMenu& files = *m_menu.addMenu(QStringLiteral("Support Files"));
        std::vector<FileURL> urls;
        for (const auto& item : m_app.leftovers) {
            urls.push_back(item.url);
        }
        add(files, QStringLiteral("Reveal All in Finder"), [&workspace, urls] { workspace.reveal(urls); });
        for (const auto& item : m_app.leftovers) { // the category tells folders of one name apart
            add(files, words(item.category) + QStringLiteral(" - ") + shownName(item.url.lastPathComponent()),
                [&workspace, url = item.url] { workspace.reveal({url}); });
        }
    }

    void addCleanCache() {
        const Bytes bytes = m_library.reclaimableCacheBytes(m_app);
        add(m_menu, cleanCacheTitle(bytes), whenStillThere([](AppLibrary& library, const InstalledApp& app) {
                return std::optional(library.removalForCache(app));
            }))
            ->setEnabled(bytes > 0);
    }

    void addProtection() {
        const bool isProtected = m_library.isProtected(m_app.url);
        add(m_menu,
            isProtected ? QStringLiteral("Remove Protection") : QStringLiteral("Never Touch This App"),
            [&library = m_library, url = m_app.url, isProtected] {
                library.setProtected(url, !isProtected);
            });
    }

    void addMoveToTrash() {
        auto* const entry = add(m_menu, QStringLiteral("Move to Trash…"),
                                whenStillThere([](AppLibrary& library, const InstalledApp& app) {
                                    return canUninstall(library, app)
                                               ? std::optional(library.removalForApps({app}))
                                               : std::nullopt;
                                }));
        destructive(entry)->setEnabled(canUninstall(m_library, m_app));
    }

    template <class Make>
    std::function<void()> whenStillThere(Make make) const {
        return [&library = m_library, url = m_app.url, present = m_present, make] {
            const auto app = library.appWithID(url);
            if (!app) {
                return;
            }
            if (auto removal = make(library, *app)) {
                present(*std::move(removal));
            }
        };
    }

    QMenu& m_menu;
    AppLibrary& m_library;
    const InstalledApp& m_app;
    const Present m_present;
};

void fillForSeveral(QMenu& menu, AppLibrary& library, const std::vector<InstalledApp>& apps,
                    const Present& present) {
    add(menu, QStringLiteral("Reveal %1 Apps in Finder").arg(number(apps.size())),
        [&library, urls = urlsOf(apps)] { library.platform().workspace.reveal(urls); });

    QStringList names;
    QStringList identifiers; // one that has none adds no empty line
    QStringList paths;
    for (const auto& app : apps) {
        names << rawText(app.name);
        paths << rawText(app.url.path());
        if (app.bundleIdentifier) {
            identifiers << rawText(*app.bundleIdentifier);
        }
    }
    QMenu& copies = *menu.addMenu(QStringLiteral("Copy"));
    addCopy(copies, QStringLiteral("Names"), names);
    addCopy(copies, QStringLiteral("Bundle Identifiers"), identifiers);
    addCopy(copies, QStringLiteral("Paths"), paths);

    const auto going = removable(library, apps);
    auto* const uninstall =
        add(menu, uninstallTitle(going.size()), [&library, present, urls = urlsOf(going)] {
            std::vector<InstalledApp> still;
            for (const auto& url : urls) {
                if (auto app = library.appWithID(url)) {
                    still.push_back(*std::move(app));
                }
            }
            present(library.removalForApps(removable(library, still)));
        });
    destructive(uninstall)->setEnabled(!going.empty());
}

} // namespace

bool canUninstall(const AppLibrary& library, const InstalledApp& app) {
    return app.source != AppSource::system && app.isMeasured && !library.isProtected(app.url);
}

std::vector<InstalledApp> removable(const AppLibrary& library, const std::vector<InstalledApp>& apps) {
    auto going = apps;
    std::erase_if(going, [&](const InstalledApp& app) {
        return app.source == AppSource::system || library.isProtected(app.url);
    });
    return going;
}

QString cleanCacheTitle(Bytes bytes) {
    return QStringLiteral("Clean Cache (%1)").arg(words(Formatting::byteCount(bytes)));
}

QString uninstallTitle(std::size_t count) {
    return QStringLiteral("Uninstall %1 Apps…").arg(number(count));
}

void copy(const QString& text) {
    QGuiApplication::clipboard()->setText(text);
}

QMenu* makeMenu(AppLibrary& library, const std::vector<InstalledApp>& apps, Present present,
                QWidget* parent) {
    auto* const menu = new QMenu(parent);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    if (apps.empty()) {
        add(*menu, QStringLiteral("Rescan Applications"),
            [&library] { library.refresh(AppLibrary::ScanReason::user); });
    } else if (apps.size() == 1) {
        OneAppMenu(*menu, library, apps.front(), std::move(present)).fill();
    } else {
        fillForSeveral(*menu, library, apps, present);
    }
    return menu;
}

} // namespace quillane::AppActions
