#pragma once
#include "Date.h"
#include "FileSystem.h"
#include "FileURL.h"
#include "Workspace.h"
#include <memory>
#include <string>

namespace quillane {

// The thumbnails that the programs of a desktop share: read and never written. A thumbnail is believed only when it
// names the file and the second in which the file was modified. Blocks; any thread.
class ThumbnailStore {
  public:
    // The store in a folder. `files` outlives this and means the same by a path as the desktop does.
    ThumbnailStore(const FileSystem& files, FileURL folder);
    // thumbnails in $XDG_CACHE_HOME, else in ~/.cache. Reads the environment, so it is called before other threads
    // run.
    static FileURL folderOfThisUser(const FileURL& home);

    // The largest thumbnail of the file as it was modified then; null where there is none that is meant to have this
    // many pixels at its longer side. 0 takes any.
    std::shared_ptr<const IconImage> best(const FileURL& url, Date modified, int leastSide) const;

    // The name by which the store's programs know a file: percent-encoded as they do, which is not as we do.
    static std::string uriOf(const FileURL& url);

  private:
    FileURL placeOf(const std::string& uri, const char* flavor) const;

    const FileSystem& m_files;
    FileURL m_folder;
};

} // namespace quillane
