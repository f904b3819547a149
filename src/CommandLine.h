#pragma once
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// What the program answers on the command line, without a display. Without words it opens its window.
namespace quillane::CommandLine {

struct Reply {
    std::string text; // lines to print
    bool isRefusal = false;
    bool operator==(const Reply&) const = default;
};

inline constexpr int kRefused = 2; // the exit code, as that of other programs that don't understand

// The answer to the words behind the program's name. Nothing where the window is to open: for no words, and for
// options of Qt's own, which QApplication takes.
std::optional<Reply> reply(const std::vector<std::string_view>& words);

// In the program, before a display is needed: prints the answer, a refusal to the standard error, and gives the exit
// code. Nothing where the window is to open.
std::optional<int> answer(int argc, char** argv);

} // namespace quillane::CommandLine
