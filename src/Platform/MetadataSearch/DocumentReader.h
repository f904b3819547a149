#pragma once
#include "ContentTypes.h"
#include "FileURL.h"
#include "StopToken.h"
#include <string>

namespace quillane {

// Tells what is written in files that are no plain text. Any thread, many at once.
class DocumentReader {
  public:
    virtual ~DocumentReader() = default;
    // Whether files of this type have content that it can tell.
    virtual bool reads(const ContentType& type) const = 0;
    // Whether that costs so much, as where a program has to be run, that everything else is searched first.
    virtual bool isCostly(const ContentType& type) const = 0;
    // UTF-8 of a regular file of a type that it reads; empty where nothing is written in it, where it can't be read,
    // and when stopped. Blocks.
    virtual std::string text(const FileURL& file, const ContentType& type, const StopToken& stop) const = 0;
};

} // namespace quillane
