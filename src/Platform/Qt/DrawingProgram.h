#pragma once
#include "CommandRunner.h"
#include "PictureFit.h"
#include "StopToken.h"
#include "Workspace.h"
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

// Drawings (SVG), drawn by this program itself in a process of its own. Nothing in a drawing tells what it costs: 50 KB
// of path data keep a reader busy for minutes, and no call ends it. A process has limits and can be ended.
namespace quillane::DrawingProgram {

// What a run may take; the time counts its start too.
inline constexpr int kMostSeconds = 2;
inline constexpr std::size_t kMostMemory = std::size_t{1} << 30U;

// The picture of the drawing at this path of the machine. `program` is a file that begins with answer(). Nothing for
// what ImageDecoder does not draw, and for what takes more than its limits. Blocks; any thread.
std::optional<IconImage> picture(CommandRunner& programs, const std::string& program, const std::string& path,
                                 PixelSize wanted, Fit fit, const StopToken& stop);

// In the program, before all else: where its arguments ask for a drawing prints that and gives the exit code. Limits
// the memory of its process.
std::optional<int> answer(int argc, char** argv);

// What is printed, read again; nothing for anything else.
std::optional<IconImage> pictureIn(std::string_view printed);

} // namespace quillane::DrawingProgram
