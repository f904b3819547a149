#include "BundleIcon.h"
#include "PosixFileSystem.h"
#include "TemporaryFolder.h"
#include <gtest/gtest.h>

namespace quillane {
namespace {

class BundleIcon : public testing::Test {
  protected:
    TemporaryFolder m_volume;
    PosixFileSystem m_files{m_volume.path(), FileURL("/Users/alex")};
    const FileURL m_bundle{"/Applications/Editor.app"};

    void list(const std::string& entries) {
        m_volume.file("Applications/Editor.app/Contents/Info.plist",
                      "<plist version=\"1.0\"><dict>" + entries + "</dict></plist>");
    }
    void resource(const std::string& name, const std::string& content) {
        m_volume.file("Applications/Editor.app/Contents/Resources/" + name, content);
    }
    std::string icon() const { return bundleIcon(m_files, m_bundle).value_or("none"); }
};

TEST_F(BundleIcon, IsTheFileThatThePropertyListNames) {
    list("<key>CFBundleIconFile</key><string>Own.icns</string>");
    resource("Own.icns", "own");
    resource("AppIcon.icns", "other");
    EXPECT_EQ(icon(), "own");
}

TEST_F(BundleIcon, MayBeNamedWithoutItsExtension) {
    list("<key>CFBundleIconFile</key><string>Own</string>");
    resource("Own.icns", "own");
    EXPECT_EQ(icon(), "own");
}

TEST_F(BundleIcon, MayBeNamedAsAnIconOfTheCatalogue) {
    list("<key>CFBundleIconName</key><string>Own</string>");
    resource("Own.icns", "own");
    resource("Document.icns", "other");
    EXPECT_EQ(icon(), "own");
}

TEST_F(BundleIcon, IsTheOnlyContainerWhereNoneIsNamed) {
    list("<key>CFBundleName</key><string>Editor</string>");
    resource("something.ICNS", "only");
    resource("picture.png", "other");
    EXPECT_EQ(icon(), "only");
}

TEST_F(BundleIcon, AmongSeveralUnnamedOnesIsTheOneNamedLikeAnIcon) {
    list("<key>CFBundleIconFile</key><string>Gone</string>");
    resource("Document.icns", "document");
    resource("appicon.icns", "application");
    EXPECT_EQ(icon(), "application");
}

TEST_F(BundleIcon, IsNotGuessedAmongSeveral) {
    list("");
    resource("a.icns", "a");
    resource("b.icns", "b");
    EXPECT_EQ(icon(), "none");
}

TEST_F(BundleIcon, IsFoundWithoutAPropertyListThatCanBeRead) {
    resource("a.icns", "a");
    EXPECT_EQ(icon(), "a");
    m_volume.file("Applications/Editor.app/Contents/Info.plist", "damaged");
    EXPECT_EQ(icon(), "a");
}

TEST_F(BundleIcon, LiesInTheResourcesAndNowhereElse) {
    resource("a.icns", "a"); // two, so that neither is taken for want of a name
    resource("b.icns", "b");
    m_volume.file("Users/alex/secret.icns", "secret");
    m_volume.file("Applications/Editor.app/Contents/secret.icns", "secret");
    for (const char* name : {"/Users/alex/secret.icns", "../secret.icns", "../../../../Users/alex/secret",
                             "../secret", "..", ""}) {
        list("<key>CFBundleIconFile</key><string>" + std::string(name) + "</string>");
        EXPECT_EQ(icon(), "none") << name;
    }
}

TEST_F(BundleIcon, AValueThatIsNoTextCountsAsMissing) {
    list("<key>CFBundleIconFile</key><integer>1</integer>");
    EXPECT_EQ(icon(), "none");
}

TEST_F(BundleIcon, OfABundleThatIsGoneIsNone) {
    EXPECT_EQ(icon(), "none");
}

TEST_F(BundleIcon, IsReadUpToTheLimit) {
    list("<key>CFBundleIconFile</key><string>Own</string>");
    m_volume.sparse("Applications/Editor.app/Contents/Resources/Own.icns", kMostIconBytes + 1);
    EXPECT_EQ(icon().size(), kMostIconBytes);
}

} // namespace
} // namespace quillane
