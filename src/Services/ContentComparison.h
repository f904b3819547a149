#pragma once
#include "Bytes.h"
#include "FileURL.h"
#include "Platform.h"
#include "Sha256Digest.h"
#include "SteppedComparison.h"
#include "StopToken.h"
#include "TaskRunner.h"
#include <cstddef>
#include <map>
#include <vector>

// Which files of one size hold the same, with the digest of what they hold.
//
// The answer is that of hashing, for each file, portions of SteppedComparison::kPortion bytes until one is empty or can't
// be read, and leaving out what can't be opened or closed. The work is less: see there.
namespace quillane::ContentComparison {

inline constexpr std::size_t kEnd = std::size_t{64} * 1024; // what is hashed of each end, in the stage before
// Files whose ends are known at a time, and those of one size more.
inline constexpr std::size_t kBatch = 4096;

struct EqualFiles {
    Sha256Digest digest = {};
    Bytes size = 0;                   // the one they were given by
    std::vector<const FileURL*> urls; // of those that were given
};

// Two or more each, in the order in which they were given; by size, then by the digest of their ends, then by
// digest. Nothing when stopped. Blocks; one thread of the pool helps. Memory goes with the number of files that are
// equal and with the largest number of one size, and not with what they hold.
std::vector<EqualFiles> equalFiles(const Platform& platform, Priority priority,
                                   const std::map<Bytes, std::vector<FileURL>>& files, const StopToken& stop,
                                   Bytes ahead = SteppedComparison::kAhead);

} // namespace quillane::ContentComparison
