#include "FoldTable.h"
#include "FoldedNeedle.h"
#include "Utf8.h"
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

using namespace quillane;

namespace {

using Portion = FoldedNeedle::Portion;
using Occurs = bool (FoldedNeedle::*)(std::string_view, Portion) const;

constexpr std::array<std::string_view, 8> kNeedles = {"quit", "ffic",    "stra\u00DFe",     "2023-12",
                                                      "k9kk", "x nadel", "\u4E2Dqui\u043F", "\u0430\u0431"};

// What a control character of the input stands for: spellings that are rare, and room between them.
constexpr std::array<std::string_view, 28> kSpellings = {
    "\u00E9",
    "\u0301",
    "\u05B8",
    "\u093C",
    "\U00010A0F",
    "\uFE20",
    "\uFB00",
    "\uFB03",
    "\uFB06",
    "\u212A",
    "\u00DF",
    "\u1E9E",
    "\u0130",
    "\u1EBF",
    "\xE9",
    "\xDF",
    "\xCF",
    "\xA0",
    "\u201C",
    "\uFF0C",
    "\u4E2D",
    "\u043F",
    "\u1112",
    "\u1161",
    "             ",
    "                                                   ",
    "\u4E2D\u4E2D\u4E2D\u4E2D\u4E2D\u4E2D\u4E2D\u4E2D",
    "\u0301\u05B8"};

void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

std::string spelt(std::string_view input) {
    std::string text;
    for (const char c : input) {
        const auto place = static_cast<unsigned char>(c);
        text += place < kSpellings.size() ? kSpellings[place] : std::string_view(&c, 1);
    }
    return text;
}

std::u32string folded(std::string_view text) {
    std::u32string points;
    Text::FoldTable::shared().append(text, points);
    return points;
}

// Letters with so many marks that an occurrence is longer than what is looked at around it are told to be missed.
bool hasManyMarks(std::string_view text) {
    constexpr int kMost = 2;
    int marks = 0;
    for (std::size_t begin = 0; begin < text.size() && marks <= kMost;) {
        auto end = begin + 1;
        while (end < text.size() && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80) {
            ++end;
        }
        marks = folded(text.substr(begin, end - begin)).empty() ? marks + 1 : 0;
        begin = end;
    }
    return marks > kMost;
}

// As a file is searched: each portion behind what is kept of the one before it.
bool occursInPortions(const FoldedNeedle& needle, std::string_view text, std::size_t length, Occurs occurs) {
    std::string window;
    for (std::size_t begin = 0; begin < text.size(); begin += length) {
        const bool isFirst = begin == 0;
        const bool isLast = begin + length >= text.size();
        window += text.substr(begin, length);
        const auto portion =
            isFirst ? (isLast ? Portion::whole : Portion::first) : (isLast ? Portion::last : Portion::middle);
        if ((needle.*occurs)(window, portion)) {
            return true;
        }
        window.erase(0, window.size() - std::min(window.size(), needle.overlap()));
    }
    return false;
}

} // namespace

// The first byte of the input chooses a needle, the second one the length of portions, the rest is text. What is found
// by bytes must be what folding everything finds.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    if (size < 2) {
        return 0;
    }
    const auto text = spelt({reinterpret_cast<const char*>(bytes) + 2, size - 2});
    if (hasManyMarks(text)) {
        return 0;
    }
    const auto points = folded(kNeedles[bytes[0] % kNeedles.size()]);
    const FoldedNeedle needle(points);
    const std::size_t length = bytes[1] + std::size_t{1};
    const bool occurs = folded(text).find(points) != std::u32string::npos;
    require(needle.occursIn(text) == occurs);
    require(occursInPortions(needle, text, length, &FoldedNeedle::occursIn) == occurs);
    if (occurs || folded(Utf8::fromLatin1(text)).find(points) != std::u32string::npos) {
        require(needle.mayOccurInUnknown(text));
        require(occursInPortions(needle, text, length, &FoldedNeedle::mayOccurInUnknown));
    }
    return 0;
}
