#include "DocumentText.h"
#include "HtmlText.h"
#include "MessageText.h"
#include "RtfText.h"
#include "TextSink.h"
#include <algorithm>
#include <memory>
#include <span>
#include <utility>
#include <vector>

namespace quillane {
namespace {

// Ends a program that takes longer than 5 s, more than 512 MiB, or is still there a second later.
constexpr const char* kLimiter = "/usr/bin/timeout";

std::vector<std::string> argumentsFor(const std::string& path) {
    return {"-k",      "1",        "5",         "prlimit", "--as=536870912",
            "--cpu=5", "--core=0", "pdftotext", "-q",      "-enc",
            "UTF-8",   "-l",       "50",        path,      "-"};
}

// As much of the start of the file as there is; nothing when it can't be read.
Result<std::string> start(const FileSystem& files, const FileURL& url, std::size_t most) {
    const auto file = files.openForReading(url);
    if (!file) {
        return file.error();
    }
    const auto length = (*file)->length();
    if (!length) {
        return length.error();
    }
    std::string bytes(std::min(most, static_cast<std::size_t>(std::max<Bytes>(*length, 0))), '\0');
    const auto count = (*file)->readAt(std::as_writable_bytes(std::span(bytes)), 0);
    if (!count) {
        return count.error();
    }
    bytes.resize(*count);
    return bytes;
}

} // namespace

DocumentText::DocumentText(const FileSystem& files, CommandRunner& programs, const Clock& clock,
                           HostPath hostPath, const DocumentLimits& limits)
    : m_files(files)
    , m_programs(programs)
    , m_clock(clock)
    , m_hostPath(std::move(hostPath))
    , m_limits(limits)
    , m_kept(limits.kept, clock)
    , m_keptOfCostly(limits.keptOfCostly, clock) {}

std::string DocumentText::text(const FileURL& file, DocumentKind kind, const StopToken& stop) const {
    return *of(file, kind, stop);
}

TextCache::Text DocumentText::of(const FileURL& url, DocumentKind kind, const StopToken& stop) const {
    static const auto kNone = std::make_shared<const std::string>();
    if (!isDocument(kind)) {
        return kNone;
    }
    const auto file = m_files.resourceValues(url);
    if (!file || file->type != EntryType::regular || stop.stopRequested()) {
        return kNone;
    }
    auto& known = keptOf(kind);
    if (auto kept = known.find(*file, kind)) {
        return kept;
    }
    auto reading = read(url, kind, stop);
    if (stop.stopRequested()) {
        return kNone;
    }
    reading.text.shrink_to_fit();
    auto text = std::make_shared<const std::string>(std::move(reading.text));
    if (reading.state == State::whole) {
        known.keep(*file, kind, text);
    } else if (reading.state == State::inPart) {
        known.keep(*file, kind, text, m_clock.instant() + kRetry);
    }
    return text;
}

DocumentText::Reading DocumentText::read(const FileURL& url, DocumentKind kind, const StopToken& stop) const {
    switch (kind) {
    case DocumentKind::webPage:
    case DocumentKind::richText:
    case DocumentKind::message:
        return readStart(url, kind);
    case DocumentKind::office:
        return readOffice(url, stop);
    case DocumentKind::pdf:
        return readPdf(url, stop);
    case DocumentKind::none:
    case DocumentKind::plainText:
    case DocumentKind::unknown:
        break;
    }
    return {"", State::failed};
}

DocumentText::Reading DocumentText::readStart(const FileURL& url, DocumentKind kind) const {
    const auto bytes = start(m_files, url, m_limits.file);
    if (!bytes) {
        return {"", State::failed};
    }
    TextSink sink(m_limits.text);
    if (kind == DocumentKind::webPage) {
        HtmlText::add(*bytes, sink);
    } else if (kind == DocumentKind::richText) {
        RtfText::add(*bytes, sink);
    } else {
        MessageText::add(*bytes, sink);
    }
    return {sink.take()};
}

DocumentText::Reading DocumentText::readOffice(const FileURL& url, const StopToken& stop) const {
    const auto file = m_files.openForReading(url);
    if (!file) {
        return {"", State::failed};
    }
    TextSink sink(m_limits.text);
    const bool isRead = OfficeArchive::add(**file, m_limits.office, stop, sink);
    return {sink.take(), isRead ? State::whole : State::failed};
}

// The program ends each page with a form feed, so what ends otherwise was cut: by a limit, or by a fault that the
// program does not survive.
DocumentText::Reading DocumentText::readPdf(const FileURL& url, const StopToken& stop) const {
    const auto path = m_hostPath ? m_hostPath(url) : url.path();
    const auto output = m_programs.run(kLimiter, argumentsFor(path), stop, m_limits.text);
    if (!output) {
        return {"", output.error().code == ErrorCode::kReadTooLarge ? State::whole : State::failed};
    }
    TextSink sink(m_limits.text);
    sink.add(*output);
    return {sink.take(), output->ends_with('\f') ? State::whole : State::inPart};
}

} // namespace quillane
