#pragma once
#include "Clock.h"
#include "StopToken.h"
#include "Workspace.h"
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>

namespace quillane {

// A picture that somebody else makes on a thread of theirs. Both sides share it, as it may come when nobody waits for
// it any more. Any thread.
class AwaitedPicture {
  public:
    using Picture = std::shared_ptr<const IconImage>;

    // How soon a stop ends a wait. Nothing else is as late: a picture wakes it.
    static constexpr Duration kBetweenLooks = std::chrono::milliseconds(40);

    // Null for none. The first one counts.
    void give(Picture picture);
    // Blocks until it has been given; nothing once stop is requested, or `patience` has passed without it.
    std::optional<Picture> wait(const StopToken& stop, const Clock& clock, Duration patience,
                                Duration betweenLooks = kBetweenLooks);

  private:
    std::mutex m_mutex; // guards the picture
    std::condition_variable m_given;
    std::optional<Picture> m_picture;
};

} // namespace quillane
