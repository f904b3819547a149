// What the finders of files say of the sample Mac, with the search that walks it, against what stands beside its
// contents.
#include "DuplicateFinder.h"
#include "FileFinder.h"
#include "SamplePlatform.h"
#include <algorithm>
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>

namespace quillane {
namespace {

using testing::ElementsAreArray;
using testing::IsEmpty;
using Kind = UserFile::Kind;
using Texts = std::vector<std::string>;

// All that a lens says of a file.
std::string told(const UserFile& file) {
    return fmt::format("{}: {}, {} of {}, {}{}{}", file.url.path(), rawValue(file.kind), file.bytes,
                       file.logicalBytes, file.lastUsedSortKey().secondsSince1970(),
                       file.isCloudPlaceholder ? ", elsewhere" : "",
                       file.installsAnInstalledApp ? ", done" : "");
}

Texts told(const std::vector<UserFile>& files) {
    Texts texts;
    for (const auto& file : files) {
        texts.push_back(told(file));
    }
    return texts;
}

std::string pathOf(const UserFile& file) {
    return file.url.path();
}

Texts pathsOf(const std::vector<UserFile>& files) {
    Texts paths;
    std::ranges::transform(files, std::back_inserter(paths), pathOf);
    std::ranges::sort(paths);
    return paths;
}

class FilesOfTheSampleMac : public testing::Test {
  protected:
    // The finders run one after the other over one Mac, since none of them changes it.
    static void SetUpTestSuite() {
        s_sample = new SamplePlatform(SampleMac::small(), SampleSpotlight::embedded);
    }
    static void TearDownTestSuite() {
        delete s_sample;
        s_sample = nullptr;
    }

    static const Platform& platform() { return s_sample->platform; }
    static ExpectedFiles expected() { return s_sample->mac.expectedFiles(s_sample->disk.path()); }
    // A lens puts the largest first; which of two equal ones is first is the search's matter.
    static void expectLens(std::vector<UserFile> found, const std::vector<UserFile>& expected) {
        EXPECT_TRUE(std::ranges::is_sorted(found, std::ranges::greater(), &UserFile::bytes));
        std::ranges::sort(found, {}, pathOf);
        EXPECT_FALSE(expected.empty());
        EXPECT_THAT(told(found), ElementsAreArray(told(expected)));
    }
    static Texts search(const std::string& words, std::optional<Kind> kind = std::nullopt) {
        return pathsOf(FileFinder::search(platform(), words, kind));
    }

  private:
    static inline SamplePlatform* s_sample = nullptr;
};

TEST_F(FilesOfTheSampleMac, TheLargeOnesAreThoseOfTheirLengthAndWhatIsElsewhereAmongThem) {
    expectLens(FileFinder::largeAndOld(platform()), expected().large);
}

TEST_F(FilesOfTheSampleMac, CapturesAreThoseWithAToolsMarkWhateverTheirNames) {
    expectLens(FileFinder::collect(platform(), std::string(FileFinder::kScreenshotsQuery),
                                   FileFinder::kUserRoots, FileFinder::kNoLimit),
               expected().screenshots);
}

TEST_F(FilesOfTheSampleMac, InstallersAreMarkedByTheApplicationsThatAreThere) {
    std::set<std::string> installed;
    for (const auto& app : SamplePlatform(SampleMac::small()).expectedApplications()) {
        installed.insert(app.name);
    }
    expectLens(FileFinder::installers(platform(), installed), expected().installers);
}

// Whose text is read as it stands; other documents take more than that.
bool isReadAsItStands(const std::string& path) {
    static const std::set<std::string> kForms = {"txt", "csv", "rtf", "html", "png", "key", "dat"};
    return kForms.contains(path.substr(path.rfind('.') + 1));
}

TEST_F(FilesOfTheSampleMac, ASearchFindsNamesAndWhatIsWrittenInside) {
    for (auto [words, paths] : expected().searches) {
        std::erase_if(paths, [](const std::string& path) { return !isReadAsItStands(path); });
        if (words != "marmalade") {
            EXPECT_EQ(search(words), paths) << words;
        }
    }
}

TEST_F(FilesOfTheSampleMac, ASearchForAKindFindsThatKindAlone) {
    EXPECT_EQ(search("lamp", Kind::image), Texts{"/Users/alex/Pictures/which lamp.png"});
    EXPECT_THAT(search("lamp", Kind::pdf), IsEmpty());
}

TEST_F(FilesOfTheSampleMac, CopiesAreGroupedByWhatTheyHoldAndLookAlikesAreNot) {
    std::vector<ExpectedFiles::Group> groups;
    Bytes wasted = 0;
    for (const auto& group : DuplicateFinder::find(platform(), Priority::userInitiated)) {
        EXPECT_TRUE(std::ranges::is_sorted(group.files, std::ranges::greater(), &UserFile::lastUsedSortKey));
        groups.push_back({group.bytesEach, group.suggestedKeeper()->url.path(), pathsOf(group.files)});
        wasted += group.wastedBytes();
    }
    std::ranges::sort(groups);
    EXPECT_EQ(groups, expected().duplicates);
    Bytes expectedWaste = 0;
    for (const auto& group : expected().duplicates) {
        expectedWaste += group.bytesEach * static_cast<Bytes>(group.paths.size() - 1);
    }
    EXPECT_EQ(wasted, expectedWaste);
}

TEST_F(FilesOfTheSampleMac, ThePhotosLibraryTakesWhatItsFilesTake) {
    EXPECT_GT(expected().photosLibraryBytes, 0);
    EXPECT_EQ(FileFinder::photosLibraryBytes(platform()), expected().photosLibraryBytes);
}

} // namespace
} // namespace quillane
