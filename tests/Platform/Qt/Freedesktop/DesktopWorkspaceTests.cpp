#include "DesktopWorkspace.h"
#include "FakeFileManager.h"
#include "MainQueue.h"
#include "PosixFileSystem.h"
#include "PrivateBus.h"
#include "StepTaskRunner.h"
#include "TemporaryFolder.h"
#include "ThreadTaskRunner.h"
#include <QBuffer>
#include <QImage>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace quillane {
namespace {

using Reach = DesktopWorkspace::Reach;

// A folder at the front of the search path, with an "xdg-open" that leaves what it was given in a file.
class Opener {
  public:
    Opener() {
        const auto quoted = "'" + m_folder.at("opened") + "'";
        m_folder.file("xdg-open", "#!/bin/sh\nprintf '%s\\n' \"$#\" \"$@\" > " + quoted + ".new && mv " +
                                      quoted + ".new " + quoted);
        ::chmod(m_folder.at("xdg-open").c_str(), 0755);
        ::setenv("PATH", (m_folder.path() + ":" + m_previous).c_str(), 1);
    }
    ~Opener() { ::setenv("PATH", m_previous.c_str(), 1); }
    Opener(const Opener&) = delete;
    Opener& operator=(const Opener&) = delete;

    // The one argument of the next call. Comes back when there was one, or fails in the end.
    std::string next() {
        const std::filesystem::path file = m_folder.at("opened");
        EXPECT_TRUE(QTest::qWaitFor([&] { return std::filesystem::exists(file); })) << "nothing was opened";
        std::ifstream stream(file);
        std::string count;
        std::string argument;
        std::getline(stream, count);
        std::getline(stream, argument);
        EXPECT_EQ(count, "1");
        std::filesystem::remove(file);
        return argument;
    }

  private:
    TemporaryFolder m_folder;
    std::string m_previous = std::getenv("PATH");
};

std::string png(int side) {
    QImage image(side, side, QImage::Format_ARGB32);
    image.fill(QColor(1, 2, 3));
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "png");
    return bytes.toStdString();
}

std::string bigEndian(std::size_t value) {
    std::string bytes;
    for (const unsigned shift : {24U, 16U, 8U, 0U}) {
        bytes += static_cast<char>(value >> shift & 0xFF);
    }
    return bytes;
}

// A container with pictures of 32, 128 and 256 pixels.
std::string container() {
    std::string entries;
    for (const auto& [type, side] : {std::pair{"ic11", 32}, std::pair{"ic07", 128}, std::pair{"ic08", 256}}) {
        const auto picture = png(side);
        entries += type + bigEndian(picture.size() + 8) + picture;
    }
    return "icns" + bigEndian(entries.size() + 8) + entries;
}

class DesktopWorkspaceTest : public testing::Test {
  protected:
    TemporaryFolder m_volume;
    PosixFileSystem m_files{m_volume.path(), FileURL("/Users/alex")};
    StepTaskRunner m_tasks;
    DesktopWorkspace m_workspace{m_files, m_tasks, Reach::machine};

    void application(const std::string& icon) {
        m_volume.file(
            "Applications/Editor.app/Contents/Info.plist",
            "<plist version=\"1.0\"><dict><key>CFBundleIconFile</key><string>Own</string></dict></plist>");
        m_volume.file("Applications/Editor.app/Contents/Resources/Own.icns", icon);
    }
    int sideOf(const std::string& path, int side) { return m_workspace.icon(FileURL(path), side)->width; }
    bool areAlike(const std::string& a, const std::string& b) {
        return *m_workspace.icon(FileURL(a), 64) == *m_workspace.icon(FileURL(b), 64);
    }
};

TEST_F(DesktopWorkspaceTest, AnApplicationsIconIsTheSmallestThatIsLargeEnough) {
    application(container());
    EXPECT_EQ(sideOf("/Applications/Editor.app", 32), 32);
    EXPECT_EQ(sideOf("/Applications/Editor.app", 33), 128);
    EXPECT_EQ(sideOf("/Applications/Editor.app", 200), 256);
    EXPECT_EQ(sideOf("/Applications/Editor.app", 1000), 256);
    const auto icon = m_workspace.icon(FileURL("/Applications/Editor.app"), 32);
    EXPECT_EQ((std::vector<std::uint8_t>(icon->rgba.begin(), icon->rgba.begin() + 4)),
              (std::vector<std::uint8_t>{1, 2, 3, 255}));
}

