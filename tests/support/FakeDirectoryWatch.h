#pragma once
#include "DirectoryWatch.h"
#include "TaskRunner.h"
#include <map>
#include <set>
#include <utility>

namespace quillane {

// Watches nothing by itself: a test says when a folder has changed. Main thread.
class FakeDirectoryWatch final : public DirectoryWatch {
  public:
    // Handlers are called at a turn of this runner's main thread.
    explicit FakeDirectoryWatch(TaskRunner& tasks)
        : m_tasks(tasks) {}

    // A folder that can't be watched from now on.
    void refuse(const FileURL& folder) { m_refused.insert(folder); }
    // Something happened in the folder: each of its watches is told once, at a later turn.
    void change(const FileURL& folder) {
        for (const auto& entry : m_sources) {
            if (entry.second.folder == folder) {
                m_tasks.post([this, source = entry.first] { tell(source); });
            }
        }
    }
    // What is watched now, each folder as often as it is watched.
    std::multiset<FileURL> watched() const {
        std::multiset<FileURL> folders;
        for (const auto& entry : m_sources) {
            folders.insert(entry.second.folder);
        }
        return folders;
    }

    std::unique_ptr<Source> watch(const FileURL& folder, std::function<void()> changed) override {
        if (m_refused.contains(folder)) {
            return nullptr;
        }
        const int number = ++m_last;
        m_sources.emplace(number, Watched{folder, std::move(changed)});
        return std::make_unique<Held>(*this, number);
    }

  private:
    struct Watched {
        FileURL folder;
        std::function<void()> changed;
    };
    class Held final : public Source {
      public:
        Held(FakeDirectoryWatch& watch, int number)
            : m_watch(watch)
            , m_number(number) {}
        ~Held() override { m_watch.m_sources.erase(m_number); }

      private:
        FakeDirectoryWatch& m_watch;
        int m_number;
    };

    void tell(int source) {
        if (const auto found = m_sources.find(source); found != m_sources.end()) {
            const auto changed = found->second.changed;
            changed();
        }
    }

    TaskRunner& m_tasks;
    std::set<FileURL> m_refused;
    std::map<int, Watched> m_sources; // by the order of their making
    int m_last = 0;
};

} // namespace quillane
