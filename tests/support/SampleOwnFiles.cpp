// What the person of the sample Macs has of their own.
#include "SampleArchives.h"
#include "SampleContents.h"
#include "SampleDocuments.h"
#include "SampleMac.h"
#include "SampleMedia.h"
#include "SamplePicture.h"
#include <optional>

namespace quillane::SampleContents {
namespace {

using Kind = UserFile::Kind;
using Content = SampleFile::Content;
using SampleDocuments::Lines;
using SampleDocuments::Page;

Content shared(std::string bytes) {
    return std::make_shared<const std::string>(std::move(bytes));
}

// The small Mac has the same pictures, a twentieth as wide and high.
struct PictureSize {
    int width;
    int height;
};

PictureSize sized(SampleScale mb, int width, int height) {
    return mb.isFull() ? PictureSize{width, height} : PictureSize{width / 20, height / 20};
}

std::string photo(SampleScale mb, std::uint32_t number) {
    const auto [width, height] = sized(mb, 1'200, 900);
    return jpegOf(SamplePicture::landscape(number, width, height));
}

std::string capture(SampleScale mb, std::uint32_t number, const std::vector<PngRemark>& texts = {}) {
    const auto [width, height] = sized(mb, 1'280, 800);
    return pngOf(SamplePicture::screen(number, width, height), texts);
}

void addPictures(SampleMac& mac, SampleScale mb) {
    const struct {
        const char* path;
        int days;
    } photos[] = {{"Pictures/2023/IMG_1987.jpg", 388},  {"Pictures/2023/IMG_2003.jpg", 371},
                  {"Pictures/2023/IMG_2019.jpg", 302},  {"Pictures/2024/Above the pass.jpg", 41},
                  {"Pictures/2024/Last light.jpg", 40}, {"Pictures/2024/Morning, north shore.jpeg", 39},
                  {"Desktop/Wallpaper (new).jpg", 9},   {"Downloads/attachment-1.jpg", 18}};
    std::uint32_t number = 1;
    for (const auto& [path, days] : photos) {
        mac.ownFile(path, Kind::image).content(photo(mb, number++)).modified(daysAgo(days));
    }
    const auto [width, height] = sized(mb, 1'000, 1'400);
    mac.ownFile("Documents/Receipts/Boots.jpg", Kind::image)
        .content(jpegOf(SamplePicture::paper(11, width, height)))
        .modified(daysAgo(140));
    mac.ownFile("Pictures/Screenshot of nothing.png", Kind::image) // named so and not marked
        .content(capture(mb, 5))
        .modified(daysAgo(150));
}

void addCaptures(SampleMac& mac, SampleScale mb) {
    mac.ownFile("Desktop/Screenshot 2024-05-02 at 10.20.30.png", Kind::image)
        .content(capture(mb, 1))
        .markedAsCapture()
        .modified(daysAgo(13))
        .isCapture();
    const auto [width, height] = sized(mb, 900, 700);
    mac.ownFile("Pictures/which lamp.png", Kind::image) // renamed
        .content(pngOf(SamplePicture::lamp(width, height)))
        .markedAsCapture()
        .modified(daysAgo(200))
        .isCapture();
    mac.ownFile("Pictures/Screenshots/Screenshot from 2024-04-18 09-12-44.png", Kind::image)
        .content(capture(mb, 2, {{"Software", "gnome-screenshot"}}))
        .modified(daysAgo(27))
        .isCapture();
    mac.ownFile("Pictures/Screenshots/edited.png", Kind::image) // by a program for pictures
        .content(capture(mb, 3, {{"Software", "paint"}}))
        .modified(daysAgo(26));
    mac.ownFile("Documents/.cache/capture.png", Kind::image)
        .content(capture(mb, 4, {{"Software", "gnome-screenshot"}}))
        .modified(daysAgo(5));
}

// The beginning of a movie, and as much of the rest as the full Mac has of it.
void addMovie(SampleMac& mac, SampleScale mb, const std::string& path, Bytes length, int days) {
    auto& movie = mac.ownFile(path, Kind::video)
                      .content(SampleMedia::movieHead(length))
                      .length(length)
                      .modified(daysAgo(days))
                      .isLarge();
    if (mb.isFull()) {
        movie.allocated(length);
    } else {
        movie.isElsewhere();
    }
}

void addLargeFiles(SampleMac& mac, SampleScale mb) {
    addMovie(mac, mb, "Movies/Holiday 2019.mov", megabytes(118), 1'480);
    addMovie(mac, mb, "Movies/First steps.m4v", 104'200'000, 320);
    mac.ownFile("Movies/Conference talk.mp4", Kind::video)
        .content(SampleMedia::movieHead(megabytes(318)))
        .length(megabytes(318))
        .modified(daysAgo(75))
        .isLarge()
        .isElsewhere();
    mac.ownFile("Pictures/Shared album/Aerial survey.tif", Kind::image)
        .length(megabytes(126))
        .modified(daysAgo(52))
        .isLarge()
        .isElsewhere();
    // It grows as it is written, and holds enough to be here.
    mac.ownFile("Documents/Virtual machines/Sandbox.sparseimage", Kind::diskImage)
        .allocated(2'200'000)
        .length(104'857'600)
        .lastUsed(daysAgo(2))
        .modified(daysAgo(2))
        .isLarge();
    mac.ownFile("Movies/Nearly large.mov", Kind::video).length(99'999'999).modified(daysAgo(60));
    mac.ownFile("Documents/Shared/Annual report.key", Kind::document) // in a cloud, and not large
        .length(megabytes(48))
        .modified(daysAgo(33));
    mac.ownFile("Documents/Archive/Thesis sources.tar", Kind::archive)
        .content(SampleArchives::tar(
            {{"thesis/main.tex", "\\documentclass{book}\n"}, {"thesis/data.csv", "year;value\n2018;4\n"}}))
        .length(mb(8))
        .modified(yearsAgo(5));
    mac.ownFile("Music/Demo 4 (rough).m4a", Kind::audio).allocated(mb(6.2)).modified(daysAgo(44));
}

void addInstallers(SampleMac& mac, SampleScale mb) {
    constexpr bool kIsThere = true;
    constexpr bool kIsNot = false;
    const auto add = [&](const char* path, Kind kind, double megabytesOfIt, int days, bool isThere) {
        mac.ownFile(path, kind).allocated(mb(megabytesOfIt)).modified(daysAgo(days)).isInstaller(isThere);
    };
    add("Desktop/Harbour VM 5.2.dmg", Kind::diskImage, 38, 90, kIsThere);
    add("Downloads/tessel-studio_3.9.4.pkg", Kind::installer, 21, 610, kIsThere);
    add("Downloads/Lumen-Browser-131.0.2.dmg", Kind::diskImage, 17, 28, kIsThere);
    add("Downloads/Quarry Notes.dmg", Kind::diskImage, 9, 12, kIsNot);
    add("Downloads/Willow Paint 4.1.pkg", Kind::installer, 5.3, 260, kIsNot);
    mac.ownFile("Downloads/kettle.zip", Kind::archive)
        .content(SampleArchives::zip({{"Kettle.app/Contents/PkgInfo", "APPL????"}}))
        .modified(daysAgo(7))
        .isInstaller(kIsThere);
    mac.ownFile("Downloads/Photos from Lena.zip", Kind::archive)
        .content(SampleArchives::zip({{"Lena/one.jpg", photo(mb, 21)}, {"Lena/two.jpg", photo(mb, 22)}}))
        .modified(daysAgo(31))
        .isInstaller(kIsNot);
    // Hidden, elsewhere, and no installer.
    mac.ownFile("Downloads/.partial/Setup.dmg", Kind::diskImage).allocated(mb(1)).modified(daysAgo(2));
    mac.ownFile("Documents/Old disc.iso", Kind::diskImage).allocated(mb(4)).modified(yearsAgo(3));
    mac.ownFile("Downloads/sources.tar", Kind::archive)
        .content(SampleArchives::tar({{"README", "Read me.\n"}}))
        .modified(daysAgo(80));
}

void addText(SampleMac& mac, const std::string& path, std::string content, Ago ago) {
    mac.ownFile(path, Kind::document).content(std::move(content)).modified(ago);
}

void addLetters(SampleMac& mac) {
    addText(mac, "Documents/Letters/To the landlord.txt",
            "Dear Ms. Okafor,\nplease find enclosed the invoice 2023-114 for the new boiler.\n",
            daysAgo(410));
    addText(mac, "Documents/Letters/R\u00E9sum\u00E9.txt", "Caf\u00E9 Nadel, Leipzig: 2015 to 2019\n",
            daysAgo(600));
    addText(mac, "Documents/Letters/Quittung.txt",
            SampleDocuments::latin1("Stra\u00DFe 7, Caf\u00E9 am Markt\n"), yearsAgo(8));
    addText(mac, "Documents/Ledger.csv", "date;what;sum\n2023-04-01;invoice 2023-87;118,20\n", daysAgo(100));
    addText(mac, "Documents/.drafts/invoice 2023.txt", "invoice 2023\n", daysAgo(9));
    mac.searchFinds("invoice 2023", {"Documents/Letters/To the landlord.txt", "Documents/Ledger.csv"});
    mac.searchFinds("CAFE", {"Documents/Letters/R\u00E9sum\u00E9.txt", "Documents/Letters/Quittung.txt"});
    mac.searchFinds("lamp", {"Pictures/which lamp.png"});
    mac.searchFinds("annual", {"Documents/Shared/Annual report.key"});
}

// One word in each form in which a person keeps texts.
void addRecipes(SampleMac& mac) {
    const Lines recipe = {"For six people: 800 g of rhubarb, 120 g of butter, na\u00EFvely cut.",
                          "Bake until it smells of caramel \u2013 forty minutes, no less."};
    const std::string folder = "Documents/Recipes/";
    mac.ownFile(folder + "Crumble.docx", Kind::document)
        .content(SampleDocuments::docx({"Rhubarb", "Rhubarb and oats, half and half."}))
        .modified(daysAgo(21));
    mac.ownFile(folder + "Jam.odt", Kind::other).content(SampleDocuments::odt(recipe)).modified(daysAgo(700));
    addText(mac, folder + "Chutney.rtf", SampleDocuments::rtf(recipe), yearsAgo(6));
    addText(mac, folder + "Compote.html",
            SampleDocuments::html("Compote", recipe, "var fruit = 'marmalade';"), daysAgo(61));
    addText(mac, folder + "Tart.md", "# Tart\n\n- 500 g *rhubarb*\n- a pinch of salt\n", daysAgo(19));
    addText(mac, folder + "Shopping.txt", SampleDocuments::utf16("Rhubarb, cr\u00E8me fra\u00EEche\n"),
            daysAgo(18));
    mac.ownFile("Documents/Mail/Re harvest.eml", Kind::other)
        .content(
            SampleDocuments::mail("Lena <lena@example.org>", "Re: harvest",
                                  {"The strawberries are over, na\u00EFve as we were; but of the rhubarb "
                                   "there is more than both of us can carry."}))
        .modified(daysAgo(17));
    mac.searchFinds("rhubarb", {folder + "Crumble.docx", folder + "Jam.odt", folder + "Chutney.rtf",
                                folder + "Compote.html", folder + "Tart.md", folder + "Shopping.txt",
                                "Documents/Mail/Re harvest.eml"});
    mac.searchFinds("marmalade", {});
}

void addPrinted(SampleMac& mac, SampleScale mb) {
    const auto [width, height] = sized(mb, 800, 1'130);
    mac.ownFile("Documents/Field notes/Birds of the marsh.pdf", Kind::pdf)
        .content(SampleDocuments::pdf(
            {Page::text({"Birds of the marsh", "", "Notes of two winters, by the old pumping station.",
                         "Counted each Sunday between eight and nine."}),
             Page::text({"November", "", "Lapwings in the low field, some two hundred.",
                         "Two harriers (one ringed); a bittern heard and not seen."}),
             Page::text({"January", "", "One kestrel on the third pole, as every day.",
                         "Ice to the reeds. The teals have gone to the river."}),
             Page::picture(jpegOf(SamplePicture::landscape(31, width, height)), width, height)}))
        .modified(daysAgo(104));
    mac.ownFile("Downloads/Boiler warranty.pdf", Kind::pdf)
        .content(SampleDocuments::pdf({Page::text({"Warranty", "", "Five years on the heat exchanger."}),
                                       Page::text({"What it does not cover", "", "Lime, frost and war."})}))
        .modified(daysAgo(409));
    mac.searchFinds("kestrel", {"Documents/Field notes/Birds of the marsh.pdf"});
    mac.searchFinds("heat exchanger", {"Downloads/Boiler warranty.pdf"});
}

struct Copy {
    std::string path;
    Kind kind;
    int modified; // days ago
    std::optional<int> lastUsed;
};

// Files of one content, of a million bytes at least, so that all of them are one group.
void addCopies(SampleMac& mac, const std::string& word, const Content& content, Bytes length,
               const std::vector<Copy>& copies) {
    for (const auto& copy : copies) {
        auto& file = mac.ownFile(copy.path, copy.kind).content(content).length(length).copyOf(word);
        file.modified(daysAgo(copy.modified));
        if (copy.lastUsed) {
            file.lastUsed(daysAgo(*copy.lastUsed));
        }
    }
}

void addGroups(SampleMac& mac, SampleScale mb, const Content& lake) {
    addCopies(mac, "lake", lake, megabytes(1),
              {{"Pictures/2023/IMG_2041.jpg", Kind::image, 301, 90},
               {"Desktop/IMG_2041 copy.jpg", Kind::image, 12, std::nullopt},
               {"Documents/Website/images/lake.jpg", Kind::image, 120, 4}});
    addCopies(mac, "rain", shared(SampleMedia::wave(mb.isFull() ? 41 : 0.1)), 1'808'144,
              {{"Music/Field recordings/Rain on the roof.wav", Kind::audio, 500, 45},
               {"Music/Rain on the roof copy.wav", Kind::audio, 499, std::nullopt},
               {"Desktop/rain.wav", Kind::audio, 46, std::nullopt},
               {"Documents/Podcast/assets/rain.wav", Kind::audio, 50, 3},
               {"Downloads/Rain on the roof.wav", Kind::audio, 48, std::nullopt}});
    // Of one date, so that the shortest path decides.
    const auto [width, height] = sized(mb, 1'240, 1'754);
    const auto lease = SampleDocuments::pdf(
        {Page::picture(jpegOf(SamplePicture::paper(41, width, height), 3), width, height),
         Page::text({"Signed on the first of May, in two copies."})});
    addCopies(mac, "lease", shared(lease), 1'130'000,
              {{"Documents/Flat/Lease (signed).pdf", Kind::pdf, 720, std::nullopt},
               {"Downloads/Lease (signed).pdf", Kind::pdf, 720, std::nullopt}});
    // As short as may be; a file that is called as a folder of products is none.
    addCopies(mac, "backup", shared("backup of the ledger\n"), megabytes(1),
              {{"Documents/Backups/ledger-a.bak", Kind::other, 30, std::nullopt},
               {"Documents/Backups/ledger-b.bak", Kind::other, 29, std::nullopt},
               {"Documents/Backups/build", Kind::other, 28, std::nullopt}});
    addCopies(mac, "names", shared("names that are hard to print\n"), 1'100'000,
              {{"Downloads/" + std::string(251, 'n') + ".dat", Kind::other, 70, std::nullopt},
               {"Downloads/Lena's \"final\" version.dat", Kind::other, 69, std::nullopt},
               {"Downloads/\u202Egpj.weiv\u202C.dat", Kind::other, 68, std::nullopt}});
}

// What is alike and in no group.
void addLookAlikes(SampleMac& mac, SampleScale mb, const Content& lake) {
    for (const char* path :
         {"Documents/Website/build/lake.jpg", "Documents/Website/vendor/theme/lake.jpg",
          "Documents/.versions/lake.jpg", "Pictures/Photos Library.photoslibrary/originals/2/2E3F.jpg",
          "Downloads/lake   kMDItemFSSize = 7.jpg", "Downloads/lake\nand shore.jpg"}) {
        mac.ownFile(path, Kind::image).content(lake).length(megabytes(1)).modified(daysAgo(15));
    }
    for (const char* path : {"Documents/Backups/short-a.bak", "Documents/Backups/short-b.bak"}) {
        mac.ownFile(path, Kind::other).content(shared("too short\n")).length(999'999);
    }
    // Two takes: of one length, with one beginning and one end.
    auto take = SampleMedia::wave(mb.isFull() ? 27 : 5);
    mac.ownFile("Documents/Podcast/Interview, take 1.wav", Kind::audio)
        .content(take)
        .length(1'190'744)
        .modified(daysAgo(49));
    take[200'000] = static_cast<char>(take[200'000] ^ 1);
    mac.ownFile("Documents/Podcast/Interview, take 2.wav", Kind::audio)
        .content(std::move(take))
        .length(1'190'744)
        .modified(daysAgo(49));
}

void addDuplicates(SampleMac& mac, SampleScale mb) {
    const auto [width, height] = sized(mb, 1'600, 1'200);
    const auto lake = shared(jpegOf(SamplePicture::landscape(3, width, height), 2));
    addGroups(mac, mb, lake);
    addLookAlikes(mac, mb, lake);
    // Two names of one file are two files, whatever they take.
    const std::string data = "Documents/Thesis/measured.dat";
    mac.ownFile(data, Kind::other)
        .content("measured once\n")
        .length(1'200'000)
        .modified(yearsAgo(5))
        .copyOf("measured");
    mac.ownFile("Documents/Thesis/final/measured.dat", Kind::other)
        .hardLinkOf(std::string(SampleMac::kHome) + "/" + data)
        .modified(yearsAgo(5))
        .copyOf("measured");
}

// Names that break what reads them carelessly.
void addHostileNames(SampleMac& mac) {
    addText(mac, "Downloads/invoice\n2023.txt", "a line feed in its name: albatross\n", daysAgo(3));
    addText(mac, "Downloads/statement\u202Efdp.txt", "what it is stands backwards\n", daysAgo(3));
    addText(mac, "Downloads/size   kMDItemFSSize = 7.txt", "albatross\n", daysAgo(3));
    addText(mac, "Downloads/the \"final\" draft's $(end) `now`.txt", "albatross\n", daysAgo(3));
    const auto longest = "Downloads/" + std::string(251, 'l') + ".txt";
    addText(mac, longest, "albatross\n", daysAgo(3));
    mac.searchFinds("albatross", {"Downloads/size   kMDItemFSSize = 7.txt",
                                  "Downloads/the \"final\" draft's $(end) `now`.txt", longest});
    mac.searchFinds("statement", {"Downloads/statement\u202Efdp.txt"});
    mac.searchFinds("\"final\"", {"Downloads/the \"final\" draft's $(end) `now`.txt",
                                  "Downloads/Lena's \"final\" version.dat"});
#if !defined(__APPLE__) // whose volumes take no such name
    addText(mac, "Downloads/old disk \xFF.txt", "albatross\n", yearsAgo(12));
#endif
}

void addPhotosLibrary(SampleMac& mac, SampleScale mb) {
    const std::string library = "Pictures/Photos Library.photoslibrary/";
    mac.ownFile(library + "originals/0/0A1B.heic", Kind::image).allocated(mb(24)).modified(daysAgo(30));
    mac.ownFile(library + "originals/1/1C2D.mov", Kind::video)
        .allocated(mb(14))
        .length(megabytes(120))
        .modified(daysAgo(30));
    mac.ownFile(library + "database/Photos.sqlite", Kind::other).allocated(mb(8)).modified(daysAgo(1));
    mac.searchFinds("heic", {});
}

} // namespace

void addOwnFiles(SampleMac& mac, SampleScale mb) {
    addPictures(mac, mb);
    addCaptures(mac, mb);
    addLargeFiles(mac, mb);
    addInstallers(mac, mb);
    addLetters(mac);
    addRecipes(mac);
    addPrinted(mac, mb);
    addDuplicates(mac, mb);
    addHostileNames(mac);
    addPhotosLibrary(mac, mb);
}

} // namespace quillane::SampleContents
