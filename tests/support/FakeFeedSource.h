#pragma once
#include "FeedSource.h"
#include "TaskRunner.h"
#include <memory>
#include <utility>

namespace quillane {

// A place that answers when the test says so. Main thread.
class FakeFeedSource final : public FeedSource {
  public:
    // Answers come at a turn of this runner's main thread.
    explicit FakeFeedSource(TaskRunner& tasks)
        : m_tasks(tasks) {}

    int fetches = 0; // that were begun
    bool isFetching() const { return m_arrived != nullptr; }
    void answer(Answer answer) {
        m_tasks.post([this, fetch = std::weak_ptr(m_arrived), answer = std::move(answer)] {
            if (const auto arrived = fetch.lock()) {
                m_arrived.reset();
                (*arrived)(answer);
            }
        });
    }

    void fetch(std::size_t mostBytes, std::function<void(const Answer&)> arrived) override {
        ++fetches;
        const auto bounded = [mostBytes, arrived = std::move(arrived)](const Answer& answer) {
            const auto* const text = std::get_if<std::string>(&answer);
            arrived(text != nullptr && text->size() > mostBytes ? Answer(Failure::tooLarge) : answer);
        };
        m_arrived = std::make_shared<std::function<void(const Answer&)>>(bounded);
    }
    void stop() override { m_arrived.reset(); }

  private:
    TaskRunner& m_tasks;
    std::shared_ptr<std::function<void(const Answer&)>> m_arrived; // null while none runs
};

} // namespace quillane
