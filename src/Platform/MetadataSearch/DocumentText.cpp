#include "DocumentText.h"
#include "HtmlText.h"
#include "MessageText.h"
#include "PlainText.h"
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

DocumentText::DocumentText(const FileSystem& files, CommandRunner& programs, HostPath hostPath,
                           const DocumentLimits& limits)
    : m_files(files)
    , m_programs(programs)
    , m_hostPath(std::move(hostPath))
    , m_limits(limits)
    , m_kept(limits.kept) {}

bool DocumentText::reads(const ContentType& type) const {
    const auto kind = documentKind(type, "");
    return type.is("public.data") || (kind != DocumentKind::none && kind != DocumentKind::plainText);
}

bool DocumentText::isCostly(const ContentType& type) const {
    return quillane::isCostly(documentKind(type, ""));
}

std::string DocumentText::text(const FileURL& file, const ContentType& type, const StopToken& stop) const {
    return *of(file, documentKind(type, file.pathExtension()), stop);
}

TextCache::Text DocumentText::of(const FileURL& url, DocumentKind kind, const StopToken& stop) const {
    static const auto kNone = std::make_shared<const std::string>();
    if (kind == DocumentKind::none) {
        return kNone;
    }
    const auto file = m_files.resourceValues(url);
    if (!file || file->type != EntryType::regular || stop.stopRequested()) {
        return kNone;
    }
    if (auto kept = m_kept.find(*file)) {
        return kept;
    }
    auto reading = read(url, kind, stop);
    if (stop.stopRequested()) {
        return kNone;
    }
    reading.text.shrink_to_fit();
    auto text = std::make_shared<const std::string>(std::move(reading.text));
    if (reading.isFinal) {
        m_kept.keep(*file, text);
    }
    return text;
}

DocumentText::Reading DocumentText::read(const FileURL& url, DocumentKind kind, const StopToken& stop) const {
    switch (kind) {
    case DocumentKind::webPage:
    case DocumentKind::richText:
    case DocumentKind::message:
    case DocumentKind::plainText:
        return readStart(url, kind);
    case DocumentKind::office:
        return readOffice(url, stop);
    case DocumentKind::pdf:
        return readPdf(url, stop);
    case DocumentKind::none:
        break;
    }
    return {"", false};
}

DocumentText::Reading DocumentText::readStart(const FileURL& url, DocumentKind kind) const {
    const auto bytes = start(m_files, url, m_limits.file);
    if (!bytes) {
        return {"", false};
    }
    if (kind == DocumentKind::plainText) {
        return {PlainText::decoded(*bytes), false}; // kept by the system, and decoded at once
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
        return {"", false};
    }
    TextSink sink(m_limits.text);
    const bool isRead = OfficeArchive::add(**file, m_limits.office, stop, sink);
    return {sink.take(), isRead};
}

DocumentText::Reading DocumentText::readPdf(const FileURL& url, const StopToken& stop) const {
    const auto path = m_hostPath ? m_hostPath(url) : url.path();
    const auto output = m_programs.run(kLimiter, argumentsFor(path), stop, m_limits.text);
    if (!output) {
        return {"", output.error().code == ErrorCode::kReadTooLarge};
    }
    TextSink sink(m_limits.text);
    sink.add(*output);
    return {sink.take()};
}

} // namespace quillane
