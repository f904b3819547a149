#pragma once
#include "DesktopNotifications.h"
#include "FakeNotificationCentre.h"
#include "FakeNotificationServer.h"
#include "MacNotifications.h"
#include "PrivateBus.h"
#include "RecordingNotifications.h"
#include "StepTaskRunner.h"
#include "TemporaryFolder.h"
#include <QProcess>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace quillane {

// A desktop with its user: what shows, and who clicks.
class NotificationDesk {
  public:
    // Titles and bodies as a person reads them, in the order in which their identifiers came up.
    using Shown = std::vector<std::pair<std::string, std::string>>;

    virtual ~NotificationDesk() = default;
    virtual UserNotifications& notifications() = 0;
    virtual StepTaskRunner& tasks() = 0;
    // What was said on either side has arrived at the other, and clicks have been told.
    virtual void settle() = 0;
    // Whether this shows, or comes to show.
    virtual bool shows(const Shown& expected) = 0;
    // On what shows with that title.
    virtual void click(const std::string& title) = 0;
};

class RecorderDesk final : public NotificationDesk {
  public:
    UserNotifications& notifications() override { return m_recorder; }
    StepTaskRunner& tasks() override { return m_tasks; }
    void settle() override { m_tasks.runAll(); }
    bool shows(const Shown& expected) override;
    void click(const std::string& title) override;

  private:
    StepTaskRunner m_tasks;
    RecordingNotifications m_recorder{m_tasks};
};

// The Mac's adapter over a screen of the test's own.
class CentreDesk final : public NotificationDesk {
  public:
    UserNotifications& notifications() override { return m_adapter; }
    StepTaskRunner& tasks() override { return m_tasks; }
    void settle() override { m_tasks.runAll(); }
    bool shows(const Shown& expected) override;
    void click(const std::string& title) override { m_screen.click(title); }

  private:
    StepTaskRunner m_tasks;
    FakeNotificationScreen m_screen;
    MacNotifications m_adapter{
        m_tasks, [this](NotificationCentre::Clicked clicked) { return m_screen.make(std::move(clicked)); }};
};

// The adapter over a server on a bus of their own.
class ServerDesk : public NotificationDesk {
  public:
    UserNotifications& notifications() override { return adapter; }
    StepTaskRunner& tasks() override { return m_tasks; }
    // What the server knew is gone with it, and it gives its numbers anew.
    virtual void restart() = 0;
    virtual bool showsNothing() = 0;

  protected:
    explicit ServerDesk(const std::string& startedAtNeed = {})
        : m_bus(startedAtNeed) {}
    PrivateBus m_bus;
    StepTaskRunner m_tasks;
    QDBusConnection m_connection = m_bus.connect();

  public:
    DesktopNotifications adapter{m_tasks, [this] { return m_connection; }};
};

// A server of the test's own.
class FakeServerDesk final : public ServerDesk {
  public:
    void settle() override;
    bool shows(const Shown& expected) override;
    void click(const std::string& title) override;
    void restart() override;
    bool showsNothing() override { return shows({}); }

  private:
    std::unique_ptr<FakeNotificationServer> m_server =
        std::make_unique<FakeNotificationServer>(m_bus.connect());
};

// A program of a desktop, on the display that there is.
class ProgramDesk : public ServerDesk {
  public:
    ~ProgramDesk() override;

    void settle() override;
    void restart() override;
    bool showsNothing() override { return countShown() == 0; } // without waiting

  protected:
    ProgramDesk();
    void start(const QString& program, const QStringList& arguments = {});
    QByteArray outputOf(const QString& program, const QStringList& arguments, bool mayFail = false) const;
    virtual int countShown() const = 0;

    unsigned m_closed = 0; // of those that came first

  private:
    void stop();
    QProcess m_server;
    QProcessEnvironment m_environment;
};

// "dunst", which tells a script what it shows.
class DunstDesk final : public ProgramDesk {
  public:
    DunstDesk();

    bool shows(const Shown& expected) override;
    void click(const std::string& title) override;
    void restart() override;

  protected:
    int countShown() const override;

  private:
    struct Line {
        qlonglong time = 0;
        uint number = 0;
        Shown::value_type words;
    };
    std::vector<Line> record() const;
    Shown shown() const;
    void closeFirst();

    TemporaryFolder m_folder;
};

// "notification-daemon", which a mouse clicks. What its windows say nobody can read, so they are only counted, and one
// is clicked whatever its title.
class DaemonDesk final : public ProgramDesk {
  public:
    DaemonDesk();

    bool shows(const Shown& expected) override;
    void click(const std::string& title) override;

  protected:
    int countShown() const override;

  private:
    QStringList windows() const;
};

// The one that QUILLANE_NOTIFICATION_SERVER names, which is "dunst" or "notification-daemon", or the test's own.
std::unique_ptr<ServerDesk> serverDesk();

} // namespace quillane
