#pragma once
#include "TaskRunner.h"
#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <exception>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

namespace quillane {

// Blocking work that splits itself: the calling job does it, and threads of a pool help as long as there is
// something to do. Nobody waits for a thread that has not begun, so a job may have a crew on its own pool, and
// where no thread comes it does everything alone.
//
// A worker keeps what it has begun to itself and gives away pieces only when others want them, so pieces can be
// as large as whole trees.
template <class Piece>
class Crew {
    struct State {
        std::mutex mutex;                // guards what follows but `wanting`
        std::condition_variable changed; // a piece came, or the last one is done
        std::deque<Piece> pieces;
        std::size_t working = 0; // workers with a piece in hand
        std::exception_ptr firstError;
        std::atomic<int> wanting = 0; // idle workers that no waiting piece will serve

        Piece takeFirst() {
            Piece piece = std::move(pieces.front());
            pieces.pop_front();
            return piece;
        }
    };

  public:
    // Where a worker gives away pieces. Lives for the whole run; any worker's thread.
    class Others {
      public:
        // Whether a worker waits for something to do. One atomic read.
        bool want() const { return m_state->wanting.load(std::memory_order_relaxed) > 0; }
        // Pieces begin in the order in which they are given away.
        void give(Piece piece) const {
            {
                const std::lock_guard lock(m_state->mutex);
                m_state->pieces.push_back(std::move(piece));
                m_state->wanting.fetch_sub(1, std::memory_order_relaxed);
            }
            m_state->changed.notify_one();
        }
        // A piece that no worker has begun, if there is one, for a worker that can do it side by side with its own.
        std::optional<Piece> take() const {
            const std::lock_guard lock(m_state->mutex);
            if (m_state->pieces.empty()) {
                return std::nullopt;
            }
            m_state->wanting.fetch_add(1, std::memory_order_relaxed); // the worker it would have served
            return m_state->takeFirst();
        }

      private:
        friend class Crew;
        explicit Others(State& state)
            : m_state(&state) {}
        State* m_state;
    };

    // Returns when every piece, and every piece that came of it, is done. `work(piece, others)` is called side
    // by side on this thread and on at most `helpers` threads of the pool; no pieces need none. Throws the first of what it throws;
    // what has not begun by then is dropped.
    template <class Work>
    static void run(TaskRunner& runner, Priority priority, int helpers, std::vector<Piece> pieces,
                    const Work& work) {
        if (pieces.empty()) {
            return;
        }
        const auto state = std::make_shared<State>();
        state->wanting = -static_cast<int>(pieces.size());
        for (auto& piece : pieces) {
            state->pieces.push_back(std::move(piece));
        }
        for (int i = 0; i < helpers; ++i) {
            // Touches `work` only while it has a piece in hand, which run() waits for.
            runner.run(priority, [state, &work] { serve(*state, work); });
        }
        serve(*state, work);
        if (state->firstError) {
            std::rethrow_exception(state->firstError);
        }
    }

  private:
    // Ends when nothing is left and nobody can bring more.
    template <class Work>
    static void serve(State& state, const Work& work) {
        std::unique_lock lock(state.mutex);
        state.wanting.fetch_add(1, std::memory_order_relaxed);
        while (true) {
            state.changed.wait(lock, [&] { return !state.pieces.empty() || state.working == 0; });
            if (state.pieces.empty()) {
                break;
            }
            Piece piece = state.takeFirst();
            ++state.working;
            lock.unlock();
            std::exception_ptr error;
            try {
                work(std::move(piece), Others(state));
            } catch (...) {
                error = std::current_exception();
            }
            lock.lock();
            --state.working;
            state.wanting.fetch_add(1, std::memory_order_relaxed);
            if (error && !state.firstError) {
                state.firstError = error;
            }
            if (state.firstError) {
                state.pieces.clear();
            }
        }
        state.changed.notify_all();
    }
};

} // namespace quillane
