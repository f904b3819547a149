#include "UpdateFeed.h"
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <variant>

using namespace quillane;

namespace {

// Of the private key whose 32 bytes are all 1, by which some of the corpus is signed.
constexpr std::string_view kPublicKey = "\x8a\x88\xe3\xdd\x74\x09\xf1\x95\xfd\x52\xdb\x2d\x3c\xba\x5d\x72"
                                        "\xca\x67\x09\xbf\x1d\x94\x12\x1b\xf3\x74\x88\x01\xb4\x0f\x6f\x5c";

void require(bool isTrue) {
    if (!isTrue) {
        std::abort();
    }
}

bool isShownAsItStands(std::string_view notes) {
    for (const char c : notes) {
        if ((static_cast<unsigned char>(c) < 0x20 && c != '\n' && c != '\t') || c == '\x7f') {
            return false;
        }
    }
    return true;
}

void requireBounds(const AppUpdate& update) {
    require(update.page.starts_with("https://") && update.page.size() <= UpdateFeed::kMostBytesOfPage);
    require(update.page.find_first_of(" \"<>\\\n\r\t") == std::string::npos);
    const auto host = update.page.substr(8, update.page.find_first_of("/?#", 8) - 8);
    require(!host.empty() && host.find('@') == std::string::npos);
    require(update.notes.size() <= UpdateFeed::kMostBytesOfNotes && isShownAsItStands(update.notes));
    require(update.date >= Date::fromUnix(-62'167'219'200) && update.date < Date::fromUnix(253'402'300'800));
    require(VersionNumber::parse(update.version.text()) == update.version);
}

} // namespace

// The input is a feed, an announcement without a signature, and a version.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const std::string_view input(reinterpret_cast<const char*>(bytes), size);
    const auto feed = UpdateFeed::read(input, kPublicKey);
    if (const auto* const update = std::get_if<AppUpdate>(&feed)) {
        requireBounds(*update);
    }
    if (const auto update = UpdateFeed::parse(input)) {
        requireBounds(*update);
    }
    if (const auto version = VersionNumber::parse(input)) {
        require(version->text() == input && (*version <=> *version) == 0);
    }
    return 0;
}
