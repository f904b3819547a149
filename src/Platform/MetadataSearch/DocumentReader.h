#pragma once
#include "DocumentKind.h"
#include "FileURL.h"
#include "StopToken.h"
#include <string>

namespace quillane {

// Tells what is written in files that are no plain text. Any thread, many at once.
class DocumentReader {
  public:
    virtual ~DocumentReader() = default;
    // UTF-8 of a regular file of a kind for which isDocument() holds; empty where nothing is written in it, where it
    // can't be read, and when stopped. Blocks.
    virtual std::string text(const FileURL& file, DocumentKind kind, const StopToken& stop) const = 0;
};

} // namespace quillane
