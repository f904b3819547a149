#pragma once
#include "FileSystem.h"
#include "Metadata.h"
#include <memory>
#include <mutex>
#include <optional>

namespace quillane {

// What the desktop's register of recently used files tells. Programs write there what they open; nothing is known of
// what they don't, and of what was renamed since. The register is read at need and again when it has changed.
class RecentlyUsedFiles final : public Metadata {
  public:
    // The register at a path. `files` must outlive this.
    RecentlyUsedFiles(const FileSystem& files, FileURL registry);
    // recently-used.xbel in $XDG_DATA_HOME, else in ~/.local/share. Reads the environment, so it is called before
    // other threads run.
    static FileURL registryOfThisUser(const FileURL& home);

    std::optional<Date> lastUsed(const FileURL& url) const override;

  private:
    struct Known;
    std::shared_ptr<const Known> known() const;

    const FileSystem& m_files;
    const FileURL m_registry;
    mutable std::mutex m_mutex; // guards what follows
    mutable std::shared_ptr<const Known> m_known;
};

} // namespace quillane
