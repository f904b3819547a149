#include "PosixDirectoryWatch.h"
#include <algorithm>
#include <map>
#include <mutex>
#include <system_error>
#include <utility>
#include <vector>

namespace quillane {

// What is watched now.
struct PosixDirectoryWatch::Sources {
    using Handler = std::function<void()>;
    struct Watched {
        FolderEvents::Mark mark;
        std::shared_ptr<const Handler> changed; // shared with a call that is under way
        bool hasChanged = false;                // and was not told yet
    };

    std::mutex mutex; // guards everything below
    std::map<int, Watched> watched;
    bool isPosted = false; // a job that tells will come

    // Any thread. Whether a job must be posted now.
    bool note(const FolderEvents::Happened& happened) {
        const std::lock_guard lock(mutex);
        bool concerns = false;
        for (auto& entry : watched) {
            auto& source = entry.second;
            if (happened.anywhere || std::ranges::find(happened.marks, source.mark) != happened.marks.end()) {
                source.hasChanged = true;
                concerns = true;
            }
        }
        return concerns && !std::exchange(isPosted, true);
    }

    // Main thread. A handler may let any source go.
    void tell() {
        for (const int source : takeChanged()) {
            if (const auto changed = handlerOf(source)) {
                (*changed)();
            }
        }
    }

  private:
    std::vector<int> takeChanged() {
        const std::lock_guard lock(mutex);
        isPosted = false;
        std::vector<int> changed;
        for (auto& [number, source] : watched) {
            if (std::exchange(source.hasChanged, false)) {
                changed.push_back(number);
            }
        }
        return changed;
    }
    // Null for one that was let go.
    std::shared_ptr<const Handler> handlerOf(int source) {
        const std::lock_guard lock(mutex);
        const auto found = watched.find(source);
        return found == watched.end() ? nullptr : found->second.changed;
    }
};

class PosixDirectoryWatch::Held final : public Source {
  public:
    Held(PosixDirectoryWatch& watch, int source)
        : m_watch(watch)
        , m_source(source) {}
    ~Held() override { m_watch.letGo(m_source); }
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;

  private:
    PosixDirectoryWatch& m_watch;
    int m_source;
};

PosixDirectoryWatch::PosixDirectoryWatch(TaskRunner& tasks, PathOf pathOf)
    : m_tasks(tasks)
    , m_pathOf(std::move(pathOf))
    , m_sources(std::make_shared<Sources>()) {}

PosixDirectoryWatch::~PosixDirectoryWatch() {
    if (m_thread) {
        m_events->interrupt();
        m_thread->join();
    }
}

std::unique_ptr<DirectoryWatch::Source> PosixDirectoryWatch::watch(const FileURL& folder,
                                                                   std::function<void()> changed) {
    const auto path = m_pathOf(folder);
    const std::lock_guard lock(m_sources->mutex); // what happens from now on waits until the source is known
    if (!m_thread) {
        m_events = std::make_unique<FolderEvents>(); // there may be room for it by now
    }
    const auto mark = m_events->add(path);
    if (!mark || !followEvents()) {
        return nullptr;
    }
    const int source = ++m_lastSource;
    m_sources->watched.emplace(
        source, Sources::Watched{*mark, std::make_shared<const Sources::Handler>(std::move(changed))});
    return std::make_unique<Held>(*this, source);
}

bool PosixDirectoryWatch::followEvents() {
    if (m_thread) {
        return true;
    }
    try {
        m_thread.emplace([this] {
            while (const auto happened = m_events->wait()) {
                if (m_sources->note(*happened)) {
                    m_tasks.post([sources = m_sources] { sources->tell(); });
                }
            }
        });
    } catch (const std::system_error&) {
        return false; // the system has no room for another thread
    }
    return true;
}

void PosixDirectoryWatch::letGo(int source) {
    const std::lock_guard lock(m_sources->mutex);
    const auto mark = m_sources->watched.extract(source).mapped().mark;
    const bool isShared =
        std::ranges::any_of(m_sources->watched, [&](const auto& entry) { return entry.second.mark == mark; });
    if (!isShared) {
        m_events->drop(mark);
    }
}

} // namespace quillane
