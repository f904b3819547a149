#include "SteppedComparison.h"
#include <algorithm>
#include <cstring>
#include <tuple>
#include <utility>

namespace quillane {
namespace {

constexpr int kHelpers = 1; // beside the job's own thread: more would seek against each other on one disk

constexpr auto kPortionBytes = static_cast<Bytes>(SteppedComparison::kPortion);

Bytes wholePortions(Bytes length) {
    return length - length % kPortionBytes;
}

// What has become longer or shorter since it was compared is no copy.
bool stillEnds(OpenFile& file, Bytes length) {
    std::array<std::byte, 2> lastAndNext = {};
    const auto last = std::max<Bytes>(length - 1, 0);
    const auto read = file.readAt(lastAndNext, last);
    return read && static_cast<Bytes>(*read) == length - last;
}

bool areSame(std::span<const std::byte> a, std::span<const std::byte> b) {
    return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size()) == 0;
}

} // namespace

// A thread's own: a step of each content.
class SteppedComparison::Buffers {
  public:
    std::span<std::byte> of(std::size_t lane) const { return {m_bytes.get() + lane * kStep, kStep}; }

  private:
    std::unique_ptr<std::byte[]> m_bytes = std::make_unique_for_overwrite<std::byte[]>(kLanes * kStep);
};

SteppedComparison::SteppedComparison(const Platform& platform, Priority priority, const StopToken& stop,
                                     std::span<const FileURL* const> files, Bytes ahead)
    : m_platform(platform)
    , m_priority(priority)
    , m_stop(stop)
    , m_files(files)
    , m_ahead(ahead) {}

std::vector<SteppedComparison::Found> SteppedComparison::found(std::span<const Kind> kinds) {
    const auto work = [this](Piece piece, const Others& others) { lead(std::move(piece), others); };
    Crew<Piece>::run(m_platform.tasks, m_priority, kHelpers, {kinds.begin(), kinds.end()}, work);
    return std::move(m_found);
}

SteppedComparison::Class SteppedComparison::begun(const Kind& kind) const {
    Class all;
    all.kind = kind.number;
    all.isPart = kind.isPart;
    for (const auto file : kind.files) {
        const auto before = valuesOf(file);
        if (auto open = m_platform.files.openForReading(*m_files[file])) {
            all.members.push_back({file, std::move(open).value(), before});
        }
    }
    return all;
}

// A lone member may still fail in its portion, as another did. Behind it, it holds a portion that no other does.
bool SteppedComparison::Class::isDone() const {
    return members.empty() || !(mayEqual() || isToBeHashed() || isInPortion);
}

// Leads a class to its end, what splits from it, and, until enough wait to be hashed side by side, others that nobody
// has begun.
void SteppedComparison::lead(Piece piece, const Others& others) {
    const auto begin = [&](Piece& next) {
        return std::visit([&](auto& part) { return begun(std::move(part)); }, next);
    };
    if (m_stop.stopRequested()) {
        return;
    }
    const Buffers buffers;
    std::vector<Class> classes;
    classes.push_back(begin(piece));
    while (!m_stop.stopRequested()) {
        std::erase_if(classes, [](const Class& all) { return all.isDone(); });
        if (classes.size() > 1 && others.want()) {
            others.give(std::move(classes.back()));
            classes.pop_back();
        }
        const auto compared = std::ranges::find_if_not(classes, &Class::isToBeHashed);
        const auto waiting = waitingIn(classes);
        if (waiting.size() < kLanes && compared != classes.end()) {
            compare(classes, static_cast<std::size_t>(compared - classes.begin()), buffers);
        } else if (auto next = waiting.size() < kLanes ? others.take() : std::nullopt) {
            classes.push_back(begin(*next));
        } else if (waiting.empty()) {
            return;
        } else {
            hash(waiting, buffers);
        }
    }
}

// The first that are to be hashed.
std::vector<SteppedComparison::Class*> SteppedComparison::waitingIn(std::vector<Class>& classes) {
    std::vector<Class*> waiting;
    for (auto& all : classes) {
        if (all.isToBeHashed() && waiting.size() < kLanes) {
            waiting.push_back(&all);
        }
    }
    return waiting;
}

// For members that part with it in the step that begins where it stands.
SteppedComparison::Class SteppedComparison::apartFrom(const Class& all) {
    Class apart;
    apart.kind = all.kind;
    apart.isPart = all.isPart;
    apart.offset = all.offset;
    apart.isInPortion = true;
    apart.hashed = all.hashed;
    apart.hash = all.hash;
    return apart;
}

