#include "ContentComparison.h"
#include "Crew.h"
#include "FileSystem.h"
#include "Sha256.h"
#include <algorithm>
#include <cstring>
#include <memory>
#include <mutex>
#include <numeric>
#include <optional>
#include <span>
#include <string_view>
#include <utility>
#include <variant>

namespace quillane::ContentComparison {
namespace {

constexpr int kHelpers = 1; // beside the job's own thread: more would seek against each other on one disk

using Buffer = std::vector<std::byte>;

// One of the files that are told apart.
struct Candidate {
    const FileURL* url = nullptr;
    Bytes size = 0;
    std::string ends; // the digest of its two ends; empty for what can't be read
};

// Of the beginning and, of a longer file, of the end; nothing for what can't be opened, begun or closed. A file whose
// end can't be read is known by its beginning.
std::string digestOfEnds(const FileSystem& files, const FileURL& url) {
    const auto opened = files.openForReading(url);
    if (!opened) {
        return {};
    }
    auto& file = **opened;
    Buffer buffer(kEnd);
    const auto begin = file.readAt(buffer, 0);
    if (!begin) {
        return {};
    }
    Sha256 hash;
    hash.update(std::span(buffer).first(*begin));
    constexpr auto kEndBytes = static_cast<Bytes>(kEnd);
    if (const auto length = file.length(); length && *length > kEndBytes) {
        if (const auto end = file.readAt(buffer, *length - kEndBytes)) {
            hash.update(std::span(buffer).first(*end));
        }
    }
    return file.close() ? hash.hex() : std::string();
}

// A file that is being read.
struct Member {
    std::size_t candidate = 0;
    std::unique_ptr<OpenFile> file;
};

// Open files that agree in all that lies before an offset.
struct Class {
    std::size_t kind = 0; // which of the classes of equal ends it comes from
    std::vector<Member> members;
    Bytes offset = 0;
    bool isInPortion = false; // whether any of its files has been read behind the last portion
    Sha256 hash;              // of what they agree in; not kept up while the class has a single member
    Sha256 hashOfPortions; // of the whole portions in it: what is left of a file that fails in the next one
};

bool areSame(std::span<const std::byte> a, std::span<const std::byte> b) {
    return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size()) == 0;
}

// What the threads find out together.
class Comparison {
  public:
    Comparison(const Platform& platform, Priority priority, const StopToken& stop,
               const std::vector<Candidate>& candidates)
        : m_platform(platform)
        , m_priority(priority)
        , m_stop(stop)
        , m_candidates(candidates) {}

    // By kind and digest.
    using Equal = std::map<std::pair<std::size_t, std::string>, std::vector<std::size_t>>;

    // The candidates whose contents are equal, in no order. A kind is two or more candidates.
    Equal equal(std::vector<std::vector<std::size_t>> kinds) {
        std::vector<Piece> pieces;
        for (auto kind = kinds.size(); kind-- > 0;) { // the largest first, so that no thread is left with one
            pieces.emplace_back(Unopened{kind, std::move(kinds[kind])});
        }
        const auto work = [this](Piece piece, const Others& others) {
            std::visit([&](auto& part) { handle(std::move(part), others); }, piece);
        };
        Crew<Piece>::run(m_platform.tasks, m_priority, kHelpers, std::move(pieces), work);
        return std::move(m_equal);
    }

  private:
    struct Unopened {
        std::size_t kind;
        std::vector<std::size_t> candidates;
    };
    struct Single { // to be hashed by itself
        std::size_t kind;
        std::size_t candidate;
    };
    using Piece = std::variant<Unopened, Single, Class>;
    using Others = Crew<Piece>::Others;

    std::optional<Member> opened(std::size_t candidate) const {
        auto file = m_platform.files.openForReading(*m_candidates[candidate].url);
        return file ? std::optional(Member{candidate, std::move(file).value()}) : std::nullopt;
    }

    void handle(const Unopened& kind, const Others& others) {
        if (kind.candidates.size() > kMostInStep) {
            for (const auto candidate : kind.candidates) {
                giveOrHandle(Single{kind.kind, candidate}, others);
            }
            return;
        }
        Class all;
        all.kind = kind.kind;
        for (const auto candidate : kind.candidates) {
            if (auto member = opened(candidate)) {
                all.members.push_back(std::move(*member));
            }
        }
        handle(std::move(all), others);
    }

    void handle(const Single& single, const Others& /*others*/) {
        auto member = opened(single.candidate);
        if (!member) {
            return;
        }
        Buffer buffer(kStep);
        Class alone;
        alone.kind = single.kind;
        while (!m_stop.stopRequested()) {
            beginPortion(alone);
            const auto read = member->file->readAt(buffer, alone.offset);
            if (!read) {
                end(alone.kind, alone.hashOfPortions, *member);
                return;
            }
            alone.hash.update(std::span(buffer).first(*read));
            if (*read < buffer.size()) {
                end(alone.kind, alone.hash, *member);
                return;
            }
            alone.offset += static_cast<Bytes>(*read);
            alone.isInPortion = !isAtPortion(alone.offset);
        }
    }

    void handle(Class whole, const Others& others) {
        Buffer first(kStep);
        Buffer other(kStep);
        std::vector<Class> classes;
        classes.push_back(std::move(whole));
        while (!classes.empty()) {
            auto next = std::move(classes.back());
            classes.pop_back();
            while (isReadOn(next)) {
                auto rest = step(next, first, other);
                if (rest && others.want()) {
                    others.give(std::move(*rest));
                } else if (rest) {
                    classes.push_back(std::move(*rest));
                }
            }
        }
    }

