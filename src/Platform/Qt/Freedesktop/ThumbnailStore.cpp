#include "ThumbnailStore.h"
#include "Pictures.h"
#include <QBuffer>
#include <QCryptographicHash>
#include <QImageReader>
#include <array>
#include <cmath>
#include <cstdlib>
#include <string_view>
#include <utility>

namespace quillane {
namespace {

struct Flavor {
    const char* name;
    int side; // of its square, in pixels
};
constexpr std::array kFlavors = {Flavor{"xx-large", 1024}, Flavor{"x-large", 512}, Flavor{"large", 256},
                                 Flavor{"normal", 128}};
constexpr std::size_t kMostBytes = std::size_t{16} << 20U; // of a file of the store

bool isPlain(char c) {
    constexpr std::string_view kPlain = "-._~!$&'()*+,;=:@/";
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
           kPlain.find(c) != std::string_view::npos;
}

// Some programs write a fraction behind the whole seconds.
bool isMadeFor(const QImage& thumbnail, const std::string& uri, Date modified) {
    const QString told = thumbnail.text(QStringLiteral("Thumb::MTime"));
    bool isNumber = false;
    const qlonglong seconds = told.section(QLatin1Char('.'), 0, 0).toLongLong(&isNumber);
    return isNumber && seconds == static_cast<qlonglong>(std::floor(modified.secondsSince1970())) &&
           thumbnail.text(QStringLiteral("Thumb::URI")).toStdString() == uri;
}

std::shared_ptr<const IconImage> thumbnailIn(const std::string& bytes, const std::string& uri,
                                             Date modified) {
    QByteArray data = QByteArray::fromRawData(bytes.data(), static_cast<qsizetype>(bytes.size()));
    QBuffer buffer(&data);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer, "png");
    reader.setAutoDetectImageFormat(false); // no other reader gets the bytes
    const QSize size = reader.size();
    if (size.isEmpty() || size.width() > Pictures::kMostSide || size.height() > Pictures::kMostSide) {
        return nullptr;
    }
    const QImage image = reader.read();
    return image.isNull() || !isMadeFor(image, uri, modified)
               ? nullptr
               : std::make_shared<const IconImage>(Pictures::fromImage(image));
}

} // namespace

ThumbnailStore::ThumbnailStore(const FileSystem& files, FileURL folder)
    : m_files(files)
    , m_folder(std::move(folder)) {}

FileURL ThumbnailStore::folderOfThisUser(const FileURL& home) {
    constexpr const char* kName = "thumbnails";
    const char* caches = std::getenv("XDG_CACHE_HOME"); // NOLINT(concurrency-mt-unsafe): the header says when
    if (caches != nullptr && caches[0] == '/') {        // a relative path is to be ignored
        return FileURL(caches).appending(kName);
    }
    return home.appending(".cache").appending(kName);
}

std::shared_ptr<const IconImage> ThumbnailStore::best(const FileURL& url, Date modified,
                                                      int leastSide) const {
    const auto uri = uriOf(url);
    for (const auto& flavor : kFlavors) {
        if (flavor.side < leastSide) {
            break;
        }
        const auto bytes = m_files.read(placeOf(uri, flavor.name), kMostBytes);
        auto thumbnail = bytes ? thumbnailIn(*bytes, uri, modified) : nullptr;
        if (thumbnail) {
            return thumbnail;
        }
    }
    return nullptr;
}

FileURL ThumbnailStore::placeOf(const std::string& uri, const char* flavor) const {
    const auto digest =
        QCryptographicHash::hash(QByteArray::fromStdString(uri), QCryptographicHash::Md5).toHex();
    return m_folder.appending(flavor).appending(digest.toStdString() + ".png");
}

std::string ThumbnailStore::uriOf(const FileURL& url) {
    constexpr std::string_view kHex = "0123456789ABCDEF";
    std::string uri = "file://";
    for (const char c : url.path()) {
        if (isPlain(c)) {
            uri += c;
        } else {
            const auto byte = static_cast<unsigned char>(c);
            uri += '%';
            uri += kHex[byte >> 4U];
            uri += kHex[byte & 15U];
        }
    }
    return uri;
}

} // namespace quillane
