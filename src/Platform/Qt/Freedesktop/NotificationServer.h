#pragma once
#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <QStringList>
#include <chrono>
#include <functional>
#include <optional>
#include <vector>

class QDBusMessage;
class QDBusPendingCall;

namespace quillane {

// The desktop's server of notifications, "org.freedesktop.Notifications", in its own words. What it does not answer,
// or answers in a shape that it must not, is told as absent. It lives on one thread and its answers and signals come
// there; nothing but the constructor and closeAll() waits.
class NotificationServer final : public QObject {
    Q_OBJECT

  public:
    // A notification as a server knows it. Another server, or the same one started again, gives the same numbers
    // to others.
    struct Number {
        QString server; // its unique name on the bus
        uint value = 0; // 0 for none
        friend bool operator==(const Number&, const Number&) = default;
    };
    struct Words {
        QString title;
        QString body; // in the server's markup, where it has one
        friend bool operator==(const Words&, const Words&) = default;
    };
    struct Abilities {
        QString server;
        QStringList names;
    };

    // Joins the signals of the bus, which may block for as long as the bus takes. Moves to another thread afterwards
    // if it is to live there. `patience` is for each answer.
    NotificationServer(QDBusConnection bus, std::chrono::milliseconds patience);

    // Each answer comes once and at a later turn, and none after this is gone.
    void askForAbilities(std::function<void(const std::optional<Abilities>&)> answer);
    // In the place of the one with the number `replaced`, which is 0 for none. The answer is the new number, which
    // may be the same.
    using Shown = std::function<void(const std::optional<Number>&)>;
    void show(const Words& words, uint replaced, Shown answer);
    void close(const Number& number);
    // Waits until the server has heard of all, and no longer than `patience`.
    void closeAll(const std::vector<Number>& numbers, std::chrono::milliseconds patience);

  signals:
    // All of these come for the notifications of other programs too.
    void invoked(const Number& number);                          // what a click on the notification does
    void tokenGiven(const Number& number, const QString& token); // before the click that it belongs to
    void closed(const Number& number);
    // `owner` is the unique name of the server from now on, empty for none.
    void ownerChanged(const QString& owner);

  private slots:
    void hearAction(uint number, const QString& action, const QDBusMessage& message);
    void hearToken(uint number, const QString& token, const QDBusMessage& message);
    void hearEnd(uint number, uint reason, const QDBusMessage& message);

  private:
    void hear(const char* signal, const char* slot);
    void askForOwner();
    void post(const QString& server, const Words& words, uint replaced, Shown answer);
    QString senderOf(const QDBusMessage& answer, const QString& asked) const;
    void await(const QDBusPendingCall& call, std::function<void(const QDBusMessage&)> answer);

    QDBusConnection m_bus;
    int m_patience; // milliseconds
    bool m_hasAskedForOwner = false;
    QString m_owner; // the server's unique name; empty while nobody has the name, or it is not known yet
};

} // namespace quillane