    void giveOrHandle(Single single, const Others& others) {
        if (others.want()) {
            others.give(single);
        } else {
            handle(single, others);
        }
    }

    static bool isAtPortion(Bytes offset) { return offset % static_cast<Bytes>(kPortion) == 0; }

    // A lone member may still fail in its portion, as another did. Behind it, it holds a portion that no other does.
    bool isReadOn(const Class& all) const {
        return !m_stop.stopRequested() && !all.members.empty() && (all.members.size() > 1 || all.isInPortion);
    }

    static void beginPortion(Class& all) {
        if (!all.isInPortion) {
            all.hashOfPortions = all.hash;
            all.isInPortion = true;
        }
    }

    // Reads one step of each member and ends those that fail or end in it. What differs from the first goes on from
    // where the step began, as the class that is returned.
    std::optional<Class> step(Class& all, Buffer& first, Buffer& other) {
        beginPortion(all);
        std::vector<Member> same;
        std::vector<Member> different;
        std::span<const std::byte> bytes;
        for (auto& member : all.members) {
            auto& buffer = same.empty() ? first : other;
            const auto read = member.file->readAt(buffer, all.offset);
            if (!read) {
                end(all.kind, all.hashOfPortions, member);
                continue;
            }
            const auto own = std::span<const std::byte>(buffer).first(*read);
            if (same.empty()) {
                bytes = own;
            }
            (areSame(own, bytes) ? same : different).push_back(std::move(member));
        }
        std::optional<Class> rest;
        if (!different.empty()) {
            rest = Class{all.kind, std::move(different), all.offset, all.isInPortion,
                         all.hash, all.hashOfPortions};
        }
        all.members = std::move(same);
        advance(all, bytes);
        return rest;
    }

    // Over what all members hold next. Fewer bytes than a step are the last.
    void advance(Class& all, std::span<const std::byte> bytes) {
        const bool hasEnded = bytes.size() < kStep;
        // A file that ends at a portion holds what is left of one that fails there.
        const bool isHashed = all.members.size() > 1 || (bytes.empty() && isAtPortion(all.offset));
        if (isHashed) {
            all.hash.update(bytes);
        }
        all.offset += static_cast<Bytes>(bytes.size());
        all.isInPortion = !isAtPortion(all.offset);
        if (hasEnded) {
            for (auto& member : std::exchange(all.members, {})) {
                if (isHashed) {
                    end(all.kind, all.hash, member);
                }
            }
        }
    }

    void end(std::size_t kind, const Sha256& hash, const Member& member) {
        if (member.file->close()) {
            auto digest = hash.hex();
            const std::lock_guard lock(m_mutex);
            m_equal[{kind, std::move(digest)}].push_back(member.candidate);
        }
    }

    const Platform m_platform;
    const Priority m_priority;
    const StopToken m_stop;
    const std::vector<Candidate>& m_candidates;
    std::mutex m_mutex; // guards what follows
    Equal m_equal;
};

std::vector<Candidate> candidatesOf(const std::map<Bytes, std::vector<FileURL>>& files) {
    std::vector<Candidate> candidates;
    for (const auto& [size, urls] : files) {
        for (const auto& url : urls.size() > 1 ? std::span(urls) : std::span<const FileURL>()) {
            candidates.push_back({&url, size, {}});
        }
    }
    return candidates;
}

void readEnds(const Platform& platform, Priority priority, std::vector<Candidate>& candidates,
              const StopToken& stop) {
    std::vector<std::size_t> pieces(candidates.size());
    std::iota(pieces.begin(), pieces.end(), std::size_t{0});
    const auto work = [&](std::size_t candidate, const Crew<std::size_t>::Others& /*others*/) {
        if (!stop.stopRequested()) {
            candidates[candidate].ends = digestOfEnds(platform.files, *candidates[candidate].url);
        }
    };
    Crew<std::size_t>::run(platform.tasks, priority, kHelpers, std::move(pieces), work);
}

// Two or more of one size with the same ends each, in the order of both.
std::vector<std::vector<std::size_t>> kindsOf(const std::vector<Candidate>& candidates) {
    std::map<std::pair<Bytes, std::string_view>, std::vector<std::size_t>> byEnds;
    for (std::size_t i = 0; i < candidates.size(); ++i) {
        if (!candidates[i].ends.empty()) {
            byEnds[{candidates[i].size, candidates[i].ends}].push_back(i);
        }
    }
    std::vector<std::vector<std::size_t>> kinds;
    for (auto& [ends, members] : byEnds) {
        if (members.size() > 1) {
            kinds.push_back(std::move(members));
        }
    }
    return kinds;
}

} // namespace

std::vector<EqualFiles> equalFiles(const Platform& platform, Priority priority,
                                   const std::map<Bytes, std::vector<FileURL>>& files,
                                   const StopToken& stop) {
    auto candidates = candidatesOf(files);
    readEnds(platform, priority, candidates, stop);
    std::vector<EqualFiles> found;
    if (stop.stopRequested()) {
        return found;
    }
    for (auto& [key, members] : Comparison(platform, priority, stop, candidates).equal(kindsOf(candidates))) {
        if (members.size() < 2) {
            continue;
        }
        std::ranges::sort(members);
        EqualFiles equal{key.second, candidates[members.front()].size, {}};
        for (const auto member : members) {
            equal.urls.push_back(*candidates[member].url);
        }
        found.push_back(std::move(equal));
    }
    // Half of the groups would look like all of them.
    return stop.stopRequested() ? std::vector<EqualFiles>() : found;
}

} // namespace quillane::ContentComparison
