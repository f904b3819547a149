#include "DesktopWorkspace.h"
#include "BundleIcon.h"
#include "ContentTypes.h"
#include "IcnsReader.h"
#include "Pictures.h"
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

// The bundle's own icon, where it has one that can be read.
std::optional<IconImage> applicationIcon(const FileSystem& files, const FileURL& bundle, int side) {
    const auto bytes = bundleIcon(files, bundle);
    auto picture = bytes ? IcnsReader::best(*bytes, side) : std::nullopt;
    if (!picture) {
        return std::nullopt;
    }
    switch (picture->form) {
    case IcnsReader::Picture::Form::png:
        return Pictures::decoded(picture->encoded, "png");
    case IcnsReader::Picture::Form::jpeg2000:
        return Pictures::decoded(picture->encoded, "jp2");
    case IcnsReader::Picture::Form::pixels:
        return std::move(picture->pixels);
    }
    return std::nullopt;
}

Pictures::Generic genericFor(const FileSystem& files, const FileURL& url) {
    if (url.pathExtension() == "app") {
        return Pictures::Generic::application; // also when it is gone
    }
    const auto values = files.resourceValues(url);
    const bool isFolder = values && values->type == EntryType::directory;
    return isFolder && !ContentTypes::ofFolder(url.pathExtension()).isPackage() ? Pictures::Generic::folder
                                                                                : Pictures::Generic::document;
}

} // namespace

DesktopWorkspace::DesktopWorkspace(const FileSystem& files, TaskRunner& tasks, Reach reach, SessionBus bus)
    : m_files(files)
    , m_tasks(tasks)
    , m_reach(reach)
    , m_bus(std::move(bus)) {}

std::shared_ptr<const IconImage> DesktopWorkspace::icon(const FileURL& url, int side) {
    auto own = url.pathExtension() == "app" ? applicationIcon(m_files, url, side) : std::nullopt;
    if (own && !own->isEmpty()) {
        return std::make_shared<IconImage>(std::move(*own));
    }
    return std::make_shared<IconImage>(Pictures::drawn(genericFor(m_files, url), side));
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
