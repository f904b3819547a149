#pragma once
#include "InstanceLock.h"
#include "InstanceSocket.h"
#include "SessionBus.h"
#include "SessionName.h"
#include <QDBusContext>
#include <QObject>
#include <QStringList>
#include <QVariantList>
#include <QVariantMap>
#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <vector>

class QSocketNotifier;

namespace quillane {

// One program a person. The first start over one settings file goes on; each later one has it come forward and ends.
// The lock beside the settings decides, whatever buses and displays there are: programs over other settings don't know
// of each other. Where there can be no lock, the name on the message bus decides. A start that can't tell the first one
// anything ends too. Main thread only.
class SessionInstance final : public QObject, protected QDBusContext {
    Q_OBJECT

  public:
    // What another start of the program, or the desktop, asks of the first.
    struct Request {
        std::string activationToken;        // with which the window comes forward; empty for none
        std::optional<std::string> section; // to be shown then: the title of one, or anything else
        friend bool operator==(const Request&, const Request&) = default;
    };
    enum class Standing {
        first,
        second,       // the first one has come forward
        secondUnheard // the first one, or whoever has its place, has not answered
    };
    struct Patience {
        std::chrono::milliseconds answer; // of the first one, and once more of the bus
        std::chrono::milliseconds end;    // of the one that has started this one anew
    };
    static constexpr Patience kPatience{std::chrono::seconds(1), std::chrono::seconds(10)};

    // What a start says that ends without having been heard. It does not know where the first one is: a home folder may be
    // shared by machines.
    static constexpr const char* kUnheard =
        "Quillane is already running, here or on another machine, and does not answer.";
    // What a token may take; a longer one is none.
    static constexpr std::size_t kLongestToken = 1024;

    // `settings` is the path of the settings file.
    explicit SessionInstance(const std::string& settings, SessionBus bus = sharedSessionBus,
                             Patience patience = kPatience);
    ~SessionInstance() override;

    // What the desktop gave along with this start; to be asked before there is a QGuiApplication, which takes it away.
    static std::string tokenOfThisStart();

    // Asked once, before there is a QCoreApplication. The first start is as a rule known within milliseconds.
    Standing stand(const std::string& token, bool isRelaunched);
    // For the main function: the status with which this start ends, once it has said why, or nothing for the first.
    std::optional<int> endOfSecond(int argc, char** argv);

    // Whether the request is done; false when the program is about to end, which is then no answer: whoever asked
    // finds that the place is free.
    using Handler = std::function<bool(const Request&)>;
    // From now on requests are told, those that came before first. They come at later turns of the event loop, which
    // there must be.
    void follow(Handler handler);

  public slots:
    // "org.freedesktop.Application", by its own words. Of its actions there is "show-section", with a title.
    void Activate(const QVariantMap& platformData);
    void Open(const QStringList& uris, const QVariantMap& platformData);
    void ActivateAction(const QString& action, const QVariantList& parameters,
                        const QVariantMap& platformData);

  private:
    using Moment = std::chrono::steady_clock::time_point;

    bool tellHolder(const std::string& token);
    InstanceSocket::Answer tellBySocket(const std::string& token, Moment end) const;
    Standing standAlone(const std::string& token, InstanceLock::Holder holder, Moment endOfOld);
    Standing standWithLock();
    Standing standWithoutLock(const std::string& token, Moment endOfOld);
    void waitForOld(Moment end);
    void listen();
    // False when the program is about to end.
    bool hear(Request request);
    void hearOnBus(Request request);
    void read(const InstanceSocket& socket);

    Patience m_patience;
    InstanceLock m_lock;
    std::optional<InstanceSocket> m_socket;
    Handler m_handler;
    std::vector<Request> m_waiting;
    QSocketNotifier* m_notifier = nullptr;
    SessionName m_name; // last: its thread ends before what it uses
};

} // namespace quillane
