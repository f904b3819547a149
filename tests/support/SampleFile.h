#pragma once
#include "Bytes.h"
#include "Date.h"
#include "UserFile.h"
#include <chrono>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quillane {

class DiskFolder;

using Ago = std::chrono::seconds;

// What the program must find of a person's own files, told by the declarations and by our own measuring.
struct ExpectedFiles {
    struct Group {
        Bytes bytesEach = 0;
        std::string keeper;             // the path of the copy that should stay
        std::vector<std::string> paths; // sorted
        friend auto operator<=>(const Group&, const Group&) = default;
    };

    // By lens, sorted by path.
    std::vector<UserFile> large;
    std::vector<UserFile> screenshots;
    std::vector<UserFile> installers;
    // What a search for these words finds, sorted.
    std::map<std::string, std::vector<std::string>> searches;
    std::vector<Group> duplicates; // sorted
    Bytes photosLibraryBytes = 0;
};

// A file of the person's own, declared in one chain of words. Made by SampleMac::ownFile(). Without further words it
// is empty, 100 days old, unknown to the index's dates, and no lens but the search finds it.
class SampleFile {
  public:
    using Content = std::shared_ptr<const std::string>;

    SampleFile(std::string path, UserFile::Kind kind);

    // What it holds. Content that several files share is kept once.
    SampleFile& content(std::string bytes);
    SampleFile& content(Content bytes);
    // So many bytes are really on the disk, zeros behind the content.
    SampleFile& allocated(Bytes bytes);
    // At least so long; what the disk does not hold of it is a hole.
    SampleFile& length(Bytes bytes);
    // Another name of a file that is laid before.
    SampleFile& hardLinkOf(std::string path);
    // The attribute by which the Mac's own tool marks what it captures.
    SampleFile& markedAsCapture();

    SampleFile& modified(Ago ago);
    // When it was opened last, as the index knows it.
    SampleFile& lastUsed(Ago ago);

    // What finds it.
    SampleFile& isLarge();
    SampleFile& isCapture();
    SampleFile& isInstaller(bool ofAnInstalledOne);
    // Its content is in a cloud, as far as the disk tells.
    SampleFile& isElsewhere();
    // Its content is that of all others with this word, and the program must say so.
    SampleFile& copyOf(std::string word);

    const std::string& path() const { return m_path; }

  private:
    friend class SampleMac;

    void lay(DiskFolder& disk, Date now) const;
    Date lastUsedDate(Date now) const;
    UserFile expected(const std::string& hostFolder, Date now) const;

    std::string m_path;
    UserFile::Kind m_kind;
    Content m_content;
    Bytes m_allocated = 0;
    Bytes m_length = 0;
    std::optional<std::string> m_hardLink;
    Ago m_modified = std::chrono::hours(24 * 100);
    std::optional<Ago> m_lastUsed;
    std::optional<std::string> m_copyOf;
    bool m_isMarked = false;
    bool m_isLarge = false;
    bool m_isCapture = false;
    bool m_isInstaller = false;
    bool m_isElsewhere = false;
    bool m_installsAnInstalledApp = false;
};

} // namespace quillane
