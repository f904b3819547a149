// The documents of the sample Mac, as the search reads them.
#include "DocumentText.h"
#include "PosixCommandRunner.h"
#include "SamplePlatform.h"
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quillane {
namespace {

using testing::HasSubstr;
using testing::Not;

class DocumentsOfTheSampleMac : public testing::Test {
  protected:
    static constexpr const char* kRecipes = "/Users/alex/Documents/Recipes/";

    std::string text(const std::string& path) const {
        const FileURL url(path);
        return m_documents.text(
            url, documentKind(ContentTypes::ofFile(url.pathExtension()), url.pathExtension()), {});
    }

  private:
    SamplePlatform m_sample{SampleMac::small()};
    PosixCommandRunner m_programs;
    DocumentText m_documents{m_sample.volume, m_programs, m_sample.clock,
                             [this](const FileURL& url) { return m_sample.volume.hostPath(url); }};
};

TEST_F(DocumentsOfTheSampleMac, EachRecipeTellsItsWordsInItsOwnForm) {
    const std::string people = "For six people: 800 g of rhubarb, 120 g of butter, na\u00EFvely cut.";
    const std::string minutes = "Bake until it smells of caramel \u2013 forty minutes, no less.";
    for (const char* name : {"Jam.odt", "Chutney.rtf", "Compote.html"}) {
        EXPECT_THAT(text(kRecipes + std::string(name)), HasSubstr(people)) << name;
        EXPECT_THAT(text(kRecipes + std::string(name)), HasSubstr(minutes)) << name;
    }
    EXPECT_THAT(text(kRecipes + std::string("Crumble.docx")), HasSubstr("Rhubarb and oats, half and half."));
    EXPECT_THAT(text("/Users/alex/Documents/Mail/Re harvest.eml"),
                HasSubstr("but of the rhubarb there is more than both of us can carry."));
}

TEST_F(DocumentsOfTheSampleMac, WhatNobodyReadsOnAPageIsNoWordOfIt) {
    EXPECT_THAT(text(kRecipes + std::string("Compote.html")), Not(HasSubstr("marmalade")));
}

TEST_F(DocumentsOfTheSampleMac, APdfTellsThePagesThatAreText) {
    const auto notes = text("/Users/alex/Documents/Field notes/Birds of the marsh.pdf");
    EXPECT_THAT(notes, HasSubstr("Birds of the marsh"));
    EXPECT_THAT(notes, HasSubstr("Two harriers (one ringed); a bittern heard and not seen."));
    EXPECT_THAT(notes, HasSubstr("One kestrel on the third pole, as every day."));
    EXPECT_THAT(text("/Users/alex/Documents/Flat/Lease (signed).pdf"), HasSubstr("in two copies."));
}

} // namespace
} // namespace quillane
