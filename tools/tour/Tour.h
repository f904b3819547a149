#pragma once
#include "LibrarySection.h"
#include "SampleMac.h"
#include "SweepEntry.h"
#include "UserFile.h"
#include <QString>
#include <QStringList>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

class QTreeView;
class QWidget;

namespace quillane {

class ContentView;
class FakeMenuBarExtra;
class MenuBarPopover;
class OverviewView;
class QuillaneApp;
class RecentUninstallCard;
class RecordingNotifications;
struct UserNotification;

// A walk through the window over a sample Mac, as a person would take it. What stands on the screen is
// compared with what lies on disk, which is read here without the program's own services.
class Tour {
  public:
    // `notifications` is where the application tells things, `panel` where its item stands; `hostFolder` is where the Mac was laid; pictures go to
    // `pictures`.
    Tour(QuillaneApp& app, RecordingNotifications& notifications, FakeMenuBarExtra& panel,
         const SampleMac& mac, std::string hostFolder, QString pictures);

    // Visits everything that stands. The findings are printed; true when there was nothing to complain of.
    bool run();

  private:
    void waitForScan();
    void visitSections();
    void compareTable();
    void sortByEachColumn();
    void selectOne();
    void selectSeveral();
    void search();
    void shrink();
    void switchToDark();
    // What the other two tables show, against the disk.
    void compareOrphans();
    void compareLocations();
    // What a person does in the pane of a row before pressing the destructive button. Gives what must stay then, by
    // the volume's own paths.
    using Preparation = std::function<std::vector<std::string>()>;
    // Picks the row of a section that says so in that column, moves it through the review, looks into the Trash on disk, and puts it back.
    void removeAndPutBack(LibrarySection section, const QString& name, const Preparation& prepare = {},
                          int column = 0);
    void compareStaying(const std::vector<std::string>& paths);

    // Tour+Files.cpp: the person's own files.
    void visitFiles();
    void compareLens(const QString& lens, const std::vector<UserFile>& expected);
    void findByWords();
    void lookAtPicture();
    void chooseLens(const QString& lens);
    // Waits for the panel to show a picture of that file, takes one of it, and closes it.
    void comparePanel(const QString& name, const QString& picture);
    void visitDuplicates();
    // Looks at the first copy of the group with that name.
    void lookAtCopy(const QString& name);
    void compareDuplicates();
    // Chooses another copy than the suggested one in the pane of the group that is shown.
    std::vector<std::string> chooseAnotherCopy();
    bool stands(LibrarySection section) const;

    // Tour+Startup.cpp: what starts by itself.
    void visitStartup();
    void compareStartup();
    void stopUntilLogin();

    // Tour+Automation.cpp: what happens without being asked.
    void visitAutomation();
    // Lets too much to reclaim, too little room, leftovers and something that starts by itself come up, and go again.
    void tellWhatIsNew();
    void setNudge(std::string_view key, bool isOn);
    void lookAnew();
    // All that was told after the first so many, in any order.
    void compareTold(std::size_t before, const std::vector<UserNotification>& expected);
    // A click on what was told.
    void followClick();
    // Another program moves an application to the Trash and takes it out again; in between what it left is reviewed,
    // moved and put back.
    void uninstallElsewhere();
    // Whether no scan runs and the last one found the application, or did not.
    bool isListed(const std::string& name, bool isThere) const;
    void compareCard(const RecentUninstallCard& card, const ExpectedApp& app);
    void reviewLeftovers(OverviewView& screen, const RecentUninstallCard& card, const ExpectedApp& app);

    // Tour+Desktop.cpp: the windows beside the main one, and the item in the panel.
    void beWelcomed();
    // Reads the welcome that is up to its end.
    void readWelcome();
    void visitDesktop();
    void changeSettings();
    void pressItem();
    // Null, and a complaint, when it does not open.
    MenuBarPopover* openPopover();
    void closeAndComeBack();

    // The main job: review, keep one row, move the rest, look into the Trash on disk, and put it all back.
    void cleanAndPutBack();
    // Nothing in its place, everything in the Trash.
    void compareWithTrash(const std::vector<SweepEntry>& moved, std::size_t trashBefore);
    void putBack(OverviewView& screen, const std::string& treeBefore);
    std::size_t itemsInTrash() const;
    // Everything that lies on the volume now, in one text.
    std::string treeNow() const;

    ContentView& window() const;
    QTreeView* table(LibrarySection section) const;
    QTreeView* table() const;
    OverviewView* overview() const;
    // The path of an entry on the machine's own disk.
    std::string hostPath(const FileURL& url) const { return m_hostFolder + url.path(); }
    const ExpectedApp* expected(const QString& name) const;
    int rowOf(const QString& name) const;
    void take(const QString& name);
    void takeOf(QWidget& sheet, const QString& name);
    void say(const QString& line) const;
    // Complains unless it holds.
    void check(bool holds, const QString& what);
    // Complains unless the words stand in the window.
    void checkSeen(const QStringList& seen, const QString& words);

    QuillaneApp& m_app;
    RecordingNotifications& m_notifications;
    FakeMenuBarExtra& m_panel;
    const SampleMac& m_mac;
    const std::string m_hostFolder;
    const QString m_pictures;
    std::vector<ExpectedApp> m_shown; // the applications that the table must show
    QStringList m_complaints;
};

} // namespace quillane
