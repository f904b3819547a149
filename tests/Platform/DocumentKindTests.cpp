#include "DocumentKind.h"
#include <gtest/gtest.h>

namespace quillane {
namespace {

using enum DocumentKind;

DocumentKind kindOf(std::string_view extension) {
    return documentKind(ContentTypes::ofFile(extension), extension);
}

TEST(DocumentKind, IsThatOfTheTypeAndOfTheExtensionWhereThereIsNoType) {
    struct Row {
        const char* extension;
        DocumentKind kind;
    };
    const Row rows[] = {
        {"txt", plainText}, {"log", plainText},  {"json", plainText}, {"csv", plainText}, {"md", plainText},
        {"MD", plainText},  {"toml", plainText}, {"html", webPage},   {"htm", webPage},   {"xhtml", webPage},
        {"rtf", richText},  {"eml", message},    {"emlx", message},   {"pdf", pdf},       {"PDF", pdf},
        {"docx", office},   {"docm", office},    {"dotx", office},    {"dotm", office},   {"xlsx", office},
        {"xlsm", office},   {"xltx", office},    {"xltm", office},    {"pptx", office},   {"pptm", office},
        {"ppsx", office},   {"potx", office},    {"odt", office},     {"ott", office},    {"ods", office},
        {"ots", office},    {"odp", office},     {"otp", office},     {"odg", office},    {"zip", none},
        {"jpg", none},      {"doc", none},       {"epub", office},    {"odi", none},      {"", unknown},
        {"2024", unknown}};
    for (const auto& row : rows) {
        EXPECT_EQ(kindOf(row.extension), row.kind) << row.extension;
    }
}

TEST(DocumentKind, OfAFolderIsNoneWhateverItsName) {
    EXPECT_EQ(documentKind(ContentTypes::folder(), "md"), none);
    EXPECT_EQ(documentKind(ContentTypes::symbolicLink(), ""), none);
}

TEST(DocumentKind, ADocumentIsWhatIsNoPlainText) {
    for (const auto kind : {none, plainText, unknown}) {
        EXPECT_FALSE(isDocument(kind));
    }
    for (const auto kind : {webPage, richText, message, office, pdf}) {
        EXPECT_TRUE(isDocument(kind));
    }
}

TEST(DocumentKind, OnlyWhatNeedsAProgramIsCostly) {
    for (const auto kind : {none, plainText, unknown, webPage, richText, message, office}) {
        EXPECT_FALSE(isCostly(kind));
    }
    EXPECT_TRUE(isCostly(pdf));
}

} // namespace
} // namespace quillane
