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
        {"jpg", none},      {"doc", none},       {"odi", none},       {"", none},         {"unknown", none}};
    for (const auto& row : rows) {
        EXPECT_EQ(kindOf(row.extension), row.kind) << row.extension;
    }
}

TEST(DocumentKind, OnlyWhatNeedsAProgramIsCostly) {
    for (const auto kind : {none, plainText, webPage, richText, message, office}) {
        EXPECT_FALSE(isCostly(kind));
    }
    EXPECT_TRUE(isCostly(pdf));
}

} // namespace
} // namespace quillane
