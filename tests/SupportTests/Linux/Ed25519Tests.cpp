#include "Ed25519.h"
#include <gtest/gtest.h>
#include <string>
#include <string_view>

using namespace quillane;

namespace {

std::string bytes(std::string_view hex) {
    std::string text;
    for (std::size_t i = 0; i + 1 < hex.size(); i += 2) {
        text += static_cast<char>(std::stoi(std::string(hex.substr(i, 2)), nullptr, 16));
    }
    return text;
}

// The first three of RFC 8032, 7.1.
struct Vector {
    std::string key;
    std::string message;
    std::string signature;
};

const Vector kVectors[] = {
    {bytes("d75a980182b10ab7d54bfed3c964073a0ee172f3daa62325af021a68f707511a"), "",
     bytes("e5564300c360ac729086e2cc806e828a84877f1eb8e5d974d873e065224901555fb8821590a33bacc61e39701cf9b46b"
           "d25bf5f0595bbe24655141438e7a100b")},
    {bytes("3d4017c3e843895a92b70aa74d1b7ebc9c982ccf2ec4968cc0cd55f12af4660c"), bytes("72"),
     bytes("92a009a9f0d4cab8720e820b5f642540a2b27b5416503f8fb3762223ebdb69da085ac1e43e15996e458f3613d0f11d8c"
           "387b2eaeb4302aeeb00d291612bb0c00")},
    {bytes("fc51cd8e6218a1a38da47ed00230f0580816ed13ba3303ac5deb911548908025"), bytes("af82"),
     bytes("6291d657deec24024827e69c3abe01a30ce548a284743a445e3680d7db5ac3ac18ff9b538d16f290ae67f760984dc659"
           "4a7c15e9716ed28dc027beceea1ec40a")}};

// The text with one bit of it turned.
std::string turned(std::string text, std::size_t bit) {
    text[bit / 8] = static_cast<char>(static_cast<unsigned char>(text[bit / 8]) ^ (1U << bit % 8));
    return text;
}

TEST(Ed25519, TheSignaturesOfTheStandardHold) {
    for (const auto& [key, message, signature] : kVectors) {
        EXPECT_TRUE(Ed25519::isSigned(message, signature, key)) << message.size();
    }
}

TEST(Ed25519, OneBitOfTheSignatureOrOfTheTextMakesItNone) {
    const auto& [key, message, signature] = kVectors[2];
    for (std::size_t bit = 0; bit < signature.size() * 8; ++bit) {
        EXPECT_FALSE(Ed25519::isSigned(message, turned(signature, bit), key)) << bit;
    }
    for (std::size_t bit = 0; bit < message.size() * 8; ++bit) {
        EXPECT_FALSE(Ed25519::isSigned(turned(message, bit), signature, key)) << bit;
    }
    EXPECT_FALSE(Ed25519::isSigned(message + '\0', signature, key));
}

TEST(Ed25519, AnotherKeyHasNotSigned) {
    EXPECT_FALSE(Ed25519::isSigned(kVectors[0].message, kVectors[0].signature, kVectors[1].key));
    EXPECT_FALSE(Ed25519::isSigned(kVectors[0].message, kVectors[0].signature, std::string(32, '\xff')));
}

TEST(Ed25519, KeysAndSignaturesOfOtherLengthsAreNone) {
    const auto& [key, message, signature] = kVectors[1];
    for (const auto& other : {std::string(), key.substr(1), key + '\0', key + key}) {
        EXPECT_FALSE(Ed25519::isSigned(message, signature, other)) << other.size();
    }
    for (const auto& other : {std::string(), signature.substr(0, 63), signature + '\0', signature + key}) {
        EXPECT_FALSE(Ed25519::isSigned(message, other, key)) << other.size();
    }
}

} // namespace
