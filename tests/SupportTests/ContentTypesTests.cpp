#include "ContentTypes.h"
#include <algorithm>
#include <gtest/gtest.h>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace quillane {
namespace {

std::vector<std::string> words(const std::string& text) {
    std::istringstream stream(text);
    std::vector<std::string> all;
    for (std::string word; stream >> word;) {
        all.push_back(word);
    }
    return all;
}

// Which family a file belongs to: the first of these that its type conforms to.
std::string family(std::string_view extension) {
    const auto& type = ContentTypes::ofFile(extension);
    static const std::vector<std::pair<std::string, std::string>> families = {
        {"public.disk-image", "disk image"},
        {"com.apple.installer-package-archive", "installer"},
        {"public.image", "image"},
        {"public.movie", "video"},
        {"public.audio", "audio"},
        {"com.adobe.pdf", "pdf"},
        {"public.archive", "archive"},
        {"public.text", "text"},
        {"public.presentation", "presentation"},
        {"public.spreadsheet", "spreadsheet"},
    };
    for (const auto& [identifier, name] : families) {
        if (type.conformsTo(identifier)) {
            return name;
        }
    }
    const auto id = type.identifier();
    return id.find("word") != id.npos || id.find("pages") != id.npos ? "word processing" : "other";
}

struct Row {
    const char* family;
    const char* extensions;
};

const Row kRows[] = {
    {"disk image", "dmg udif iso img ndif cdr dvdr smi dart dc42 sparseimage asif"},
    {"installer", "pkg mpkg"},
    {"image",
     "jpg jpeg jpe png gif tif tiff bmp heic heif webp svg svgz psd psb ai ico icns tga exr jp2 j2k"},
    {"image", "pict pct pic xbm sgi fpx qtif pntg mpo hdr odi"},
    {"image", "dng cr2 cr3 crw nef nrw arw srf sr2 orf raf rw2 rwl pef dcr erf mrw 3fr fff iiq raw"},
    {"video", "mov qt mp4 mpg4 m4v avi webm mpg mpeg m2v ts mts m2ts wmv flv f4v 3gp 3g2 dv mxf rm"},
    {"audio", "mp3 m4a m4b m4p m4r aac wav aif aiff aifc flac wma caf mid midi ac3 au snd amr sf2"},
    {"pdf", "pdf"},
    {"archive",
     "zip tar gz gzip tgz bz2 tbz tbz2 xz txz 7z z cpio pax xar xip aar yaa cpgz sit sitx hqx bin"},
    {"archive", "as uu jar war apk ipa cab xlsb"},
    {"text", "txt text rtf html htm shtml xhtml xml json yaml yml csv tsv css js mjs py rb pl php swift r"},
    {"text", "c h m mm cc cpp hpp java rs sh bash zsh csh s f90 diff patch log crash ips ics vcs vcf vtt"},
    {"text", "m3u m3u8 applescript scpt obj dae mobileconfig jnlp"},
    {"presentation", "ppt pps pptx ppsx potx pptm odp key"},
    {"spreadsheet", "xls xlt xlw xlsx xlsm xltx ods numbers"},
    {"word processing", "doc dot docx docm dotx dotm pages"},
    {"other",
     "plist odt odg ott epub eps ps asf webarchive webloc url exe dll o dylib class ttf otf ttc dfont"},
    {"other",
     "cer crt pem p12 usdz stl band mobileprovision eml emlx xla app rtfd sparsebundle photoslibrary"},
    {"other", "rar zst lz4 lzma zipx deb rpm msi mkv ogg oga ogv opus vob avif jxl md markdown toml ini cfg"},
    {"other",
     "conf go kt tsx jsx sql lua srt tex ipynb mobi azw3 djvu torrent db sqlite sketch fig xcf indd"},
    {"other", "woff woff2 vmdk vhd qcow2 ova ipsw dwg blend gguf toast"},
};

class ContentTypeRows : public testing::TestWithParam<Row> {};

TEST_P(ContentTypeRows, EveryExtensionOfTheRowIsOfItsFamily) {
    for (const auto& extension : words(GetParam().extensions)) {
        EXPECT_EQ(family(extension), GetParam().family) << extension;
        std::string upper = extension;
        std::ranges::transform(upper, upper.begin(),
                               [](char c) { return static_cast<char>(std::toupper(c)); });
        EXPECT_EQ(family(upper), GetParam().family) << upper;
    }
}

INSTANTIATE_TEST_SUITE_P(Table, ContentTypeRows, testing::ValuesIn(kRows));

struct Identified {
    const char* extension;
    const char* identifier;
    const char* conformsTo; // all of them, in any order
};

class ContentTypeTrees : public testing::TestWithParam<Identified> {};

TEST_P(ContentTypeTrees, TheTreeHoldsTheTypeAndAllThatItConformsTo) {
    const auto& type = ContentTypes::ofFile(GetParam().extension);
    EXPECT_EQ(type.identifier(), GetParam().identifier);
    std::multiset<std::string> expected = {GetParam().identifier};
    for (const auto& word : words(GetParam().conformsTo)) {
        expected.insert(word);
    }
    EXPECT_EQ(std::multiset<std::string>(type.tree().begin(), type.tree().end()), expected);
}

INSTANTIATE_TEST_SUITE_P(
    Known, ContentTypeTrees,
    testing::Values(
        Identified{"dmg", "com.apple.disk-image-udif",
                   "public.archive public.item public.data public.disk-image com.apple.disk-image"},
        Identified{"txt", "public.plain-text", "public.text public.data public.item public.content"},
        Identified{"jpg", "public.jpeg", "public.image public.data public.item public.content"},
        Identified{"mp4", "public.mpeg-4",
                   "public.movie public.audiovisual-content public.data public.content public.item"},
        Identified{"json", "public.json", "public.text public.data public.item public.content"},
        Identified{"gz", "org.gnu.gnu-zip-archive", "public.data public.item public.archive"},
        Identified{"zip", "public.zip-archive",
                   "com.pkware.zip-archive public.data public.item public.archive"},
        Identified{"pkg", "com.apple.installer-package-archive", "public.data public.item public.archive"},
        Identified{"pdf", "com.adobe.pdf", "public.data public.composite-content public.content public.item"},
        Identified{"", "public.data", "public.item"},
        Identified{"nobody declares this", "public.data", "public.item"}));

TEST(ContentTypes, DocumentsOfWordPagesAndBooksAreCompositeContentAsPdfIs) {
    for (const char* extension : {"pdf", "docx", "pages", "epub"}) {
        EXPECT_TRUE(ContentTypes::ofFile(extension).conformsTo("public.composite-content")) << extension;
    }
}

TEST(ContentTypes, IdentifiersAreComparedWithoutCase) {
    const auto& type = ContentTypes::ofFile("pages");
    EXPECT_TRUE(type.is("com.apple.iWork.Pages.sffpages"));
    EXPECT_TRUE(type.conformsTo("PUBLIC.DATA"));
    EXPECT_FALSE(type.is("public.data"));
}

TEST(ContentTypes, AFolderWithAnExtensionOfFilesIsAFolder) {
    EXPECT_EQ(ContentTypes::ofFolder("txt").identifier(), "public.folder");
    EXPECT_EQ(ContentTypes::ofFolder("").identifier(), "public.folder");
}

TEST(ContentTypes, AnExtensionMayNameAFileAndAPackage) {
    EXPECT_EQ(ContentTypes::ofFile("pages").identifier(), "com.apple.iwork.pages.sffpages");
    EXPECT_EQ(ContentTypes::ofFolder("pages").identifier(), "com.apple.iwork.pages.pages");
}

TEST(ContentTypes, ApplicationsAndLibrariesArePackagesAndFrameworksAreNot) {
    for (const char* extension : {"app", "APP", "bundle", "plugin", "kext", "rtfd", "pkg", "mpkg",
                                  "photoslibrary", "xcodeproj", "sparsebundle", "key", "pages"}) {
        EXPECT_TRUE(ContentTypes::ofFolder(extension).isPackage()) << extension;
    }
    EXPECT_EQ(ContentTypes::ofFolder("app").identifier(), "com.apple.application-bundle");
    for (const char* extension : {"framework", "", "d"}) {
        EXPECT_FALSE(ContentTypes::ofFolder(extension).isPackage()) << extension;
    }
}

TEST(ContentTypes, AnExtensionLongerThanAnyDeclaredOneIsUnknown) {
    EXPECT_EQ(ContentTypes::ofFile(std::string(100000, 'x')).identifier(), "public.data");
}

TEST(ContentTypes, IdentifiersOfAnyLengthAreToldApart) {
    const std::string longer(80, 'a');
    const std::string longest(200, 'a');
    const ContentType type({longer, "public.data"});
    EXPECT_TRUE(type.conformsTo(longer));
    EXPECT_TRUE(type.conformsTo("PUBLIC.data"));
    EXPECT_FALSE(type.conformsTo(longest));
    EXPECT_FALSE(type.conformsTo(std::string(80, 'b')));
    EXPECT_FALSE(type.conformsTo("public.item"));
    EXPECT_FALSE(type.conformsTo("public.executable"));
    EXPECT_FALSE(type.conformsTo(""));
}

} // namespace
} // namespace quillane
