#include "DrawingProgram.h"
#include "ImageDecoder.h"
#include "PictureHead.h"
#include <QBuffer>
#include <QByteArray>
#include <QFile>
#include <QGuiApplication>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <sys/resource.h>
#include <utility>
#include <vector>

namespace quillane::DrawingProgram {
namespace {

constexpr std::string_view kOption = "--draw";
constexpr const char* kLimiter = "/usr/bin/timeout";
constexpr std::size_t kLongestHeader = 32;
constexpr std::size_t kMostPrinted =
    kLongestHeader + std::size_t{4} * kMostPreviewSide * static_cast<std::size_t>(kMostPreviewSide);

constexpr bool kIsSanitized =
#if defined(__has_feature)
    __has_feature(address_sanitizer) || __has_feature(thread_sanitizer);
#else
    false;
#endif

// Sanitizers reserve more than any limit.
void limitMemory() {
    const rlimit most{kMostMemory, kMostMemory};
    if (!kIsSanitized) {
        ::setrlimit(RLIMIT_AS, &most);
    }
    ImageDecoder::limitMemory();
}

// The number at the beginning of `text`, which is taken away with the character behind it.
std::optional<int> takeNumber(std::string_view& text) {
    int number = 0;
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (failure != std::errc() || end == text.data() + text.size() || number < 0) {
        return std::nullopt;
    }
    text.remove_prefix(static_cast<std::size_t>(end - text.data()) + 1);
    return number;
}

void print(const IconImage& image) {
    QFile output;
    if (output.open(stdout, QIODevice::WriteOnly)) {
        output.write(QByteArray::number(image.width) + ' ' + QByteArray::number(image.height) + '\n');
        output.write(reinterpret_cast<const char*>(image.rgba.data()),
                     static_cast<qint64>(image.rgba.size()));
        output.flush();
    }
}

std::optional<IconImage> drawn(const char* path, PixelSize wanted, Fit fit) {
    QFile file(QFile::decodeName(path));
    if (!file.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    QByteArray bytes = file.read(ImageDecoder::kMostSvgBytes + 1);
    const std::string head(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    if (PictureHead::formOf(head) != "svg") {
        return std::nullopt;
    }
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    return ImageDecoder::decoded(buffer, head, wanted, fit);
}

} // namespace

std::optional<IconImage> pictureIn(std::string_view printed) {
    const auto width = takeNumber(printed);
    const auto height = width ? takeNumber(printed) : std::nullopt;
    if (!height || *width < 1 || *height < 1 || *width > kMostPreviewSide || *height > kMostPreviewSide ||
        printed.size() !=
            std::size_t{4} * static_cast<std::size_t>(*width) * static_cast<std::size_t>(*height)) {
        return std::nullopt;
    }
    return IconImage{*width, *height, {printed.begin(), printed.end()}};
}

std::optional<IconImage> picture(CommandRunner& programs, const std::string& program, const std::string& path,
                                 PixelSize wanted, Fit fit, const StopToken& stop) {
    const auto seconds = std::to_string(kMostSeconds);
    const auto printed =
        programs.run(kLimiter,
                     {"-k", "1", seconds, "/usr/bin/prlimit", "--cpu=" + seconds, "--core=0", "--fsize=0",
                      program, std::string(kOption), std::to_string(wanted.width),
                      std::to_string(wanted.height), fit == Fit::around ? "around" : "within", path},
                     stop, kMostPrinted);
    return printed ? pictureIn(*printed) : std::nullopt;
}

// No window system is asked for. The end is abrupt: nothing is left to tidy up.
std::optional<int> answer(int argc, char** argv) {
    constexpr int kArguments = 6;
    if (argc != kArguments || argv[1] != kOption) {
        return std::nullopt;
    }
    limitMemory();
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    const auto wanted = sensible({QByteArray(argv[2]).toInt(), QByteArray(argv[3]).toInt()});
    const auto image =
        drawn(argv[5], wanted, std::string_view(argv[4]) == "around" ? Fit::around : Fit::within);
    if (image) {
        print(*image);
    }
    std::_Exit(image ? 0 : 1);
}

} // namespace quillane::DrawingProgram
