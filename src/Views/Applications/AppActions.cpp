#include "Applications/AppActions.h"
#include "AppLibrary.h"
#include "Components/ShownText.h"
#include "Formatting.h"
#include "RunningApplications.h"
#include "Tables/MenuEntries.h"
#include "Tables/RecordsWithKeys.h"
#include "Workspace.h"
#include <QMenu>
#include <algorithm>
#include <functional>
#include <optional>
#include <utility>

namespace quillane::AppActions {

namespace {

using namespace MenuEntries;

std::vector<FileURL> urlsOf(const std::vector<InstalledApp>& apps) {
    std::vector<FileURL> urls;
    urls.reserve(apps.size());
    for (const auto& app : apps) {
        urls.push_back(app.url);
    }
    return urls;
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
        addReveal(m_menu, m_library, {m_app.url});
        addQuit();
        addCopyMenu();
        addSupportFiles();
        addCleanCache();
        addProtection(m_menu, m_library, {m_app.url}, QStringLiteral("Never Touch This App"));
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
        QMenu& files = *m_menu.addMenu(QStringLiteral("Support Files"));
        std::vector<FileURL> urls;
        urls.reserve(m_app.leftovers.size());
        for (const auto& item : m_app.leftovers) {
            urls.push_back(item.url);
        }
        addReveal(files, m_library, urls, QStringLiteral("Reveal All in Finder"));
        for (const auto& item : m_app.leftovers) { // the category tells folders of one name apart
            addReveal(files, m_library, {item.url},
                      words(item.category) + QStringLiteral(" - ") + shownName(item.url.lastPathComponent()));
        }
    }

    void addCleanCache() {
        const Bytes bytes = m_library.reclaimableCacheBytes(m_app);
        add(m_menu, cleanCacheTitle(bytes), whenStillThere([](AppLibrary& library, const InstalledApp& app) {
                return std::optional(library.removalForCache(app));
            }))
            ->setEnabled(bytes > 0);
    }

    void addMoveToTrash() {
        auto* const entry = add(m_menu, QStringLiteral("Move to Trash…"),
                                whenStillThere([](AppLibrary& library, const InstalledApp& app) {
                                    return canUninstall(library, app)
                                               ? std::optional(library.removalForApps({app}))
                                               : std::nullopt;
                                }));
        markDestructive(entry)->setEnabled(canUninstall(m_library, m_app));
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
    addReveal(menu, library, urlsOf(apps),
              QStringLiteral("Reveal %1 Apps in Finder").arg(number(apps.size())));

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
            const auto still = recordsWithKeys(library.apps.get(), &InstalledApp::url, urls);
            present(library.removalForApps(removable(library, still)));
        });
    markDestructive(uninstall)->setEnabled(!going.empty());
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

QMenu* makeMenu(AppLibrary& library, const std::vector<InstalledApp>& apps, Present present,
                QWidget* parent) {
    auto* const menu = MenuEntries::makeMenu(parent);
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
