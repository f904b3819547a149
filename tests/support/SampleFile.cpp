#include "SampleFile.h"
#include "DiskFolder.h"
#include "PropertyListWriter.h"
#include <algorithm>
#include <sys/stat.h>
#include <utility>

namespace quillane {

SampleFile::SampleFile(std::string path, UserFile::Kind kind)
    : m_path(std::move(path))
    , m_kind(kind) {}

SampleFile& SampleFile::content(std::string bytes) {
    return content(std::make_shared<const std::string>(std::move(bytes)));
}

SampleFile& SampleFile::content(Content bytes) {
    m_content = std::move(bytes);
    return *this;
}

SampleFile& SampleFile::allocated(Bytes bytes) {
    m_allocated = bytes;
    return *this;
}

SampleFile& SampleFile::length(Bytes bytes) {
    m_length = bytes;
    return *this;
}

SampleFile& SampleFile::hardLinkOf(std::string path) {
    m_hardLink = std::move(path);
    return *this;
}

SampleFile& SampleFile::markedAsCapture() {
    m_isMarked = true;
    return *this;
}

SampleFile& SampleFile::modified(Ago ago) {
    m_modified = ago;
    return *this;
}

SampleFile& SampleFile::lastUsed(Ago ago) {
    m_lastUsed = ago;
    return *this;
}

SampleFile& SampleFile::isLarge() {
    m_isLarge = true;
    return *this;
}

SampleFile& SampleFile::isCapture() {
    m_isCapture = true;
    return *this;
}

SampleFile& SampleFile::isInstaller(bool ofAnInstalledOne) {
    m_isInstaller = true;
    m_installsAnInstalledApp = ofAnInstalledOne;
    return *this;
}

SampleFile& SampleFile::isElsewhere() {
    m_isElsewhere = true;
    return *this;
}

SampleFile& SampleFile::copyOf(std::string word) {
    m_copyOf = std::move(word);
    return *this;
}

void SampleFile::lay(DiskFolder& disk, Date now) const {
    if (m_hardLink) {
        disk.hardLink(m_path, *m_hardLink);
    } else {
        disk.file(m_path, m_content ? *m_content : std::string());
        disk.extend(m_path, m_allocated, m_length);
    }
    if (m_isMarked) {
        // What the tool writes: a binary property list that is true.
        disk.attribute(m_path, "com.apple.metadata:kMDItemIsScreenCapture", binaryPropertyList(Plist(true)));
    }
    disk.modified(m_path, now.addingSeconds(-static_cast<double>(m_modified.count())));
}

Date SampleFile::lastUsedDate(Date now) const {
    return now.addingSeconds(-static_cast<double>(m_lastUsed.value_or(m_modified).count()));
}

UserFile SampleFile::expected(const std::string& hostFolder, Date now) const {
    struct stat status = {};
    ::lstat((hostFolder + m_path).c_str(), &status);
    UserFile file;
    file.url = FileURL(m_path);
    file.kind = m_kind;
    file.bytes = Bytes{status.st_blocks} * 512;
    file.logicalBytes = status.st_size;
    file.lastUsed = lastUsedDate(now);
    file.isCloudPlaceholder = m_isElsewhere;
    file.installsAnInstalledApp = m_installsAnInstalledApp;
    return file;
}

} // namespace quillane
