#pragma once
#include <string_view>

namespace quillane {

class TextSink;

// What is written in a web page: without its scripts, its styles and its comments, its title among the words.
namespace HtmlText {

// The page as its bytes. A byte order mark decides what they are encoded in, then UTF-8 where they are valid, then what
// the page says itself in its first kilobyte, then Western Windows.
void add(std::string_view bytes, TextSink& sink);

// The page as UTF-8.
void addDecoded(std::string_view html, TextSink& sink);

} // namespace HtmlText
} // namespace quillane
