#include "TaskScope.h"

namespace quillane {

TaskScope::TaskScope(TaskRunner& runner, OnError onError)
    : m_runner(runner)
    , m_onError(std::move(onError)) {}

TaskScope::~TaskScope() {
    auto roots = std::move(m_roots); // none can be found any more while they go
    for (const auto& root : roots) {
        root->stop.requestStop();
    }
}

TaskHandle TaskScope::add(const std::shared_ptr<Root>& root) {
    TaskHandle handle;
    root->stop = handle.m_stop;
    root->position = m_roots.insert(m_roots.end(), root);
    m_runner.post([this, weak = std::weak_ptr<Root>(root)] {
        if (const auto alive = weak.lock()) {
            begin(*alive);
        }
    });
    return handle;
}

void TaskScope::begin(Root& root) {
    root.driver.emplace(drive(*this, root));
    root.driver->resume();
}

TaskScope::Driver TaskScope::drive(TaskScope& scope, Root& root) {
    try {
        Task<> task = root.make();
        co_await task;
    } catch (...) {
        if (!scope.m_onError) {
            std::terminate();
        }
        scope.m_onError(std::current_exception());
    }
    scope.finish(root);
}

// The frame is still running and can't free itself: a later turn does.
void TaskScope::finish(Root& root) {
    m_runner.post([this, weak = std::weak_ptr<Root>(*root.position)] {
        if (const auto alive = weak.lock()) {
            m_roots.erase(alive->position);
        }
    });
}

} // namespace quillane
