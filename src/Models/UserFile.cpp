#include "UserFile.h"
#include "Calendar.h"
#include "ContentTypes.h"
#include "HomePath.h"

namespace quillane {

// The order decides: a disk image is an archive too, and a vector image may be a text.
UserFile::Kind UserFile::kindOf(const FileURL& url) {
    const auto& type = ContentTypes::ofFile(url.pathExtension());
    const auto isNamed = [&](std::string_view word) {
        return type.identifier().find(word) != std::string_view::npos;
    };
    if (type.conformsTo("public.disk-image")) {
        return Kind::diskImage;
    }
    if (type.is("com.apple.installer-package-archive")) {
        return Kind::installer;
    }
    if (type.conformsTo("public.image")) {
        return Kind::image;
    }
    if (type.conformsTo("public.movie") || type.conformsTo("public.video")) {
        return Kind::video;
    }
    if (type.conformsTo("public.audio")) {
        return Kind::audio;
    }
    if (type.conformsTo("com.adobe.pdf")) {
        return Kind::pdf;
    }
    if (type.conformsTo("public.archive")) {
        return Kind::archive;
    }
    if (type.conformsTo("public.text") || type.conformsTo("public.presentation") ||
        type.conformsTo("public.spreadsheet") || isNamed("word") || isNamed("pages")) {
        return Kind::document;
    }
    return Kind::other;
}

std::string UserFile::folder(const FileURL& home) const {
    return pathWithHomeAsTilde(url.deletingLastPathComponent(), home);
}

std::optional<int> UserFile::daysSinceUsed(Date now, const Calendar& calendar) const {
    return lastUsed ? std::optional(calendar.daysBetween(*lastUsed, now)) : std::nullopt;
}

std::string_view rawValue(UserFile::Kind kind) {
    switch (kind) {
    case UserFile::Kind::image:
        return "Image";
    case UserFile::Kind::video:
        return "Video";
    case UserFile::Kind::audio:
        return "Audio";
    case UserFile::Kind::pdf:
        return "PDF";
    case UserFile::Kind::document:
        return "Document";
    case UserFile::Kind::archive:
        return "Archive";
    case UserFile::Kind::diskImage:
        return "Disk Image";
    case UserFile::Kind::installer:
        return "Installer";
    case UserFile::Kind::other:
        return "File";
    }
    __builtin_unreachable();
}

std::strong_ordering operator<=>(UserFile::Kind a, UserFile::Kind b) {
    return rawValue(a) <=> rawValue(b);
}

} // namespace quillane
