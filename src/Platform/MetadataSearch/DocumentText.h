#pragma once
#include "CommandRunner.h"
#include "DocumentKind.h"
#include "DocumentReader.h"
#include "FileSystem.h"
#include "OfficeArchive.h"
#include "TextCache.h"
#include <cstddef>
#include <functional>
#include <string>

namespace quillane {

struct DocumentLimits {
    std::size_t text = std::size_t{4} << 20U; // bytes of UTF-8 of a document
    std::size_t file = std::size_t{16}
                       << 20U; // bytes from the start of what is no office document and no PDF
    OfficeArchive::Limits office;
    std::size_t kept = std::size_t{64} << 20U; // bytes of all texts that are kept
};

// What is written in the documents of a person, for a search in it. Whatever a document holds, it costs a bounded time
// and a bounded memory: our own parsers read each byte once, and the program that reads PDF files is ended by limits of
// its own. A document that can't be read, is encrypted or is not there any more has no text, and nobody is told.
//
// Texts are kept, as long as their file does not change, so that a second search reads nothing again.
class DocumentText final : public DocumentReader {
  public:
    // The path of the machine for a file, which another program is given.
    using HostPath = std::function<std::string(const FileURL&)>;

    // Without `programs` that can run "timeout", "prlimit" and "pdftotext" a PDF has no text. `hostPath` gives the path
    // itself where it is left out: right for the machine's own files.
    DocumentText(const FileSystem& files, CommandRunner& programs, HostPath hostPath = {},
                 const DocumentLimits& limits = {});

    // Files of a type that the system does not declare are known by their extension, so all of them are read: those that
    // are no documents are empty and cost nothing. Plain text of a type that is declared is read in other ways.
    bool reads(const ContentType& type) const override;
    bool isCostly(const ContentType& type) const override;
    std::string text(const FileURL& file, const ContentType& type, const StopToken& stop) const override;

    // The text of a regular file of this kind as UTF-8, in which each run of white space is one blank but for plain text.
    // Never null; empty where there is none and when stop is requested. Blocks; any thread, many at once.
    TextCache::Text of(const FileURL& url, DocumentKind kind, const StopToken& stop = {}) const;

  private:
    struct Reading {
        std::string text;
        bool isFinal = true; // false where the next try may end otherwise though the file is the same
    };

    Reading read(const FileURL& url, DocumentKind kind, const StopToken& stop) const;
    Reading readStart(const FileURL& url, DocumentKind kind) const;
    Reading readOffice(const FileURL& url, const StopToken& stop) const;
    Reading readPdf(const FileURL& url, const StopToken& stop) const;

    const FileSystem& m_files;
    CommandRunner& m_programs;
    HostPath m_hostPath;
    DocumentLimits m_limits;
    mutable TextCache m_kept;
};

} // namespace quillane
