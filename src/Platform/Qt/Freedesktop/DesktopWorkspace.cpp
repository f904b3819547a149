#include "DesktopWorkspace.h"
#include "ItemIcon.h"
#include <QCoreApplication>
#include <QDBusMessage>
#include <QProcess>
#include <QStringList>
#include <set>

namespace quillane {
namespace {

constexpr int kRevealTimeout = 15'000;  // milliseconds; the file manager may have to be started
constexpr std::size_t kMostFolders = 8; // windows that one click may open

// A URL of a file is ASCII whatever the bytes of its name.
QString urlText(const FileURL& url) {
    return QString::fromStdString(url.absoluteString());
}

void startOpener(const FileURL& url) {
    QProcess opener;
    opener.setProgram(QStringLiteral("xdg-open"));
    opener.setArguments({urlText(url)});
    opener.setStandardInputFile(QProcess::nullDevice());
    opener.setStandardOutputFile(QProcess::nullDevice());
    opener.setStandardErrorFile(QProcess::nullDevice());
    opener.startDetached();
}

bool isRevealed(const QDBusConnection& bus, const std::vector<FileURL>& urls) {
    const auto name = QStringLiteral("org.freedesktop.FileManager1");
    auto message = QDBusMessage::createMethodCall(name, QStringLiteral("/org/freedesktop/FileManager1"), name,
                                                  QStringLiteral("ShowItems"));
    QStringList items;
    for (const auto& url : urls) {
        items.append(urlText(url));
    }
    message << items << QString(); // no token of a window that asks
    return bus.call(message, QDBus::Block, kRevealTimeout).type() == QDBusMessage::ReplyMessage;
}

void openFolders(const std::vector<FileURL>& urls) {
    std::set<FileURL> folders;
    for (const auto& url : urls) {
        const auto folder = url.deletingLastPathComponent();
        if (folders.size() < kMostFolders && folders.insert(folder).second) {
            startOpener(folder);
        }
    }
}

} // namespace

DesktopWorkspace::DesktopWorkspace(const FileSystem& files, TaskRunner& tasks, Reach reach, SessionBus bus)
    : m_files(files)
    , m_tasks(tasks)
    , m_reach(reach)
    , m_bus(std::move(bus)) {}

std::shared_ptr<const IconImage> DesktopWorkspace::icon(const FileURL& url, int side) {
    return itemIcon(m_files, url, side);
}

void DesktopWorkspace::open(const FileURL& url) {
    if (m_reach == Reach::machine) {
        m_tasks.run(Priority::userInitiated, [url] { startOpener(url); });
    }
}

void DesktopWorkspace::reveal(const std::vector<FileURL>& urls) {
    if (m_reach != Reach::machine || urls.empty()) {
        return;
    }
    m_tasks.run(Priority::userInitiated, [urls, bus = m_bus] {
        if (!isRevealed(bus(), urls)) {
            openFolders(urls);
        }
    });
}

void DesktopWorkspace::relaunch() {
    QProcess::startDetached(QCoreApplication::applicationFilePath(),
                            {QString::fromLatin1(Workspace::kRelaunched)});
    QCoreApplication::quit();
}

} // namespace quillane