TEST_F(DesktopWorkspaceTest, AnApplicationWithoutAnIconThatCanBeReadHasTheGenericOne) {
    const auto generic = *m_workspace.icon(FileURL("/Applications/Gone.app"), 64);
    EXPECT_EQ(generic.width, 64);
    for (const auto& damaged : {std::string("damaged"), container().substr(0, 12), std::string()}) {
        application(damaged);
        EXPECT_EQ(*m_workspace.icon(FileURL("/Applications/Editor.app"), 64), generic);
    }
}

TEST_F(DesktopWorkspaceTest, FoldersAndFilesHaveGenericIconsOfTheirOwn) {
    m_volume.folder("folder").folder("library.photoslibrary").file("file.txt").link("link", "folder");
    EXPECT_FALSE(areAlike("/folder", "/file.txt"));
    EXPECT_FALSE(areAlike("/folder", "/Applications/Gone.app"));
    EXPECT_FALSE(areAlike("/file.txt", "/Applications/Gone.app"));
    EXPECT_TRUE(areAlike("/library.photoslibrary", "/file.txt"));
    EXPECT_TRUE(areAlike("/link", "/file.txt"));
    EXPECT_TRUE(areAlike("/no such file", "/file.txt"));
}

TEST_F(DesktopWorkspaceTest, OpeningHandsTheItemsUrlToTheOpenerAsOneArgument) {
    Opener opener;
    m_workspace.open(FileURL("/a b/$HOME; `x`/\xFF.txt"));
    EXPECT_EQ(m_tasks.waitingJobs(), 1U); // nothing happens on the caller's thread
    m_tasks.runAll();
    EXPECT_EQ(opener.next(), "file:///a%20b/$HOME;%20%60x%60/%FF.txt");
}

TEST_F(DesktopWorkspaceTest, OnAVolumeNothingIsOpenedOrRevealed) {
    DesktopWorkspace workspace(m_files, m_tasks, Reach::volume);
    workspace.open(FileURL("/a"));
    workspace.reveal({FileURL("/a")});
    EXPECT_EQ(m_tasks.waitingJobs(), 0U);
}

TEST_F(DesktopWorkspaceTest, RevealingNothingDoesNothing) {
    m_workspace.reveal({});
    EXPECT_EQ(m_tasks.waitingJobs(), 0U);
}

TEST_F(DesktopWorkspaceTest, RevealingShowsTheItemsInTheFileManager) {
    PrivateBus bus;
    FakeFileManager manager(bus.connect());
    MainQueue queue;
    ThreadTaskRunner tasks(queue); // the call waits for an answer that this thread gives
    DesktopWorkspace workspace(m_files, tasks, Reach::machine, bus.reach());
    workspace.reveal({FileURL("/a b/c"), FileURL("/\xFF")});
    EXPECT_TRUE(QTest::qWaitFor([&] { return !manager.shown.isEmpty(); }));
    EXPECT_EQ(manager.shown, (QStringList{QStringLiteral("file:///a%20b/c"), QStringLiteral("file:///%FF")}));
}

TEST_F(DesktopWorkspaceTest, WhereTheFileManagerRefusesTheFolderIsOpened) {
    Opener opener;
    PrivateBus bus;
    FakeFileManager manager(bus.connect());
    manager.isRefusing = true;
    MainQueue queue;
    ThreadTaskRunner tasks(queue);
    DesktopWorkspace workspace(m_files, tasks, Reach::machine, bus.reach());
    workspace.reveal({FileURL("/a/b"), FileURL("/a/c")});
    EXPECT_TRUE(QTest::qWaitFor([&] { return !manager.shown.isEmpty(); }));
    EXPECT_EQ(opener.next(), "file:///a");
}

TEST_F(DesktopWorkspaceTest, WithoutAFileManagerOrABusTheFolderIsOpened) {
    Opener opener;
    PrivateBus bus;
    DesktopWorkspace withoutManager(m_files, m_tasks, Reach::machine, bus.reach());
    withoutManager.reveal({FileURL("/a/b")});
    m_tasks.runAll();
    EXPECT_EQ(opener.next(), "file:///a");
    DesktopWorkspace withoutBus(m_files, m_tasks, Reach::machine,
                                [] { return QDBusConnection(QStringLiteral("never connected")); });
    withoutBus.reveal({FileURL("/c/d")});
    m_tasks.runAll();
    EXPECT_EQ(opener.next(), "file:///c");
}

TEST_F(DesktopWorkspaceTest, WithoutAnOpenerNothingHappens) {
    TemporaryFolder empty;
    const std::string previous = std::getenv("PATH");
    ::setenv("PATH", empty.path().c_str(), 1);
    m_workspace.open(FileURL("/a"));
    m_tasks.runAll();
    ::setenv("PATH", previous.c_str(), 1);
    EXPECT_EQ(m_tasks.waitingJobs(), 0U);
}

} // namespace
} // namespace quillane
