#include "RawEntry.h"
#include <dirent.h>
#include <sys/stat.h>

namespace quillane {

std::optional<EntryType> entryTypeOfListed(unsigned char type) {
    switch (type) {
    case DT_REG:
        return EntryType::regular;
    case DT_DIR:
        return EntryType::directory;
    case DT_LNK:
        return EntryType::symbolicLink;
    case DT_UNKNOWN:
        return std::nullopt;
    default:
        return EntryType::other;
    }
}

EntryType entryTypeOfMode(unsigned int mode) {
    if (S_ISREG(mode)) {
        return EntryType::regular;
    }
    if (S_ISDIR(mode)) {
        return EntryType::directory;
    }
    return S_ISLNK(mode) ? EntryType::symbolicLink : EntryType::other;
}

} // namespace quillane
