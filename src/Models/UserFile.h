#pragma once
#include "Bytes.h"
#include "Date.h"
#include "FileURL.h"
#include "Hashing.h"
#include <array>
#include <compare>
#include <optional>
#include <string>
#include <string_view>

namespace quillane {

class Calendar;

// A file of the user's own, as the Files screen lists it. Its identity is `url`.
struct UserFile {
    // What a file is, by the extension of its name alone.
    enum class Kind { image, video, audio, pdf, document, archive, diskImage, installer, other };

    static constexpr Bytes kLargeBytes = 100'000'000; // the lens for large files shows what has as many

    // By the types that the bare system declares; a file is never opened for it.
    static Kind kindOf(const FileURL& url);

    FileURL url;
    Kind kind = Kind::other;
    Bytes bytes = 0;                     // on this disk: what sorting and totals use
    Bytes logicalBytes = 0;              // the file's length
    std::optional<Date> lastUsed;        // or last changed; absent when neither is known
    bool isCloudPlaceholder = false;     // the content is, mostly, not on this disk
    bool installsAnInstalledApp = false; // an installer named after an application that is there

    const FileURL& id() const { return url; }
    std::string name() const { return std::string(url.lastPathComponent()); }
    // The path of the parent folder, with the home folder as "~" wherever it occurs.
    std::string folder(const FileURL& home) const;
    // `lastUsed`, or the earliest date, so that what has no date sorts as the oldest.
    Date lastUsedSortKey() const { return lastUsed.value_or(Date::distantPast()); }
    // Whole calendar days from the last use to `now`; absent when there is no date.
    std::optional<int> daysSinceUsed(Date now, const Calendar& calendar) const;

    friend bool operator==(const UserFile&, const UserFile&) = default;
};

inline constexpr std::array kAllUserFileKinds = {
    UserFile::Kind::image,     UserFile::Kind::video,     UserFile::Kind::audio,
    UserFile::Kind::pdf,       UserFile::Kind::document,  UserFile::Kind::archive,
    UserFile::Kind::diskImage, UserFile::Kind::installer, UserFile::Kind::other};

// The label, such as "Disk Image".
std::string_view rawValue(UserFile::Kind kind);

// Ordered by the labels, not by declaration.
std::strong_ordering operator<=>(UserFile::Kind a, UserFile::Kind b);

} // namespace quillane

template <>
struct std::hash<quillane::UserFile> {
    std::size_t operator()(const quillane::UserFile& file) const noexcept {
        return quillane::hashOf(file.url, file.kind, file.bytes, file.logicalBytes, file.lastUsed,
                                file.isCloudPlaceholder, file.installsAnInstalledApp);
    }
};
