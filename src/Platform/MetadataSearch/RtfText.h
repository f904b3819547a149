#pragma once
#include <string_view>

namespace quillane {

class TextSink;

// What is written in a rich text (RTF): without its tables of fonts, colours and styles, its pictures, and what only
// some programs understand.
namespace RtfText {

// Reads in one pass. Nothing for what is no rich text; where groups lie too deep within one another the text ends.
void add(std::string_view bytes, TextSink& sink);

} // namespace RtfText
} // namespace quillane
