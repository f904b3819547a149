#pragma once
#include "ContentTypes.h"
#include <string_view>

namespace quillane {

// How what is written in a file is read.
enum class DocumentKind {
    none,      // nothing that is known to be text
    plainText, // the bytes are the text: PlainText
    unknown,   // nobody says what it is: plain text where its bytes look like it
    webPage,   // the others: DocumentText
    richText,
    message,
    office, // and a book, which is an archive of pages
    pdf
};

// Of a file, by its type, and for a type that the system does not declare by the extension, without its dot and in any
// case: a text in Markdown is no text by its type and yet one to the person who looks for its words.
DocumentKind documentKind(const ContentType& type, std::string_view extension);

// Whether a DocumentReader tells what is written in it.
constexpr bool isDocument(DocumentKind kind) {
    return kind != DocumentKind::none && kind != DocumentKind::plainText && kind != DocumentKind::unknown;
}

// Whether reading such a document costs the start of a program and many milliseconds, instead of a few at most.
constexpr bool isCostly(DocumentKind kind) {
    return kind == DocumentKind::pdf;
}

} // namespace quillane
