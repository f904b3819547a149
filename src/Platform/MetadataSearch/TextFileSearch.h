#pragma once
#include "Bytes.h"
#include "FileSystem.h"
#include "FoldedNeedle.h"
#include "PlainText.h"
#include "StopToken.h"
#include <cstddef>

// Looking for a text in the plain text of files, in portions that stay in the processor's cache.
namespace quillane::TextFileSearch {

inline constexpr std::size_t kPortion = std::size_t{64} << 10U;
// What lies beyond the first gigabyte of a file is not looked at.
inline constexpr Bytes kMostBytes = Bytes{1} << 30U;

// Whether the needle occurs in a regular file, in any encoding of PlainText; the first portion decides which one it
// is. False for what is no text, can't be opened or stops to be readable before it occurs, and when stopped, which is
// looked at before each portion. Any thread.
bool occurs(const FoldedNeedle& needle, const FileSystem& files, const FileURL& file, const StopToken& stop,
            PlainText::Claim claim = PlainText::Claim::declared);

} // namespace quillane::TextFileSearch
