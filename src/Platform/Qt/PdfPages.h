#pragma once
#include "Clock.h"
#include "CommandRunner.h"
#include "PictureFit.h"
#include "StopToken.h"
#include "Workspace.h"
#include <optional>
#include <string>
#include <string_view>

// Pages of PDF documents, drawn by programs of Poppler. A document may hold whatever its writer likes, so each run
// has a few seconds, half a gigabyte of memory, and can write no file. Blocks; any thread.
namespace quillane::PdfPages {

// What a run may take. Programs for limits are those of every Linux.
inline constexpr int kMostSeconds = 5;
inline constexpr long long kMostMemory = 512LL << 20;
// A document that claims more pages has this many.
inline constexpr int kMostPages = 999'999;

// How many pages the document at this path of the machine has; 0 for what is no document or can't be opened without
// a password, and where there is no such program.
int count(CommandRunner& programs, const std::string& path, const StopToken& stop);

// The number that the program for facts about a document has printed.
int countIn(std::string_view printed);

// A page; the first is 0. Nothing for one that is not there or can't be drawn.
std::optional<IconImage> picture(CommandRunner& programs, const std::string& path, int number,
                                 PixelSize wanted, Fit fit, const StopToken& stop);

} // namespace quillane::PdfPages
