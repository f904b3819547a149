#pragma once
#include "DuplicateGroup.h"
#include "Platform.h"
#include "StopToken.h"
#include "TaskRunner.h"
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

// Files of the user's own, of a million bytes or more, whose contents are the same byte for byte. Names and dates
// prove nothing: files are compared by size, then by the digest of their two ends, then by all they hold, and only
// what passes one stage is read by the next. Only reads and describes.
namespace quillane::DuplicateFinder {

// Gets the words of the stage that begins, on the finder's own thread.
using Progress = std::function<void(const std::string& words)>;

// Files by their size, in the order in which they were found.
using FilesBySize = std::map<Bytes, std::vector<FileURL>>;

// One row of an answer that was asked for with sizes.
struct Line {
    std::string path;
    Bytes size = 0;
    friend bool operator==(const Line&, const Line&) = default;
};

// The copies in the user's folders of documents, the groups that waste most first. What is missing or can't be read
// is in no group. Nothing when stopped, which also ends the reading. Blocks, and may take minutes; an idle thread of
// the pool of that priority helps. Any thread but the main one.
std::vector<DuplicateGroup> find(const Platform& platform, Priority priority, const StopToken& stop = {},
                                 const Progress& progress = {});

// The second and third stage, and the groups that come of them; of equal waste by size and then by digest. Two names
// of one content are two files. A content that can't be read to its end equals only what fails in the same portion.
std::vector<DuplicateGroup> group(const Platform& platform, Priority priority, const FilesBySize& files,
                                  const StopToken& stop = {});

// Nothing for what is gone or no regular file.
std::optional<UserFile> describe(const Platform& platform, const FileURL& url);

// The first stage for one folder, in the order of the answer. Lines that make no sense are left out.
std::vector<Line> mdfindWithSize(const Platform& platform, const FileURL& folder, const StopToken& stop = {});

} // namespace quillane::DuplicateFinder
