#pragma once
#include <QObject>
#include <memory>

class QAction;
class QMenu;
class QMenuBar;

namespace quillane {

class ContentView;

// The commands of the window and their keys. On macOS they stand in the menu bar; elsewhere in the menu of
// the brand row, which F10 opens too.
class WindowCommands : public QObject {
    Q_OBJECT
  public:
    // Belongs to the window.
    explicit WindowCommands(ContentView& window);
    ~WindowCommands() override;

    // Null where there is a menu bar.
    QMenu* windowMenu() const { return m_windowMenu; }

  private:
    struct Commands {
        QAction* rescan;
        QAction* putBack;
        QAction* settings;
        QAction* grantAccess;
        QAction* checkForUpdates;
        QAction* welcome;
        QAction* quit;
    };

    QAction* command(const QString& text, const QKeySequence& keys);
    void makeSectionKeys();
    QAction* makeRescan();
    QAction* makePutBack();
    QAction* makeSettings();
    QAction* makeGrantAccess();
    QAction* makeCheckForUpdates();
    QAction* makeWelcome();
    QAction* makeQuit();
    QAction* makeAbout();
    void makeSearchKey();
    void makeMenu(const Commands& commands);
    void makeMenuBar(const Commands& commands);

    ContentView& m_window;
    QMenu* m_windowMenu = nullptr;
    std::unique_ptr<QMenuBar> m_menuBar;
};

} // namespace quillane
