#pragma once
#include "Clock.h"
#include "CommandRunner.h"
#include "DocumentKind.h"
#include "DocumentReader.h"
#include "FileSystem.h"
#include "OfficeArchive.h"
#include "TextCache.h"
#include <chrono>
#include <cstddef>
#include <functional>
#include <string>

namespace quillane {

struct DocumentLimits {
    std::size_t text = std::size_t{4} << 20U; // bytes of UTF-8 of a document
    std::size_t file = std::size_t{16}
                       << 20U; // bytes from the start of what is no office document and no PDF
    OfficeArchive::Limits office;
    // Bytes of all texts that are kept, those that need a program for themselves: they must not give way to what is
    // read anew at once.
    std::size_t kept = std::size_t{16} << 20U;
    std::size_t keptOfCostly = std::size_t{48} << 20U;
};

// What is written in the documents of a person, for a search in it. Whatever a document holds, it costs a bounded time
// and a bounded memory: our own parsers read each byte once, and the program that reads PDF files is ended by limits of
// its own. A document that can't be read, is encrypted or is not there any more has no text, and nobody is told.
//
// Texts are kept, as long as their file does not change, so that a second search reads nothing again. What a program
// did not write to its end, as it was ended or failed, is kept for kRetry and then read again.
class DocumentText final : public DocumentReader {
  public:
    // The path of the machine for a file, which another program is given.
    using HostPath = std::function<std::string(const FileURL&)>;

    // So that a document that always takes too long does so in one search of several only.
    static constexpr Duration kRetry = std::chrono::minutes(5);

    // Without `programs` that can run "timeout", "prlimit" and "pdftotext" a PDF has no text. `hostPath` gives the path
    // itself where it is left out: right for the machine's own files.
    DocumentText(const FileSystem& files, CommandRunner& programs, const Clock& clock, HostPath hostPath = {},
                 const DocumentLimits& limits = {});

    // In which each run of white space is one blank. Empty for what is no document.
    std::string text(const FileURL& file, DocumentKind kind, const StopToken& stop) const override;

  private:
    // Whether the next try may end otherwise though the file is the same.
    enum class State { whole, inPart, failed };
    struct Reading {
        std::string text;
        State state = State::whole;
    };

    TextCache::Text of(const FileURL& url, DocumentKind kind, const StopToken& stop) const;
    TextCache& keptOf(DocumentKind kind) const { return isCostly(kind) ? m_keptOfCostly : m_kept; }

    Reading read(const FileURL& url, DocumentKind kind, const StopToken& stop) const;
    Reading readStart(const FileURL& url, DocumentKind kind) const;
    Reading readOffice(const FileURL& url, const StopToken& stop) const;
    Reading readPdf(const FileURL& url, const StopToken& stop) const;

    const FileSystem& m_files;
    CommandRunner& m_programs;
    const Clock& m_clock;
    HostPath m_hostPath;
    DocumentLimits m_limits;
    mutable TextCache m_kept;
    mutable TextCache m_keptOfCostly;
};

} // namespace quillane
