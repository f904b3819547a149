#pragma once
#include "Result.h"
#include <atomic>
#include <cstdint>
#include <string>
#include <sys/types.h>

namespace quillane {

// Room on the user's volume that is kept for the day on which the volume is full, when settings and records of the
// Trash could not be written and so nothing could be moved. A file of the user's own that really holds its blocks;
// it is cut shorter as room is wanted, and laid again once there is enough. It helps where the quota of the user is
// used up as well. It does not help where no more files can be made, on another volume, nor where cutting a file
// gives no room (snapshots that still hold it). What is no reserve of ours (a link, a file with another beginning or
// with a second name) is never touched. Several instances share one. Any thread.
class SpaceReserve {
  public:
    struct Size {
        // In bytes. A record takes a block, mostly 4 KB, so this is room for some 1500 of them; the settings are
        // written whole beside the older ones, and 1500 moves take less than 1 MB there.
        std::int64_t whole = std::int64_t{8} << 20U;
        std::int64_t forSettings = std::int64_t{2} << 20U; // of it, that records of the Trash leave alone
    };
    // Moves leave the share of the settings; what can't wait, such as the settings themselves, gets all there is.
    enum class Use { moves, anything };
    struct Need {
        dev_t device = 0;       // the volume that is full
        std::int64_t bytes = 0; // at least; rounded up
        Use use = Use::moves;
    };

    // `path` is a path of the machine.
    explicit SpaceReserve(std::string path);
    SpaceReserve(std::string path, Size size);

    // Lays the file, or what is missing of it, when the volume has room for that and for a whole reserve besides:
    // the last of it is for others. Makes its folder. False when it is not whole afterwards. Writes some MB, so not
    // on the main thread.
    bool lay();
    // The same when it is known to be short: something was given away, or there was no room for it. Costs nothing
    // otherwise.
    void layAgain();
    // Gives away what is needed, or as much as there is. False when that is nothing.
    bool release(const Need& need);

    // Does the work, and again as long as the volume is full and the reserve has some more. `work` gives a Result,
    // and after a failure can be done again. Without a reserve it is done once.
    template <class Work>
    static auto draw(SpaceReserve* reserve, const Need& need, Work work) {
        auto done = work();
        while (!done && reserve != nullptr && done.error().code == ErrorCode::kWriteNoSpace &&
               reserve->release(need)) {
            done = work();
        }
        return done;
    }

  private:
    const std::string m_path;
    const Size m_size;
    std::atomic<bool> m_isShort = false;
};

} // namespace quillane
