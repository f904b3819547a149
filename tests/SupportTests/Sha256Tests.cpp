#include "Sha256.h"
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <utility>

namespace quillane {
namespace {

std::span<const std::byte> bytesOf(std::string_view text) {
    return std::as_bytes(std::span(text.data(), text.size()));
}

std::string digestOf(std::string_view text) {
    Sha256 hash;
    hash.update(bytesOf(text));
    return hash.hex();
}

constexpr auto kOfNothing = "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855";
constexpr auto kOfAbc = "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad";

// The vectors published with the algorithm.
TEST(Sha256, ThePublishedVectorsHaveTheirDigests) {
    EXPECT_EQ(Sha256().hex(), kOfNothing);
    EXPECT_EQ(digestOf(""), kOfNothing);
    EXPECT_EQ(digestOf("abc"), kOfAbc);
    EXPECT_EQ(digestOf("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq"),
              "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1");
    EXPECT_EQ(digestOf(std::string(1'000'000, 'a')),
              "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
}

TEST(Sha256, ADigestCanBeAskedForOnTheWay) {
    Sha256 hash;
    hash.update(bytesOf("a"));
    EXPECT_EQ(hash.hex(), digestOf("a"));
    EXPECT_EQ(hash.hex(), digestOf("a"));
    hash.update(bytesOf("bc"));
    EXPECT_EQ(hash.hex(), kOfAbc);
}

TEST(Sha256, ACopyGoesOnByItself) {
    Sha256 hash;
    hash.update(bytesOf("ab"));
    Sha256 copy(hash);
    Sha256 assigned;
    assigned.update(bytesOf("something else"));
    assigned = hash;
    copy.update(bytesOf("x"));
    assigned.update(bytesOf("y"));
    hash.update(bytesOf("c"));
    EXPECT_EQ(hash.hex(), kOfAbc);
    EXPECT_EQ(copy.hex(), digestOf("abx"));
    EXPECT_EQ(assigned.hex(), digestOf("aby"));
}

TEST(Sha256, AssigningAHashToItselfKeepsIt) {
    Sha256 hash;
    hash.update(bytesOf("abc"));
    const auto& same = hash;
    hash = same;
    EXPECT_EQ(hash.hex(), kOfAbc);
}

TEST(Sha256, AMovedHashGoesOnWithWhatItHad) {
    Sha256 hash;
    hash.update(bytesOf("ab"));
    Sha256 moved(std::move(hash));
    hash = Sha256();
    moved.update(bytesOf("c"));
    EXPECT_EQ(moved.hex(), kOfAbc);
    EXPECT_EQ(hash.hex(), kOfNothing);
}

} // namespace
} // namespace quillane
