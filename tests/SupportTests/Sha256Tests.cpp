#include "HexadecimalText.h"
#include "Sha256.h"
#include <array>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <utility>

namespace quillane {
namespace {

std::span<const std::byte> bytesOf(std::string_view text) {
    return std::as_bytes(std::span(text.data(), text.size()));
}

constexpr auto kOfNothing = "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855";
constexpr auto kOfAbc = "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad";

// What the program hashes with, and the system's own.
template <class Hash>
class Sha256Means : public testing::Test {
  protected:
    static std::string hex(const Hash& hash) { return hexadecimalText(hash.digest()); }
    static std::string digestOf(std::string_view text) {
        Hash hash;
        hash.update(bytesOf(text));
        return hex(hash);
    }
};
using Means = testing::Types<Sha256, SystemSha256>;
TYPED_TEST_SUITE(Sha256Means, Means);

// The vectors published with the algorithm.
TYPED_TEST(Sha256Means, ThePublishedVectorsHaveTheirDigests) {
    EXPECT_EQ(this->hex(TypeParam()), kOfNothing);
    EXPECT_EQ(this->digestOf(""), kOfNothing);
    EXPECT_EQ(this->digestOf("abc"), kOfAbc);
    EXPECT_EQ(this->digestOf("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq"),
              "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1");
    EXPECT_EQ(this->digestOf(std::string(1'000'000, 'a')),
              "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
}

TYPED_TEST(Sha256Means, ADigestCanBeAskedForOnTheWay) {
    TypeParam hash;
    hash.update(bytesOf("a"));
    EXPECT_EQ(this->hex(hash), this->digestOf("a"));
    EXPECT_EQ(this->hex(hash), this->digestOf("a"));
    hash.update(bytesOf("bc"));
    EXPECT_EQ(this->hex(hash), kOfAbc);
}

TYPED_TEST(Sha256Means, ACopyGoesOnByItself) {
    TypeParam hash;
    hash.update(bytesOf("ab"));
    TypeParam copy(hash);
    TypeParam assigned;
    assigned.update(bytesOf("something else"));
    assigned = hash;
    copy.update(bytesOf("x"));
    assigned.update(bytesOf("y"));
    hash.update(bytesOf("c"));
    EXPECT_EQ(this->hex(hash), kOfAbc);
    EXPECT_EQ(this->hex(copy), this->digestOf("abx"));
    EXPECT_EQ(this->hex(assigned), this->digestOf("aby"));
}

TYPED_TEST(Sha256Means, AssigningAHashToItselfKeepsIt) {
    TypeParam hash;
    hash.update(bytesOf("abc"));
    const auto& same = hash;
    hash = same;
    EXPECT_EQ(this->hex(hash), kOfAbc);
}

TYPED_TEST(Sha256Means, AMovedHashGoesOnWithWhatItHad) {
    TypeParam hash;
    hash.update(bytesOf("ab"));
    TypeParam moved(std::move(hash));
    hash = TypeParam();
    moved.update(bytesOf("c"));
    EXPECT_EQ(this->hex(moved), kOfAbc);
    EXPECT_EQ(this->hex(hash), kOfNothing);
}

// Around the places where the padding takes one block more.
TEST(Sha256, EveryLengthOfThreeBlocksHasTheDigestOfTheSystem) {
    std::string text;
    for (std::size_t length = 0; length <= 192; ++length, text += static_cast<char>('a' + length % 26)) {
        Sha256 own;
        SystemSha256 systems;
        own.update(bytesOf(text));
        systems.update(bytesOf(text));
        EXPECT_EQ(own.digest(), systems.digest()) << length;
    }
}

TEST(Sha256, ADigestIsSpelledInLowerCase) {
    Sha256 hash;
    hash.update(bytesOf("abc"));
    EXPECT_EQ(hash.hex(), kOfAbc);
}

TEST(Sha256, NoPartsAreNoWork) {
    Sha256::updateTogether(std::span<const Sha256::Part>());
    Sha256 hash;
    Sha256::updateTogether(std::array{Sha256::Part{&hash, {}}});
    EXPECT_EQ(hash.hex(), kOfNothing);
}

} // namespace
} // namespace quillane
