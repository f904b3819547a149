#include "FilePreviews.h"
#include "DrawingProgram.h"
#include "ImageDecoder.h"
#include "OpenFileDevice.h"
#include "PdfPages.h"
#include "PictureHead.h"
#include "PlainText.h"
#include <algorithm>
#include <optional>
#include <span>
#include <string_view>
#include <utility>

namespace quillane {
namespace {

// The beginning of the file; shorter where it ends or can't be read on.
std::string headOf(OpenFile& file) {
    const auto length = file.length();
    const auto most = static_cast<Bytes>(PictureHead::kMostBytes);
    std::string head(static_cast<std::size_t>(std::clamp<Bytes>(length ? *length : 0, 0, most)), '\0');
    const auto count = file.readAt(std::as_writable_bytes(std::span(head)), 0);
    head.resize(count ? *count : 0);
    return head;
}

std::shared_ptr<const IconImage> shared(std::optional<IconImage> picture) {
    return picture ? std::make_shared<const IconImage>(std::move(*picture)) : nullptr;
}

int longerSide(PixelSize size) {
    return std::max(size.width, size.height);
}

std::optional<PreviewPage> onlyPage(std::shared_ptr<const IconImage> picture) {
    return picture ? std::optional(PreviewPage{std::move(picture), {}, 0, 1}) : std::nullopt;
}

} // namespace

FilePreviews::FilePreviews(const FileSystem& files, CommandRunner& programs, const Clock& clock,
                           HostPath hostPath, std::string drawingProgram, ThumbnailMaker* others)
    : m_files(files)
    , m_programs(programs)
    , m_clock(clock)
    , m_hostPath(std::move(hostPath))
    , m_drawingProgram(std::move(drawingProgram))
    , m_others(others) {
    ImageDecoder::limitMemory();
}

std::shared_ptr<const IconImage> FilePreviews::thumbnail(const FileURL& url, PixelSize size,
                                                         const StopToken& stop) {
    size = sensible(size);
    auto subject = stop.stopRequested() ? std::nullopt : subjectAt(url);
    if (!subject) {
        return nullptr;
    }
    auto picture =
        m_others == nullptr ? nullptr : m_others->existing(url, subject->modified, longerSide(size));
    if (picture) {
        picture = shared(ImageDecoder::shrunk(*picture, size, Fit::around));
    } else if (subject->form == "pdf") {
        picture = shared(PdfPages::picture(m_programs, m_hostPath(url), 0, size, Fit::around, stop));
    } else {
        picture = decoded(*subject, size, Fit::around, stop);
    }
    if (!picture) {
        picture = ofOthers(*subject, size, Fit::around, stop);
    }
    return stop.stopRequested() ? nullptr : picture;
}

std::optional<PreviewPage> FilePreviews::page(const FileURL& url, int number, PixelSize size,
                                              const StopToken& stop) {
    size = sensible(size);
    auto subject = stop.stopRequested() || number < 0 ? std::nullopt : subjectAt(url);
    if (!subject) {
        return std::nullopt;
    }
    std::optional<PreviewPage> page;
    if (subject->form == "pdf") {
        page = pdfPage(url, number, size, stop);
    } else if (number == 0) {
        page = onlyPage(decoded(*subject, size, Fit::within, stop));
    }
    if (!page && number == 0) {
        auto text = textOf(*subject);
        page = text.empty() ? onlyPage(ofOthers(*subject, size, Fit::within, stop))
                            : PreviewPage{nullptr, std::move(text), 0, 1};
    }
    return stop.stopRequested() ? std::nullopt : page;
}

// What has its content elsewhere would be fetched by reading it.
std::optional<FilePreviews::Subject> FilePreviews::subjectAt(const FileURL& url) const {
    const auto values = m_files.resourceValues(url);
    if (!values || values->type != EntryType::regular || m_files.isAwaitingDownload(url)) {
        return std::nullopt;
    }
    auto file = m_files.openForReading(url);
    if (!file) {
        return std::nullopt;
    }
    auto head = headOf(**file);
    const auto form = PictureHead::formOf(head);
    return Subject{url, values->contentModified, std::move(file).value(), std::move(head), form};
}

// What is known to be a picture and can't be shown is no text either, but for a drawing, which is both.
std::string FilePreviews::textOf(const Subject& subject) {
    if (!subject.form.empty() && subject.form != "svg") {
        return {};
    }
    return PlainText::decoded(std::string_view(subject.head).substr(0, kMostText));
}

// The subject's file is spent afterwards.
std::shared_ptr<const IconImage> FilePreviews::decoded(Subject& subject, PixelSize size, Fit fit,
                                                       const StopToken& stop) const {
    if (subject.form == "svg") {
        return shared(
            DrawingProgram::picture(m_programs, m_drawingProgram, m_hostPath(subject.url), size, fit, stop));
    }
    OpenFileDevice device(std::move(subject.file), m_clock, m_clock.instant() + kPatience, stop);
    auto picture = ImageDecoder::decoded(device, subject.head, size, fit);
    return device.hasFailed() ? nullptr : shared(std::move(picture));
}

std::optional<PreviewPage> FilePreviews::pdfPage(const FileURL& url, int number, PixelSize size,
                                                 const StopToken& stop) const {
    const auto path = m_hostPath(url);
    const int count = PdfPages::count(m_programs, path, stop);
    if (number >= count) {
        return std::nullopt;
    }
    auto picture = shared(PdfPages::picture(m_programs, path, number, size, Fit::within, stop));
    return picture ? std::optional(PreviewPage{std::move(picture), {}, number, count}) : std::nullopt;
}

std::shared_ptr<const IconImage> FilePreviews::ofOthers(const Subject& subject, PixelSize size, Fit fit,
                                                        const StopToken& stop) const {
    if (m_others == nullptr || stop.stopRequested()) {
        return nullptr;
    }
    auto picture = m_others->existing(subject.url, subject.modified, 0);
    if (!picture) {
        picture = m_others->made(subject.url, subject.modified, longerSide(size), stop);
    }
    return picture ? shared(ImageDecoder::shrunk(*picture, size, fit)) : nullptr;
}

} // namespace quillane
