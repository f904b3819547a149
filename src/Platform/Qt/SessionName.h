#pragma once
#include "SessionBus.h"
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

class QObject;

namespace quillane {

// The program's name on the user's message bus, which one of its starts has, with the object that answers there,
// "org.freedesktop.Application". Asked in a thread of its own, as a bus that has stopped holds up whoever asks. The
// caller's thread is the main one, and there need be no QCoreApplication yet.
class SessionName {
  public:
    enum class Standing {
        absent, // there is no bus, or it has not answered
        ours,
        taken, // by another start, which has not answered
        heard  // by another start, which has heard the call
    };

    // `object` has the slots of the interface and lives on the main thread. It outlives this.
    SessionName(SessionBus bus, QObject& object);
    // Waits for a bus that has not answered yet, which may be long.
    ~SessionName();
    SessionName(const SessionName&) = delete;
    SessionName& operator=(const SessionName&) = delete;

    // Takes the name, or else has whoever has it come forward with the token. Waits no longer than `patience`; a bus
    // that answers later may still give the name.
    Standing takeOrTell(const std::string& token, std::chrono::milliseconds patience);
    // Has whoever has the name come forward, and does not take it. While the bus owes an
    // answer to an earlier call of either, a call does nothing.
    Standing tell(const std::string& token, std::chrono::milliseconds patience);

  private:
    using Moment = std::chrono::steady_clock::time_point;
    enum class Wish { takeOrTell, tell };

    Standing ask(Wish wish, const std::string& token, std::chrono::milliseconds patience);
    void talk(Wish wish, const std::string& token, Moment end);
    void talkTo(QDBusConnection& bus, Wish wish, const std::string& token, Moment end);
    void note(Standing standing);

    SessionBus m_bus;
    QObject& m_object;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    Standing m_standing = Standing::absent;
    bool m_isTalking = false;
    std::thread m_thread;
};

} // namespace quillane
