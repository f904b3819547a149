#pragma once
#include "Bytes.h"
#include "Crew.h"
#include "FileSystem.h"
#include "FileURL.h"
#include "Platform.h"
#include "Sha256.h"
#include "StopToken.h"
#include "TaskRunner.h"
#include <array>
#include <cstddef>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <variant>
#include <vector>

namespace quillane {

// Tells files apart that agree in their ends, by all that they hold. Those that agree so far are a class and are
// compared step by step; of what has been compared one is hashed, while memory still has it.
class SteppedComparison {
  public:
    // What a failure takes with it.
    static constexpr std::size_t kPortion = std::size_t{1024} * 1024;
    // What is read at a time: several fit the cache.
    static constexpr std::size_t kStep = std::size_t{64} * 1024;
    // How far comparing goes ahead of hashing. What turns out to differ within it has not been hashed for nothing.
    static constexpr Bytes kAhead = Bytes{64} * 1024 * 1024;
    // Contents that a thread hashes side by side, which takes its processor less time than one after the other.
    static constexpr std::size_t kLanes = 4;
    // Files of a kind at most, as each is open meanwhile: two threads with kLanes kinds each stay well below the 256
    // descriptors that a Mac gives a program.
    static constexpr std::size_t kMostOpen = 16;

    // At most kMostOpen files that may be equal.
    struct Kind {
        std::size_t number = 0;
        bool isPart = false; // whether other kinds of this number have files that may equal these
        std::span<const std::size_t> files;
    };
    struct Found {
        std::size_t kind = 0;
        Sha256Digest digest = {};
        std::size_t file = 0;
    };

    // Files are told by their place in `files`, which lives as long as this. `ahead` as kAhead.
    SteppedComparison(const Platform& platform, Priority priority, const StopToken& stop,
                      std::span<const FileURL* const> files, Bytes ahead);

    // The digests of all that may equal another, and of some that equal none, in no order. Of a file that fails on
    // the way that of the whole portions before; nothing of what can't be opened, closed, or read once more. Partial
    // when stopped. Blocks; one thread of the pool helps. Once.
    std::vector<Found> found(std::span<const Kind> kinds);

  private:
    struct Member {
        std::size_t file = 0;
        std::unique_ptr<OpenFile> open;
        std::optional<ResourceValues> before; // what its path told when it was opened
    };
    // Open files that agree in all that lies before an offset.
    struct Class {
        std::size_t kind = 0;
        bool isPart = false;
        std::vector<Member> members;
        Bytes offset = 0;
        bool isInPortion = false; // whether any of them has been read behind its last whole portion
        Bytes hashed = 0; // how much of that is in the hash: no more than whole portions while it is compared
        Sha256 hash = {};
        Bytes due = 0;           // how much must be in it before anything else is done
        bool isCompared = false; // whether `due` is all that counts of them
        bool isWhole = false;    // and all that they hold

        bool mayEqual() const { return members.size() > 1 || (isPart && !members.empty()); }
        bool isToBeHashed() const { return isCompared || hashed < due; }
        bool isDone() const;
    };
    using Piece = std::variant<Kind, Class>;
    using Others = Crew<Piece>::Others;
    class Buffers;

    Class begun(const Kind& kind) const;
    static Class begun(Class&& all) { return std::move(all); }
    void lead(Piece piece, const Others& others);
    static std::vector<Class*> waitingIn(std::vector<Class>& classes);
    static Class apartFrom(const Class& all);
    void compare(std::vector<Class>& classes, std::size_t which, const Buffers& buffers) const;
    void advance(Class& all, std::size_t length) const;
    void hash(std::span<Class* const> classes, const Buffers& buffers);
    static std::span<const std::byte> readAgain(Class& all, std::span<std::byte> buffer);
    void end(Class& all);
    std::optional<ResourceValues> valuesOf(std::size_t file) const;
    bool isUnchanged(const Member& member) const;

    const Platform m_platform;
    const Priority m_priority;
    const StopToken m_stop;
    const std::span<const FileURL* const> m_files;
    const Bytes m_ahead;
    std::mutex m_mutex; // guards what follows
    std::vector<Found> m_found;
};

} // namespace quillane
