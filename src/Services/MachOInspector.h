#pragma once
#include "Architecture.h"
#include "FileURL.h"
#include "Platform.h"
#include <cstddef>
#include <span>

// Tells which processors an executable serves, from its first bytes alone.
namespace quillane::MachOInspector {

// As much of a file as is ever read: a fat header with 63 records of 32 bytes takes 2,024.
inline constexpr std::size_t kHeadBytes = 4096;

// Unknown for whatever can't be read or recognised. Only a fat file's magic is checked, so some compiled Java
// classes, which share it, pass as fat. One open, one read of at most kHeadBytes. Any thread.
Architecture architecture(const Platform& platform, const FileURL& executable);

// The same from bytes already read.
Architecture architectureOfHead(std::span<const unsigned char> head);

} // namespace quillane::MachOInspector
