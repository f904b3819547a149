#pragma once
#include "Bytes.h"
#include "Date.h"
#include "FileURL.h"
#include "FunctionRef.h"
#include "Result.h"
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quillane {

// What an entry is, by lstat: a symbolic link is a link, whatever it points to.
enum class EntryType { regular, directory, symbolicLink, other };

struct DirectoryEntry {
    std::string name; // bytes, one path component
    EntryType type = EntryType::other;
    // The system hides it though its name does not say so: a flag, or the Finder's own. Only a Mac's volumes have them.
    bool isFlaggedHidden = false;

    // Whether the platform's option to skip hidden files skips it. Where a rule asks for a leading dot, ask the name.
    bool isHidden() const { return isFlaggedHidden || name.starts_with('.'); }

    friend bool operator==(const DirectoryEntry&, const DirectoryEntry&) = default;
};

// Properties of one path, links not followed.
struct ResourceValues {
    EntryType type = EntryType::other;
    // Logical length; of a link, the length of its text.
    Bytes fileSize = 0;
    // Allocated on disk, with metadata where the system keeps it; absent for everything but regular files.
    std::optional<Bytes> totalAllocated;
    // Allocated on disk, data alone; absent for everything but regular files.
    std::optional<Bytes> allocated;
    Date contentModified;
    // Together the identity of a file on this machine: two names with the same pair are one file.
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    friend bool operator==(const ResourceValues&, const ResourceValues&) = default;
};

// How much room a volume has.
struct VolumeSpace {
    Bytes free = 0; // what an ordinary user may still fill
    Bytes size = 0; // 0 for a volume that keeps nothing
    friend bool operator==(const VolumeSpace&, const VolumeSpace&) = default;
};

// One step of a walk. Lives only during the visitor's call: names are views into the walk's buffer.
struct WalkEntry {
    // An entry that no walk tells has no properties.
    static constexpr auto kNothingToAsk = []() -> Result<ResourceValues> {
        return PlatformError{ErrorCode::kReadNoSuchFile, std::nullopt};
    };

    std::string_view name;
    EntryType type = EntryType::other;
    int level = 1; // the children of the root are level 1
    // Allocated bytes of a regular file when the walk measures, at some moment since its folder was opened; otherwise 0,
    // and 0 for what can't be measured.
    Bytes allocated = 0;
    // When the walk asks for marks: the Finder's mark on a folder that makes it a package whatever its extension says.
    // Only a Mac's volumes have it.
    bool isMarkedAsPackage = false;
    // As FileSystem::resourceValues() of this entry, at the time of the call. Costs one call of the system below the
    // folder that the walk has open, which is cheaper than by the path.
    FunctionRef<Result<ResourceValues>()> resourceValues = kNothingToAsk;
};

enum class WalkAnswer {
    proceed,   // go on; a folder is entered next
    skipBelow, // go on, but do not enter this folder
    stop       // end the walk
};

struct WalkOptions {
    // Read the allocated size of each regular file. Costs one call of the system for each where folders don't tell it.
    bool measures = false;
    // Read which folders the Finder has marked as packages. Costs nothing where there are no such marks.
    bool readsMarks = false;
};

// A regular file that is open for reading. What the file becomes meanwhile is seen: it may grow, shrink or stop
// to answer. One thread at a time. Blocks. Closed when it goes, if it has not been before.
class OpenFile {
  public:
    virtual ~OpenFile() = default;

    // Fills `buffer` from this offset and gives how much there was: less than asked only where the file ends, and
    // 0 behind its end. A failure on the way gives nothing of what came before it.
    virtual Result<std::size_t> readAt(std::span<std::byte> buffer, Bytes offset) = 0;

    // How long the file is now.
    virtual Result<Bytes> length() = 0;

    // Closes it and tells whether that went well. Nothing else may be asked afterwards.
    virtual Result<> close() = 0;
};

// Files and folders. Paths are bytes. Nothing here follows a link in the last component unless it says so,
// and nothing opens a file's content but read() and openForReading(). All calls block and may come from any thread.
class FileSystem {
  public:
    using Visitor = FunctionRef<WalkAnswer(const WalkEntry&)>;

    virtual ~FileSystem() = default;

    // The home folder of the current user.
    virtual FileURL home() const = 0;

    // Whether something is there, links followed: false for a dangling link and for what can't be reached.
    virtual bool exists(const FileURL& url) const = 0;

    // The direct entries of a folder, in no promised order, without "." and "..", without AppleDouble names
    // ("._x"); hidden entries are listed, links are listed and not followed. A link to a folder is followed
    // when it is `folder` itself.
    virtual Result<std::vector<DirectoryEntry>> list(const FileURL& folder) const = 0;

    virtual Result<ResourceValues> resourceValues(const FileURL& url) const = 0;

    // The room on the volume on which a folder lies, links followed. Fails for what is no folder, and for a volume
    // that tells more than can be counted.
    virtual Result<VolumeSpace> volumeSpace(const FileURL& folder) const = 0;

    // Walks everything below `root`, each folder right before its content, so that names and levels give the
    // path of each entry; the root itself is not told. Links are told and never entered; a root that is a
    // link, a file or missing yields nothing. Folders that can't be read are skipped and the walk goes on.
    // Mount points are crossed. AppleDouble files are told: they take room as others do. Memory does not grow with the
    // number of files. Fails only when the root can't be opened as a folder.
    virtual Result<> walk(const FileURL& root, WalkOptions options, Visitor visit) const = 0;

    // Up to `limit` bytes from the start of a file, links followed. Fails for a folder and for what is
    // neither a regular file nor a link to one, without blocking on it.
    virtual Result<std::string> read(const FileURL& url, std::size_t limit) const = 0;

    // The value of an extended attribute of a regular file or a folder, such as
    // "com.apple.metadata:kMDItemIsScreenCapture". Fails when there is none, when it is longer than `limit`, and
    // for links and everything else that it would have to wait for.
    virtual Result<std::string> extendedAttribute(const FileURL& url, const std::string& name,
                                                  std::size_t limit) const = 0;

    // Whether the system keeps this item in its cloud and what lies on the disk is not the item's present content.
    // False on a system that has no such thing, and for what can't be asked.
    virtual bool isAwaitingDownload(const FileURL& url) const = 0;

    // Opens a regular file. Fails for everything else, a link among it, and waits for none of them: no pipe, no
    // device. Leaves the date of the last access alone where the system lets us.
    virtual Result<std::unique_ptr<OpenFile>> openForReading(const FileURL& url) const = 0;

    // The path with every link resolved when all of it exists; otherwise the path as it stands.
    virtual FileURL resolvingSymlinks(const FileURL& url) const = 0;

    // The platform's standard form of a path: repeated slashes, "." and ".." removed as text (where ".." is
    // present and the whole path exists, links are resolved first). Links stay otherwise.
    virtual FileURL standardized(const FileURL& url) const = 0;

    // Makes a folder and every missing folder above it, with default attributes. A folder that is there is
    // fine; a file in its place is "file exists".
    virtual Result<> createDirectories(const FileURL& url) = 0;
};

} // namespace quillane
