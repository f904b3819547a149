#include "PdfPages.h"
#include "ImageDecoder.h"
#include "PpmReader.h"
#include <algorithm>
#include <charconv>
#include <utility>
#include <vector>

namespace quillane::PdfPages {
namespace {

constexpr std::size_t kMostFacts = std::size_t{1} << 20U; // bytes; a document prints its title as it likes
constexpr const char* kLimiter = "/usr/bin/timeout";

static_assert(PpmReader::kMostSide >= kMostPreviewSide);

Result<std::string> runLimited(CommandRunner& programs, std::vector<std::string> call, const StopToken& stop,
                               std::size_t mostBytes) {
    const auto seconds = std::to_string(kMostSeconds);
    std::vector<std::string> arguments = {"-k",
                                          "1",
                                          seconds,
                                          "/usr/bin/prlimit",
                                          "--as=" + std::to_string(kMostMemory),
                                          "--cpu=" + seconds,
                                          "--core=0",
                                          "--fsize=0"};
    std::ranges::move(call, std::back_inserter(arguments));
    return programs.run(kLimiter, arguments, stop, mostBytes);
}

} // namespace

// A title of several lines may look like any line, and stands before the number.
int countIn(std::string_view printed) {
    constexpr std::string_view kLabel = "\nPages:";
    const std::string lines = "\n" + std::string(printed);
    auto begin = lines.rfind(kLabel);
    if (begin == std::string::npos) {
        return 0;
    }
    begin = std::min(lines.find_first_not_of(' ', begin + kLabel.size()), lines.size());
    int count = 0;
    const auto [end, failure] = std::from_chars(lines.data() + begin, lines.data() + lines.size(), count);
    if (failure == std::errc::result_out_of_range) {
        return kMostPages;
    }
    return failure == std::errc() ? std::clamp(count, 0, kMostPages) : 0;
}

int count(CommandRunner& programs, const std::string& path, const StopToken& stop) {
    const auto facts = runLimited(programs, {"/usr/bin/pdfinfo", path}, stop, kMostFacts);
    return facts ? countIn(*facts) : 0;
}

std::optional<IconImage> picture(CommandRunner& programs, const std::string& path, int number,
                                 PixelSize wanted, Fit fit, const StopToken& stop) {
    const auto page = std::to_string(number + 1);
    const auto side = std::to_string(std::max(wanted.width, wanted.height));
    const auto drawn = runLimited(
        programs, {"/usr/bin/pdftoppm", "-f", page, "-l", page, "-singlefile", "-scale-to", side, "-q", path},
        stop, PpmReader::kMostBytes);
    auto picture = drawn ? PpmReader::parse(*drawn) : std::nullopt;
    if (!picture) {
        return std::nullopt;
    }
    return ImageDecoder::shrunk(std::move(*picture), wanted, fit);
}

} // namespace quillane::PdfPages
