#pragma once
#include "PropertyList.h"
#include <string>

// Writes property lists in the XML form.
namespace quillane::PropertyListDocument {

// The whole document, keys in their order. Reads back as the same values, dates to the second. Bytes of a
// text that XML can't hold (controls, what is not UTF-8) are written as private characters, which text()
// and restored() agree on. What has no text form is left out: null, sets and references of archives, and dates
// that are no number or lie beyond the years of nine digits.
std::string text(const PropertyList::Dictionary& root);

// The bytes that a text stood for before text() wrote it.
std::string restored(const std::string& read);

} // namespace quillane::PropertyListDocument
