#pragma once
#include "Bytes.h"
#include "FileURL.h"
#include "Platform.h"
#include "StopToken.h"
#include "TaskRunner.h"
#include <cstddef>
#include <map>
#include <string>
#include <vector>

// Which files of one size hold the same, with the digest of what they hold.
//
// The answer is that of hashing, for each file, portions of kPortion bytes until one is empty or can't be read, and
// leaving out what can't be opened or closed. The work is less: of files that agree so far one is hashed and the others
// are compared with it, step by step.
namespace quillane::ContentComparison {

inline constexpr std::size_t kEnd = std::size_t{64} * 1024; // what is hashed of each end, in the stage before
inline constexpr std::size_t kPortion = std::size_t{1024} * 1024; // a failure takes the whole portion with it
inline constexpr std::size_t kStep = std::size_t{128} * 1024; // what is compared at a time: fits the cache
// Files that are compared with each other at most, as each is open meanwhile: two threads times this stay below the
// 256 descriptors that a Mac gives a program. Of more each is hashed.
inline constexpr std::size_t kMostInStep = 64;

struct EqualFiles {
    std::string digest; // SHA-256, in hexadecimal
    Bytes size = 0;     // the one they were given by
    std::vector<FileURL> urls;
};

// Two or more each, in the order in which they were given; by size, then by the digest of their ends, then by
// digest. Nothing when stopped. Blocks; one thread of the pool helps. Memory goes with the number of files and not
// with their size.
std::vector<EqualFiles> equalFiles(const Platform& platform, Priority priority,
                                   const std::map<Bytes, std::vector<FileURL>>& files, const StopToken& stop);

} // namespace quillane::ContentComparison
