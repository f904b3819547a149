#include "CommandLine.h"
#include "Workspace.h"
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdio>

namespace quillane::CommandLine {
namespace {

constexpr std::string_view kVersionLine = "Quillane " QUILLANE_VERSION "\n";
constexpr std::string_view kHelp =
    "Usage: quillane [OPTION]\n"
    "\n"
    "Opens the window of Quillane, which shows where disk space has gone and gives\n"
    "it back. Nothing is removed without a list that you have confirmed, and what is\n"
    "removed lies in the Trash.\n"
    "\n"
    "  -h, --help       prints this and ends\n"
    "  -v, --version    prints the version and ends\n"
    "\n"
    "Options of Qt, such as -platform, are taken too. More: man quillane\n";

struct QtOption {
    std::string_view name;
    bool takesValue = true; // in the next word, unless it stands behind a "="
};

// What QApplication takes for itself, with one dash or two; session managers and people give these to any program.
constexpr std::array kQtOptions{QtOption{"platform"},        QtOption{"platformpluginpath"},
                                QtOption{"platformtheme"},   QtOption{"plugin"},
                                QtOption{"qwindowgeometry"}, QtOption{"geometry"},
                                QtOption{"qwindowicon"},     QtOption{"icon"},
                                QtOption{"qwindowtitle"},    QtOption{"title"},
                                QtOption{"display"},         QtOption{"session"},
                                QtOption{"style"},           QtOption{"stylesheet"},
                                QtOption{"reverse", false}};

// How many words a word and its value take; nothing for what is no option of Qt's.
std::optional<std::size_t> wordsOfQtOption(std::string_view word) {
    if (!word.starts_with('-')) {
        return std::nullopt;
    }
    word.remove_prefix(word.starts_with("--") ? 2 : 1);
    const auto equals = word.find('=');
    const auto* const option = std::ranges::find(kQtOptions, word.substr(0, equals), &QtOption::name);
    if (option == kQtOptions.end()) {
        return std::nullopt;
    }
    return option->takesValue && equals == std::string_view::npos ? 2U : 1U;
}

Reply refusal(std::string_view word) {
    return {"quillane: it does not know \"" + std::string(word) + "\". Try \"quillane --help\".\n", true};
}

} // namespace

std::optional<Reply> reply(const std::vector<std::string_view>& words) {
    for (std::size_t at = 0; at < words.size();) {
        const auto word = words[at];
        if (word == "-h" || word == "--help") {
            return Reply{std::string(kHelp)};
        }
        if (word == "-v" || word == "--version") {
            return Reply{std::string(kVersionLine)};
        }
        if (word == Workspace::kRelaunched) { // said by the program itself
            ++at;
            continue;
        }
        const auto taken = wordsOfQtOption(word);
        if (!taken) {
            return refusal(word);
        }
        at += *taken;
    }
    return std::nullopt;
}

std::optional<int> answer(int argc, char** argv) {
    const auto said = reply(std::vector<std::string_view>(argv + std::min(argc, 1), argv + argc));
    if (!said) {
        return std::nullopt;
    }
    // A text that can't be written is nobody's loss but the one's who closed the pipe; the code tells of it.
    const bool isPrinted =
        std::fputs(said->text.c_str(), said->isRefusal ? stderr : stdout) >= 0 && std::fflush(stdout) == 0;
    if (said->isRefusal) {
        return kRefused;
    }
    return isPrinted ? 0 : 1;
}

} // namespace quillane::CommandLine
