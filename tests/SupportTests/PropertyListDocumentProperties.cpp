#include "PropertyListDocument.h"
#include <version>
#ifndef _LIBCPP_VERSION // the system's rapidcheck is built with libstdc++
#include "Utf8.h"
#include <numeric>
#include <rapidcheck/gtest.h>
#include <string>
#include <vector>

namespace quillane {
namespace {

std::string character(std::uint32_t codePoint) {
    std::string text;
    Utf8::append(text, codePoint);
    return text;
}

// Bytes that are text in part at most: characters of all planes and of the range of the escapes, single bytes,
// beginnings of characters, what XML has signs for.
rc::Gen<std::string> bytes() {
    const auto anyCharacter = rc::gen::map(rc::gen::inRange<std::uint32_t>(0, 0x110000), character);
    const auto escape = rc::gen::map(rc::gen::inRange<std::uint32_t>(0x10FDFE, 0x10FF02), character);
    const auto anyByte = rc::gen::map(rc::gen::arbitrary<std::uint8_t>(), [](std::uint8_t byte) {
        return std::string(1, static_cast<char>(byte));
    });
    const auto part = rc::gen::map(rc::gen::pair(escape, rc::gen::inRange<std::size_t>(1, 4)),
                                   [](const auto& cut) { return cut.first.substr(0, cut.second); });
    const auto sign =
        rc::gen::elementOf(std::vector<std::string>{"<", ">", "&", "&amp;", "\"", " ", "\n", "\r\n", "\t",
                                                    "]]>", "/", "é", "\xEF\xBF\xBE", "\xED\xA0\x80"});
    return rc::gen::map(rc::gen::container<std::vector<std::string>>(
                            rc::gen::oneOf(anyCharacter, escape, anyByte, part, sign)),
                        [](const std::vector<std::string>& pieces) {
                            return std::accumulate(pieces.begin(), pieces.end(), std::string());
                        });
}

RC_GTEST_PROP(PropertyListDocumentProperty, TextsAndKeysOfAnyBytesComeBackAsTheyWere, ()) {
    const auto text = *bytes();
    const auto key = *bytes();
    const auto document =
        PropertyListDocument::text(PropertyList::Dictionary({{key, PropertyList::Value(text)}}));
    const auto read = PropertyList::parse(document);
    RC_ASSERT(read.ok());
    const auto& entries = PropertyList::asDictionary(&*read)->entries();
    RC_ASSERT(entries.size() == 1U);
    RC_ASSERT(PropertyListDocument::restored(entries[0].key) == key);
    RC_ASSERT(PropertyListDocument::restored(PropertyList::asString(&entries[0].value).value()) == text);
}

} // namespace
} // namespace quillane
#endif
