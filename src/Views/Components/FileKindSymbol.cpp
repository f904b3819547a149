#include "Components/FileKindSymbol.h"

namespace quillane {

QString fileKindSymbol(UserFile::Kind kind) {
    switch (kind) {
    case UserFile::Kind::image:
        return QStringLiteral("photo");
    case UserFile::Kind::video:
        return QStringLiteral("film");
    case UserFile::Kind::audio:
        return QStringLiteral("waveform");
    case UserFile::Kind::pdf:
        return QStringLiteral("doc.richtext");
    case UserFile::Kind::document:
        return QStringLiteral("doc.text");
    case UserFile::Kind::archive:
        return QStringLiteral("doc.zipper");
    case UserFile::Kind::diskImage:
        return QStringLiteral("opticaldisc");
    case UserFile::Kind::installer:
        return QStringLiteral("shippingbox");
    case UserFile::Kind::other:
        return QStringLiteral("doc");
    }
    __builtin_unreachable();
}

} // namespace quillane
