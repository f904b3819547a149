#pragma once
#include "State/Scenes.h"
#include <QWidget>

class QStackedWidget;

namespace quillane {

class AppLibrary;
class NotificationCenter;
class SettingsPage;
class SettingsTabs;

// The settings: a window of its own with two tabs. Every control is bound to its key, so that a change holds from the
// next time the key is read. It is as high as its tab needs and the screen allows.
class SettingsView : public QWidget {
    Q_OBJECT
  public:
    // All of them outlive the window.
    SettingsView(AppLibrary& library, NotificationCenter& notifications, Scenes& scenes,
                 QWidget* parent = nullptr);

    static constexpr int kWidth = 560;

    void showTab(Scenes::SettingsTab tab);
    Scenes::SettingsTab tab() const;
    SettingsTabs* tabs() const { return m_tabs; }
    // What the tab shows.
    SettingsPage* page(Scenes::SettingsTab tab) const;

    // Takes in a figure that was typed and not ended, as leaving its field does.
    void finishInput();

    // Before it is shown: in the middle of this window, or of the screen with the pointer where it is null or can't be
    // seen; all of it on the screen.
    void placeOver(const QWidget* window);

  protected:
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    void addTab(const QString& symbol, const QString& words, SettingsPage* page);
    void makeStrip();
    void makeShortcuts();
    void enter(int index);
    void step(int by);
    void fit();
    void followScreen();

    QMetaObject::Connection m_room; // the screen's, that may change
    SettingsTabs* m_tabs;
    QWidget* m_strip;
    QStackedWidget* m_pages;
};

} // namespace quillane
