#pragma once
#include "Platform.h"
#include "StopToken.h"
#include "UserFile.h"
#include <array>
#include <cstddef>
#include <limits>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// The user's own files, looked for through the system's index instead of a walk of the disk. Each lens is one query,
// asked once for each of its folders. Lists are sorted by the space on disk, largest first, and files of one size
// stand in the order of the index. What is missing, can't be read or is not indexed gives nothing. A lens that is
// stopped ends its searches, asks nothing more of the disk, and what it gives is of no use. Blocks for as long as the
// search program takes; idle threads of the user-initiated pool help. Any thread but the main one.
namespace quillane::FileFinder {

// The folders below the home folder in which a person keeps files, in the order in which they are searched.
inline constexpr std::array<std::string_view, 6> kUserRoots = {"Desktop", "Documents", "Downloads",
                                                               "Movies",  "Music",     "Pictures"};
// Whether something of this path lies in one of them, at any depth.
bool isInUserFolders(const FileURL& url, const FileURL& home);
inline constexpr std::string_view kScreenshotsQuery = "kMDItemIsScreenCapture == 1";
inline constexpr std::size_t kNoLimit = std::numeric_limits<std::size_t>::max();

// Files of 100 MB and more, of any age.
std::vector<UserFile> largeAndOld(const Platform& platform, const StopToken& stop = {});
// Disk images, packages and zip archives in Downloads and on the Desktop, with a mark on those whose name begins
// with the name of an installed application, whatever stands between the letters and numbers.
std::vector<UserFile> installers(const Platform& platform, const std::set<std::string>& installedAppNames,
                                 const StopToken& stop = {});
// Files with the text in their name or content, of a kind or of any; 300 at most, the first that the index names
// and not the largest.
std::vector<UserFile> search(const Platform& platform, const std::string& text,
                             std::optional<UserFile::Kind> kind, const StopToken& stop = {});
// What the Photos library takes; absent when there is none.
std::optional<Bytes> photosLibraryBytes(const Platform& platform);

// The files that a query finds below these folders of the home folder, each once. Neither what is hidden nor what
// lies in a Photos library. The limit counts what the index names, before it is known to be files.
std::vector<UserFile> collect(const Platform& platform, const std::string& query,
                              std::span<const std::string_view> roots, std::size_t limit,
                              const StopToken& stop = {});
// Nothing for what is no regular file and for what can't be asked.
std::optional<UserFile> describe(const Platform& platform, const FileURL& url);
// The same without asking whether its content is elsewhere.
std::optional<UserFile> describeOnThisDisk(const Platform& platform, const FileURL& url);
// The clause by which a query asks for a kind; nothing for `other`.
std::optional<std::string_view> contentTypeTree(UserFile::Kind kind);

} // namespace quillane::FileFinder
