#include "Sha256.h"
#include <version>
#ifndef _LIBCPP_VERSION // the system's rapidcheck is built with libstdc++
#include <algorithm>
#include <rapidcheck/gtest.h>
#include <string>
#include <vector>

namespace quillane {
namespace {

std::span<const std::byte> bytesOf(const std::string& text) {
    return std::as_bytes(std::span(text.data(), text.size()));
}

// Around the algorithm's blocks of 64 bytes.
rc::Gen<std::string> texts() {
    return rc::gen::mapcat(rc::gen::inRange<std::size_t>(0, 300), [](std::size_t length) {
        return rc::gen::container<std::string>(length, rc::gen::arbitrary<char>());
    });
}

RC_GTEST_PROP(Sha256Property, HoweverItIsCutTheDigestIsThatOfTheWhole, ()) {
    const auto text = *texts();
    Sha256 whole;
    whole.update(bytesOf(text));
    Sha256 portioned;
    for (std::size_t at = 0; at < text.size();) {
        portioned.update({});
        const auto length = std::min(*rc::gen::inRange<std::size_t>(1, 130), text.size() - at);
        portioned.update(bytesOf(text).subspan(at, length));
        at += length;
    }
    RC_ASSERT(portioned.hex() == whole.hex());
}

RC_GTEST_PROP(Sha256Property, ACopyMadeAnywhereEndsAsTheHashThatWentOn, ()) {
    const auto text = *texts();
    const auto cut = *rc::gen::inRange<std::size_t>(0, text.size() + 1);
    Sha256 hash;
    hash.update(bytesOf(text).first(cut));
    Sha256 copy(hash);
    hash.update(bytesOf(text).subspan(cut));
    copy.update(bytesOf(text).subspan(cut));
    RC_ASSERT(copy.hex() == hash.hex());
}

RC_GTEST_PROP(Sha256Property, TextsThatDifferHaveOtherDigests, ()) {
    const auto text = *rc::gen::suchThat(texts(), [](const std::string& made) { return !made.empty(); });
    auto other = text;
    other[*rc::gen::inRange<std::size_t>(0, text.size())] ^= 1;
    Sha256 hash;
    Sha256 otherHash;
    hash.update(bytesOf(text));
    otherHash.update(bytesOf(other));
    RC_ASSERT(hash.hex() != otherHash.hex());
}

// Of many lengths at a time, none, one and more of them in blocks.
RC_GTEST_PROP(Sha256Property, SeveralSideBySideHaveTheDigestsOfTheSystem, ()) {
    const auto contents =
        *rc::gen::container<std::vector<std::string>>(*rc::gen::inRange<std::size_t>(0, 6), texts());
    const auto more = *rc::gen::container<std::vector<std::string>>(contents.size(), texts());
    std::vector<Sha256> hashes(contents.size());
    for (const auto* const texts : {&contents, &more}) {
        std::vector<Sha256::Part> parts;
        for (std::size_t i = 0; i < hashes.size(); ++i) {
            parts.push_back({&hashes[i], bytesOf((*texts)[i])});
        }
        Sha256::updateTogether(parts);
    }
    for (std::size_t i = 0; i < hashes.size(); ++i) {
        SystemSha256 alone;
        alone.update(bytesOf(contents[i] + more[i]));
        RC_ASSERT(hashes[i].digest() == alone.digest());
    }
}

} // namespace
} // namespace quillane
#endif
