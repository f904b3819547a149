#pragma once
#include "PropertyList.h"
#include <string>

// Writes property lists in the XML form.
namespace quillane::PropertyListDocument {

// The whole document, keys in their order. Reads back as the same values, dates to the second. Bytes of a
// text that XML can't hold (controls, what is not UTF-8) are written as private characters of U+10FE00 to
// U+10FEFF, which text() and restored() agree on; such characters of the text itself are written byte by byte in
// the same way.
std::string text(const PropertyList::Dictionary& root);

// The bytes that a text or a key stood for before text() wrote it: any bytes come back as they were. A private
// character that text() would not have written there is kept as it stands.
std::string restored(const std::string& read);

} // namespace quillane::PropertyListDocument