// Reads a step of each member. Those that fail in it, and those that differ from the first, are classes of their own
// from here.
void SteppedComparison::compare(std::vector<Class>& classes, std::size_t which,
                                const Buffers& buffers) const {
    auto& all = classes[which];
    auto different = apartFrom(all);
    auto failed = apartFrom(all);
    failed.due = wholePortions(all.offset);
    failed.isCompared = true;
    std::vector<Member> same;
    std::span<const std::byte> bytes;
    for (auto& member : all.members) {
        const auto buffer = buffers.of(same.empty() ? 0 : 1);
        const auto read = member.open->readAt(buffer, all.offset);
        if (!read) {
            failed.members.push_back(std::move(member));
            continue;
        }
        const auto own = buffer.first(*read);
        if (same.empty()) {
            bytes = own;
        }
        (areSame(own, bytes) ? same : different.members).push_back(std::move(member));
    }
    all.members = std::move(same);
    advance(all, bytes.size());
    for (auto* const apart : {&failed, &different}) {
        if (!apart->members.empty()) {
            classes.push_back(std::move(*apart));
        }
    }
}

// Over what all members hold next. Less than a step is the last.
void SteppedComparison::advance(Class& all, std::size_t length) const {
    // A lone file that ends at a portion holds what is left of one that fails there.
    const bool mayEqual = all.mayEqual() || (length == 0 && all.offset % kPortionBytes == 0);
    all.offset += static_cast<Bytes>(length);
    all.isInPortion = all.offset % kPortionBytes != 0;
    if (length < kStep && !mayEqual) {
        all.members.clear();
    } else if (length < kStep) {
        all.due = all.offset;
        all.isCompared = true;
        all.isWhole = true;
    } else if (mayEqual && wholePortions(all.offset) - all.hashed >= m_ahead) {
        all.due = wholePortions(all.offset);
    }
}

// One step of each, side by side.
void SteppedComparison::hash(std::span<Class* const> classes, const Buffers& buffers) {
    std::vector<Sha256::Part> parts;
    for (std::size_t i = 0; i < classes.size(); ++i) {
        if (m_stop.stopRequested()) {
            return;
        }
        const auto bytes = readAgain(*classes[i], buffers.of(i));
        classes[i]->hashed += static_cast<Bytes>(bytes.size());
        parts.push_back({&classes[i]->hash, bytes});
    }
    Sha256::updateTogether(parts);
    for (auto* const all : classes) {
        if (all->isCompared && all->hashed == all->due) {
            end(*all);
        }
    }
}

// The next to be hashed, of a member that still has it. One that has not has changed, and is left out.
std::span<const std::byte> SteppedComparison::readAgain(Class& all, std::span<std::byte> buffer) {
    const auto rest = static_cast<std::size_t>(all.due - all.hashed);
    const auto bytes = buffer.first(std::min(buffer.size(), rest));
    while (!bytes.empty() && !all.members.empty()) {
        const auto read = all.members.front().open->readAt(bytes, all.hashed);
        if (read && *read == bytes.size()) {
            return bytes;
        }
        all.members.erase(all.members.begin());
    }
    return {};
}

std::optional<ResourceValues> SteppedComparison::valuesOf(std::size_t file) const {
    const auto values = m_platform.files.resourceValues(*m_files[file]);
    return values ? std::optional(*values) : std::nullopt;
}

// What was written over between the reading that compared it and the one that hashed another must not pass for that.
bool SteppedComparison::isUnchanged(const Member& member) const {
    const auto identity = [](const ResourceValues& values) {
        return std::tuple(values.contentModified, values.fileSize, values.device, values.inode);
    };
    const auto now = valuesOf(member.file);
    return member.before.has_value() == now.has_value() &&
           (!now || identity(*member.before) == identity(*now));
}

void SteppedComparison::end(Class& all) {
    const auto digest = all.hash.digest();
    for (const auto& member : std::exchange(all.members, {})) {
        const bool isAsCompared = (!all.isWhole || stillEnds(*member.open, all.due)) && isUnchanged(member);
        if (member.open->close() && isAsCompared) {
            const std::lock_guard lock(m_mutex);
            m_found.push_back({all.kind, digest, member.file});
        }
    }
}

} // namespace quillane
