#pragma once
#include <optional>
#include <string_view>

namespace quillane {

class TextSink;

// What is written in the parts of office documents, OOXML and OpenDocument, and of books (EPUB).
namespace OfficeText {

enum class Part {
    words, // of a text, a table or a slide in OOXML
    sheet, // the cells of a table in OOXML, which are mostly numbers: only those that hold their text themselves
    openDocument, // all of an OpenDocument
    page,         // of a book
    package       // what a book tells of itself: its title and who wrote it
};

// What a member of the archive holds by its name; nothing for all that has no words in it.
std::optional<Part> partNamed(std::string_view member);

// Adds the text of a part. Runs of one word stay together; paragraphs, cells, tabulators and line breaks part words.
// Fields, deleted text and settings are not text.
void add(std::string_view xml, Part part, TextSink& sink);

} // namespace OfficeText
} // namespace quillane
