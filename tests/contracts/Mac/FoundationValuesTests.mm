// The border between the platform's values and ours.
#include "FoundationValues.h"
#include "HalfText.h"
#include <cerrno>
#include <gtest/gtest.h>
#include <string>
#include <vector>

// As the system hands out one that refers to a file by its number.
@interface QuillaneReference : NSURL
@end
@implementation QuillaneReference
- (NSURL*)filePathURL {
    return [NSURL URLWithString:@"file:///e%CC%81/a%20b"];
}
@end

namespace quillane {
namespace {

NSError* errorOf(NSString* domain, NSInteger code, NSError* below = nil) {
    NSMutableDictionary* const told = [NSMutableDictionary dictionary];
    if (below != nil) {
        [told setObject:below forKey:NSUnderlyingErrorKey];
    }
    return [NSError errorWithDomain:domain code:code userInfo:told];
}

TEST(FoundationValues, TextsOfAnyBytesComeBackAsTheyWere) {
    @autoreleasepool {
        std::vector<std::string> texts{"",
                                       "a",
                                       std::string("a\0b", 3),
                                       "\xff\xfe",
                                       "\xef\xbb\xbfmarked",
                                       "\U0010FE41",
                                       "\xed\xa0\x80",
                                       "e\u0301 \u00e9 \u212b",
                                       "\U0001F4A9"};
        for (int byte = 0; byte < 256; ++byte) {
            texts.emplace_back(3, static_cast<char>(byte));
        }
        for (const auto& text : texts) {
            EXPECT_EQ(FoundationValues::string(FoundationValues::text(text)), text);
        }
    }
}

TEST(FoundationValues, TextStaysTextForTheSystem) {
    @autoreleasepool {
        EXPECT_TRUE([FoundationValues::text("Gr\u00fc\u00dfe") isEqualToString:@"Gr\u00fc\u00dfe"]);
        EXPECT_EQ(FoundationValues::string(@"Gr\u00fc\u00dfe"), "Gr\u00fc\u00dfe");
        EXPECT_EQ([FoundationValues::text("\xff") length], 2U); // one character beyond the first plane
        EXPECT_EQ(FoundationValues::string(nil), "");
    }
}

TEST(FoundationValues, LocationsCrossByteForByte) {
    @autoreleasepool {
        for (const std::string path : {"/", "/a b", "/e\u0301", "/\u00e9", "/100% %41?#;", "/a;b/c;", "/;",
                                       "/\xff\xfe", "/new\nline"}) {
            EXPECT_EQ(FoundationValues::fileURL(FoundationValues::location(FileURL(path))), FileURL(path));
        }
        EXPECT_EQ(FoundationValues::fileURL(nil), std::nullopt);
        EXPECT_EQ(FoundationValues::fileURL([NSURL URLWithString:@"https://example.org/a"]), std::nullopt);
    }
}

TEST(FoundationValues, ALocationThatRefersToAFileByItsNumberIsToldByItsPath) {
    @autoreleasepool {
        EXPECT_EQ(FoundationValues::fileURL(
                      [[QuillaneReference alloc] initWithString:@"file:///.file/id=6571367.2"]),
                  FileURL("/e\u0301/a b"));
    }
}

TEST(FoundationValues, HalfACharacterIsNoTextOfAnyBytes) {
    @autoreleasepool {
        NSString* const half = [[QuillaneHalfText alloc] init];
        EXPECT_EQ(FoundationValues::bytes(half), std::nullopt);
        EXPECT_EQ(FoundationValues::string(half), "");
        EXPECT_EQ(FoundationValues::bytes(nil), std::nullopt);
        EXPECT_EQ(FoundationValues::bytes(@""), "");
    }
}

TEST(FoundationValues, TheFilesErrorsKeepTheirCodeAndTellTheErrnoBelow) {
    @autoreleasepool {
        const auto posix = [](int code) { return errorOf(NSPOSIXErrorDomain, code); };
        const auto status = [](int code) { return errorOf(NSOSStatusErrorDomain, code); };
        const struct {
            NSInteger code;
            NSError* below;
            PlatformError expected;
        } rows[] = {
            {257, posix(EPERM), {257, EPERM}},
            {513, posix(EACCES), {513, EACCES}},
            {513, status(-5000), {513, EACCES}},
            {513, status(-61), {513, EACCES}},
            {513, status(-45), {513, EPERM}},
            {4, status(-43), {4, ENOENT}},
            {516, status(-48), {516, EEXIST}},
            {642, status(-44), {642, EROFS}},
            {642, status(-46), {642, EROFS}},
            {640, status(-34), {640, ENOSPC}},
            {513, status(100001), {513, EPERM}},
            {513, status(100013), {513, EACCES}},
            {3328, status(-120), {3328, std::nullopt}},
            {513, nil, {513, std::nullopt}},
            {513, errorOf(@"Elsewhere", 5, posix(EPERM)), {513, EPERM}}, // further below
            {513, errorOf(NSCocoaErrorDomain, 513, status(-5000)), {513, EACCES}},
            {513, status(100000), {513, std::nullopt}},
            {512, posix(EROFS), {642, EROFS}}, // the code says nothing
            {512, status(-34), {640, ENOSPC}},
            {512, nil, {512, std::nullopt}},
        };
        for (const auto& row : rows) {
            EXPECT_EQ(FoundationValues::error(errorOf(NSCocoaErrorDomain, row.code, row.below)), row.expected)
                << row.code << " " << [[row.below description] UTF8String];
        }
    }
}

TEST(FoundationValues, ErrorsOfOtherDomainsAreWhatTheirErrnoIs) {
    @autoreleasepool {
        EXPECT_EQ(FoundationValues::error(errorOf(NSPOSIXErrorDomain, EPERM)), (PlatformError{513, EPERM}));
        EXPECT_EQ(FoundationValues::error(errorOf(NSOSStatusErrorDomain, -5000)),
                  (PlatformError{513, EACCES}));
        EXPECT_EQ(FoundationValues::error(errorOf(NSOSStatusErrorDomain, -120)),
                  (PlatformError{512, std::nullopt}));
        EXPECT_EQ(FoundationValues::error(errorOf(@"Elsewhere", 513)), (PlatformError{512, std::nullopt}));
        EXPECT_EQ(FoundationValues::error(nil), (PlatformError{512, std::nullopt}));
    }
}

TEST(FoundationValues, WhatStandsForAnErrorBelowAndIsNoneIsLeftAlone) {
    @autoreleasepool {
        NSDictionary* const told = [NSDictionary dictionaryWithObject:@"text" forKey:NSUnderlyingErrorKey];
        EXPECT_EQ(FoundationValues::error([NSError errorWithDomain:NSCocoaErrorDomain
                                                              code:513
                                                          userInfo:told]),
                  (PlatformError{513, std::nullopt}));
    }
}

} // namespace
} // namespace quillane
