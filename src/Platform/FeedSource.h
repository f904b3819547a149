#pragma once
#include <cstddef>
#include <functional>
#include <string>
#include <variant>

namespace quillane {

// The one place on the network that the program ever asks: where the newest version of it is announced. Main thread
// only; nothing waits.
class FeedSource {
  public:
    enum class Failure {
        unreachable, // in time, over a connection that can be trusted, with a whole answer
        noPage,      // somebody answered, and not with what was asked for
        tooLarge,
    };
    using Answer = std::variant<std::string, Failure>;

    virtual ~FeedSource() = default;
    // Fetches all that is there, of at most so many bytes, and hands it on once, at a later turn. One at a time: a
    // fetch that runs is stopped first.
    virtual void fetch(std::size_t mostBytes, std::function<void(const Answer&)> arrived) = 0;
    // From now on nobody hears of the fetch that runs, if any. So does the end of the source.
    virtual void stop() = 0;
};

} // namespace quillane
