#include "ContentComparison.h"
#include "Crew.h"
#include "FileSystem.h"
#include "Sha256.h"
#include <algorithm>
#include <array>
#include <iterator>
#include <memory>
#include <optional>
#include <span>
#include <tuple>
#include <utility>

namespace quillane::ContentComparison {
namespace {

constexpr int kHelpers = 1; // beside the job's own thread: more would seek against each other on one disk
constexpr std::size_t kLanes = SteppedComparison::kLanes; // files whose ends are hashed side by side

// What is read into before it is looked at.
class Buffer {
  public:
    explicit Buffer(std::size_t size)
        : m_bytes(std::make_unique_for_overwrite<std::byte[]>(size))
        , m_size(size) {}
    std::span<std::byte> bytes() const { return {m_bytes.get(), m_size}; }

  private:
    std::unique_ptr<std::byte[]> m_bytes;
    std::size_t m_size;
};

// One of the files that are told apart.
struct Candidate {
    const FileURL* url = nullptr;
    Bytes size = 0;
    std::optional<Sha256Digest> ends; // the digest of its two ends; nothing for what can't be read
};

// The beginning and, of a longer file, the end; nothing for what can't be opened, begun or closed. A file whose end
// can't be read is known by its beginning.
std::optional<std::span<const std::byte>> readEnds(const FileSystem& files, const FileURL& url,
                                                   std::span<std::byte> buffer) {
    const auto opened = files.openForReading(url);
    if (!opened) {
        return std::nullopt;
    }
    auto& file = **opened;
    const auto begin = file.readAt(buffer.first(kEnd), 0);
    if (!begin) {
        return std::nullopt;
    }
    auto read = *begin;
    constexpr auto kEndBytes = static_cast<Bytes>(kEnd);
    if (const auto length = file.length(); length && *length > kEndBytes) {
        read += file.readAt(buffer.subspan(read, kEnd), *length - kEndBytes).valueOr(0);
    }
    if (!file.close()) {
        return std::nullopt;
    }
    return buffer.first(read);
}

// Of a few files side by side.
void findEnds(const FileSystem& files, std::span<Candidate> candidates, const StopToken& stop) {
    std::array<Sha256, kLanes> hashes;
    std::vector<Buffer> buffers; // what they hold stays in its place
    std::vector<Sha256::Part> parts;
    for (std::size_t i = 0; i < candidates.size(); ++i) {
        if (stop.stopRequested()) {
            return;
        }
        const auto buffer = buffers.emplace_back(2 * kEnd).bytes();
        if (const auto bytes = readEnds(files, *candidates[i].url, buffer)) {
            candidates[i].ends.emplace();
            parts.push_back({&hashes.at(i), *bytes});
        }
    }
    Sha256::updateTogether(parts);
    for (std::size_t i = 0; i < candidates.size(); ++i) {
        if (candidates[i].ends) {
            candidates[i].ends = hashes.at(i).digest();
        }
    }
}

void findEndsOfAll(const Platform& platform, Priority priority, std::span<Candidate> candidates,
                   const StopToken& stop) {
    std::vector<std::span<Candidate>> pieces;
    for (std::size_t i = 0; i < candidates.size(); i += kLanes) {
        pieces.push_back(candidates.subspan(i, std::min(kLanes, candidates.size() - i)));
    }
    using Crew = Crew<std::span<Candidate>>;
    const auto work = [&](std::span<Candidate> piece, const Crew::Others& /*others*/) {
        findEnds(platform.files, piece, stop);
    };
    Crew::run(platform.tasks, priority, kHelpers, std::move(pieces), work);
}

// Those whose ends are known, by size, ends and their own order.
std::vector<std::size_t> inOrder(std::span<const Candidate> candidates) {
    std::vector<std::size_t> order;
    for (std::size_t i = 0; i < candidates.size(); ++i) {
        if (candidates[i].ends) {
            order.push_back(i);
        }
    }
    std::ranges::sort(order, {}, [&](std::size_t i) {
        return std::tuple<Bytes, const Sha256Digest&, std::size_t>(candidates[i].size, *candidates[i].ends,
                                                                   i);
    });
    return order;
}

// Two or more of one size with the same ends each; the largest first, so that no thread is left with one. The numbers
// follow size and ends.
std::vector<SteppedComparison::Kind> kindsOf(std::span<const Candidate> candidates,
                                             std::span<const std::size_t> order) {
    const auto areOne = [&](std::size_t a, std::size_t b) {
        return candidates[a].size == candidates[b].size && *candidates[a].ends == *candidates[b].ends;
    };
    std::vector<SteppedComparison::Kind> kinds;
    for (std::size_t begin = 0, end = 0; begin < order.size(); begin = end) {
        while (end < order.size() && areOne(order[begin], order[end])) {
            ++end;
        }
        const auto all = order.subspan(begin, end - begin);
        for (std::size_t i = 0; i < all.size() && all.size() > 1; i += SteppedComparison::kMostOpen) {
            kinds.push_back({begin, all.size() > SteppedComparison::kMostOpen,
                             all.subspan(i, std::min(SteppedComparison::kMostOpen, all.size() - i))});
        }
    }
    std::ranges::reverse(kinds);
    return kinds;
}

// Of candidates of some sizes, in the order of the answer.
std::vector<EqualFiles> equalAmong(const Platform& platform, Priority priority,
                                   std::span<Candidate> candidates, const StopToken& stop, Bytes ahead) {
    findEndsOfAll(platform, priority, candidates, stop);
    const auto order = inOrder(candidates);
    std::vector<const FileURL*> urls;
    std::ranges::transform(candidates, std::back_inserter(urls), &Candidate::url);
    auto found = SteppedComparison(platform, priority, stop, urls, ahead).found(kindsOf(candidates, order));
    std::ranges::sort(found, {}, [](const SteppedComparison::Found& one) {
        return std::tuple<std::size_t, const Sha256Digest&, std::size_t>(one.kind, one.digest, one.file);
    });
    std::vector<EqualFiles> equal;
    for (std::size_t begin = 0, end = 0; begin < found.size(); begin = end) {
        const auto& first = found[begin];
        while (end < found.size() && found[end].kind == first.kind && found[end].digest == first.digest) {
            ++end;
        }
        if (end - begin > 1) {
            auto& files = equal.emplace_back(first.digest, candidates[first.file].size);
            for (const auto& one : std::span(found).subspan(begin, end - begin)) {
                files.urls.push_back(candidates[one.file].url);
            }
        }
    }
    return equal;
}

} // namespace

std::vector<EqualFiles> equalFiles(const Platform& platform, Priority priority,
                                   const std::map<Bytes, std::vector<FileURL>>& files, const StopToken& stop,
                                   Bytes ahead) {
    std::vector<EqualFiles> all;
    for (auto sizes = files.begin(); sizes != files.end() && !stop.stopRequested();) {
        std::vector<Candidate> candidates;
        for (; sizes != files.end() && candidates.size() < kBatch; ++sizes) {
            const auto& [size, urls] = *sizes;
            for (const auto& url : urls.size() > 1 ? std::span(urls) : std::span<const FileURL>()) {
                candidates.push_back({&url, size, {}});
            }
        }
        std::ranges::move(equalAmong(platform, priority, candidates, stop, ahead), std::back_inserter(all));
    }
    // Half of the groups would look like all of them.
    return stop.stopRequested() ? std::vector<EqualFiles>() : all;
}

} // namespace quillane::ContentComparison
