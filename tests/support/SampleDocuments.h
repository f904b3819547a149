#pragma once
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// Documents as programs of their kinds write them, from text in UTF-8. Real ones: what opens such documents opens
// these.
namespace quillane::SampleDocuments {

using Lines = std::vector<std::string>;

// A page of a document that is printed: lines of text, or a picture that fills it.
struct Page {
    Lines lines;      // of characters that Latin-1 has
    std::string jpeg; // absent when empty
    int width = 0;    // of the picture, in pixels
    int height = 0;

    static Page text(Lines lines) { return {std::move(lines), {}, 0, 0}; }
    static Page picture(std::string jpeg, int width, int height) {
        return {{}, std::move(jpeg), width, height};
    }
};

std::string pdf(const std::vector<Page>& pages);
// A paragraph for each line. Each is written in two runs that part in the middle of a word, as an editor leaves them
// after a correction.
std::string docx(const Lines& paragraphs);
std::string odt(const Lines& paragraphs);
// Letters beyond ASCII as \'hh where Latin-1 has them, else as \u.
std::string rtf(const Lines& paragraphs);
// `script` stands in the head, where nobody reads it; letters beyond ASCII are told as numbered entities.
std::string html(std::string_view title, const Lines& paragraphs, std::string_view script);
// One part in quoted-printable, its lines broken softly wherever they grow long.
std::string mail(std::string_view from, std::string_view subject, const Lines& paragraphs);
// With a mark of the byte order, lowest byte first.
std::string utf16(std::string_view text);
// What Latin-1 lacks becomes a question mark.
std::string latin1(std::string_view text);

} // namespace quillane::SampleDocuments
