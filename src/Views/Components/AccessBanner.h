#pragma once
#include <QWidget>
#include <functional>

namespace quillane {

class PushButton;

// The strip over a section that tells that Full Disk Access is missing. Where it stands and when it goes is
// the screens' to decide.
class AccessBanner : public QWidget {
    Q_OBJECT
  public:
    // `onGrantAccess` opens the system's settings; `onRelaunch` starts the program anew.
    AccessBanner(std::function<void()> onGrantAccess, std::function<void()> onRelaunch,
                 QWidget* parent = nullptr);

    PushButton* grantButton() const { return m_grant; }
    PushButton* relaunchButton() const { return m_relaunch; }

    static QString symbolName();
    static QString heading();
    static QString text();

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    PushButton* m_grant;
    PushButton* m_relaunch;
};

} // namespace quillane
