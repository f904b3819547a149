#pragma once
#include <string_view>

namespace quillane {

class TextSink;

// Takes a text in XML or HTML apart in one pass, without a tree: what it costs grows with its length alone, whatever is
// wrong with it. Comments, declarations and processing instructions are passed over.
class MarkupReader {
  public:
    enum class Token {
        text,     // with its references, such as "&amp;"
        verbatim, // a section in which "&" is itself
        beginTag,
        endTag,
        end
    };

    // `markup` must outlive the reader and all that it hands out.
    explicit MarkupReader(std::string_view markup)
        : m_rest(markup) {}

    Token next();

    // Of a text.
    std::string_view text() const { return m_text; }
    // Of a tag, as it is written.
    std::string_view name() const { return m_name; }
    // A name without its prefix: "w:p" is "p".
    std::string_view localName() const { return m_name.substr(m_name.rfind(':') + 1); }
    // Of a tag that begins: it is also the end.
    bool isEmptyElement() const { return m_isEmptyElement; }

    // Goes behind the end of the element that has just begun, by its name in any case, without looking at what it
    // holds; to the end of all where it has none.
    void skipElement();

  private:
    Token tag();
    Token declaration();
    void skipBehind(std::string_view end);

    std::string_view m_rest;
    std::string_view m_text;
    std::string_view m_name;
    bool m_isEmptyElement = false;
};

// Adds a text with its references replaced; one that is not known stays as it is written.
void addWithReferences(std::string_view text, TextSink& sink);

} // namespace quillane
