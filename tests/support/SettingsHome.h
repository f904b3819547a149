#pragma once
#include "FileDefaults.h"
#include "TemporaryFolder.h"
#include <cstdlib>
#include <string>

namespace quillane {

// A home without settings, in which all that is stored for the person goes.
class SettingsHome {
  public:
    SettingsHome() { ::unsetenv("XDG_CONFIG_HOME"); } // NOLINT(concurrency-mt-unsafe): before any thread

    const std::string& path() const { return m_folder.path(); }
    std::string file(const char* name) const { return FileDefaults::userPath(path(), name); }

  private:
    TemporaryFolder m_folder;
};

} // namespace quillane
