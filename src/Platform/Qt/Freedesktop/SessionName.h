#pragma once
#include "SessionBus.h"
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
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

    // Takes the name, or waits in the bus's queue for it, and tells whoever has it nothing.
    Standing take(std::chrono::milliseconds patience);
    // Takes the name, or else has whoever has it come forward with the token.
    Standing takeOrTell(const std::string& token, std::chrono::milliseconds patience);
    // Has whoever has the name come forward, and does not take it.
    Standing tell(const std::string& token, std::chrono::milliseconds patience);
    // Each waits no longer than `patience`. A bus that answers later may still give the name, but nobody is told
    // anything any more. While it owes an answer to an earlier call, the newest wish waits for that.

  private:
    using Moment = std::chrono::steady_clock::time_point;
    enum class Manner { take, takeOrTell, tell };
    struct Wish {
        Manner manner = Manner::tell;
        std::string token;
        Moment end; // nobody is told anything later
    };

    Standing ask(Wish wish);
    // One wish after the other, until there is none.
    void talk();
    void talkTo(QDBusConnection& bus, const Wish& wish);
    std::optional<Wish> nextWish();
    void note(Standing standing);

    SessionBus m_bus;
    QObject& m_object;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    Standing m_standing = Standing::absent; // of the newest wish
    std::optional<Wish> m_wish;             // which nobody has begun with
    bool m_isTalking = false;
    std::thread m_thread;
};

} // namespace quillane
