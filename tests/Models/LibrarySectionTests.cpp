#include "LibrarySection.h"

namespace quillane {
namespace {

TEST(LibrarySection, TheSectionsStandInTheirOrderWithTitleAndSymbol) {
    struct Row {
        LibrarySection section;
        std::string title;
        std::string symbol;
    };
    const std::vector<Row> rows = {
        {LibrarySection::overview, "Overview", "sparkles"},
        {LibrarySection::applications, "Applications", "square.grid.2x2"},
        {LibrarySection::orphans, "Orphaned Files", "questionmark.folder"},
        {LibrarySection::developer, "Developer", "hammer"},
        {LibrarySection::files, "Files", "doc.on.doc"},
        {LibrarySection::duplicates, "Duplicates", "doc.on.doc.fill"},
        {LibrarySection::startup, "Startup", "power"},
    };
    ASSERT_EQ(rows.size(), kAllLibrarySections.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(kAllLibrarySections[i], rows[i].section);
        EXPECT_EQ(rawValue(rows[i].section), rows[i].title);
        EXPECT_EQ(symbol(rows[i].section), rows[i].symbol);
        EXPECT_EQ(librarySectionFromRawValue(rows[i].title), rows[i].section);
    }
}

TEST(LibrarySection, UnknownTitlesAreNoSection) {
    for (const char* title : {"", "overview", "Orphans", "Files "}) {
        EXPECT_EQ(librarySectionFromRawValue(title), std::nullopt) << title;
    }
}

} // namespace
} // namespace quillane
