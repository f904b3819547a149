#pragma once
#include "Clock.h"
#include "SessionBus.h"
#include "ThumbnailMaker.h"
#include "ThumbnailStore.h"
#include <QSet>
#include <QString>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>

namespace quillane {

// Pictures that other programs of the desktop have made, and the one that makes them at request: the service
// "org.freedesktop.thumbnails.Thumbnailer1", where there is one. Blocks; any thread,
// many at once.
class DesktopThumbnails final : public ThumbnailMaker {
  public:
    // Lets that much time pass.
    using Pause = std::function<void(Duration)>;

    // From the request to the moment when nothing is expected any more.
    static constexpr Duration kPatience = std::chrono::seconds(3);
    static constexpr Duration kBetweenLooks = std::chrono::milliseconds(40);
    // How long nothing is asked of a service that is not there, does not answer in time or makes nothing: it may have
    // been busy, or yet to come.
    static constexpr Duration kRest = std::chrono::minutes(1);

    // `clock` outlives this.
    DesktopThumbnails(ThumbnailStore store, const Clock& clock, SessionBus bus = sharedSessionBus,
                      Pause pause = sleepThisThread);

    // What the store holds.
    std::shared_ptr<const IconImage> existing(const FileURL& url, Date modified, int leastSide) override {
        return m_store.best(url, modified, leastSide);
    }
    // The same after the service has been asked to make it.
    std::shared_ptr<const IconImage> made(const FileURL& url, Date modified, int side,
                                          const StopToken& stop) override;

    static void sleepThisThread(Duration duration);

  private:
    struct Abilities {
        QSet<QString> types;   // of files, for paths of the machine; empty where there is no service
        QSet<QString> flavors; // sizes that it makes
    };
    Abilities abilities();
    void rest();
    std::shared_ptr<const IconImage> awaited(const FileURL& url, Date modified, const StopToken& stop) const;

    ThumbnailStore m_store;
    const Clock& m_clock;
    SessionBus m_bus;
    Pause m_pause;
    std::mutex m_mutex;                   // guards what follows
    std::optional<Abilities> m_abilities; // once the service has told them
    std::optional<Instant> m_restsUntil;
};

} // namespace quillane
