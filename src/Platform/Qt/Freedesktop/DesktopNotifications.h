#pragma once
#include "NotificationServer.h"
#include "SessionBus.h"
#include "TaskRunner.h"
#include "UserNotifications.h"
#include <QString>
#include <chrono>
#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quillane {

// Notifications of a freedesktop desktop. Nothing is asked of the bus before the first one, and nothing waits: the
// bus is reached by a job and the server is asked without blocking. Nobody has to be asked for permission.
//
// A server gives numbers. What a number means is kept until its notification is closed or its server is gone, so that
// a click is told with the user info of what was clicked; for signals about anything else are told to all programs.
// One notification of an identifier is on its way at a time: the last of those that come meanwhile follows it, in
// the place of the same number.
//
// Main thread only; `tasks` must outlive it.
class DesktopNotifications final : public UserNotifications {
  public:
    struct Patience {
        std::chrono::milliseconds answer{5'000}; // for each answer of the server
        std::chrono::milliseconds end{500};      // for all of them at the end
    };

    // Of more identifiers than these the oldest is withdrawn.
    static constexpr std::size_t kMostStanding = 64;
    // Characters of a title or a body; what is longer ends in "…". Labels come from outside.
    static constexpr qsizetype kLongestText = 2'000;
    static constexpr qsizetype kLongestToken = 4'096; // a longer one is none

    explicit DesktopNotifications(TaskRunner& tasks, SessionBus bus = sharedSessionBus)
        : DesktopNotifications(tasks, std::move(bus), Patience()) {}
    DesktopNotifications(TaskRunner& tasks, SessionBus bus, Patience patience);
    DesktopNotifications(const DesktopNotifications&) = delete;
    DesktopNotifications& operator=(const DesktopNotifications&) = delete;

    void requestAuthorization() override {}
    void add(const UserNotification& notification) override;
    void setClickHandler(std::function<void(const Click&)> handler) override;

    // For the end of the program: a click on what stands could not be answered any more. Forgets what is on its way,
    // and returns when the server has heard of it or the patience is at its end.
    void withdrawAll();

  private:
    using UserInfo = std::map<std::string, std::string>;

    struct Entry {
        std::string identifier;
        NotificationServer::Number number{};    // of what stands, if anything does
        UserInfo userInfo{};                    // of what stands
        std::string token{};                    // for the click that comes next
        std::optional<UserInfo> sent{};         // of what is on its way
        std::optional<UserNotification> next{}; // follows what is on its way
    };
    struct WaitingClick {
        NotificationServer::Number number;
        Click click;
    };

    Entry* find(const std::string& identifier);
    Entry* find(const NotificationServer::Number& number);
    Entry* entryFor(const std::string& identifier);
    bool withdrawOldest();
    void dropEmpty();
    void reach();
    void meet(std::shared_ptr<NotificationServer> server);
    void follow();
    void sendWaiting();
    void sendWaiting(bool takesMarkup);
    void send(Entry& entry, const UserNotification& notification, bool takesMarkup);
    void learn(const std::optional<NotificationServer::Abilities>& abilities);
    void stand(const std::string& identifier, const std::optional<NotificationServer::Number>& number);
    void forget(const NotificationServer::Number& number);
    void changeOwner(const QString& owner);
    bool isGone(const QString& server) const;
    void keepToken(const NotificationServer::Number& number, const QString& token);
    void takeClick(const NotificationServer::Number& number);
    void tellLater();
    void tell();

    TaskRunner& m_tasks;
    SessionBus m_bus;
    Patience m_patience;
    std::function<void(const Click&)> m_handler;
    std::vector<WaitingClick> m_clicks; // not told yet
    std::vector<Entry> m_entries;       // in the order in which their identifiers came up
    std::shared_ptr<NotificationServer> m_server;
    QString m_owner;                   // of the server's name, once it has changed; empty for unknown or none
    std::optional<bool> m_takesMarkup; // asked once of each owner
    bool m_isReaching = false;
    bool m_isAsking = false;
    // Jobs hold it weakly and look at it on the main thread, where this is destroyed.
    std::shared_ptr<DesktopNotifications*> m_self = std::make_shared<DesktopNotifications*>(this);
};

} // namespace quillane
