#include "StartupOwners.h"
#include <gtest/gtest.h>

namespace quillane {
namespace {

using Claim = StartupOwners::Claim;

InstalledApp app(const std::string& path, const std::optional<std::string>& identifier = std::nullopt) {
    InstalledApp app;
    app.url = FileURL(path);
    app.name = FileURL(path).deletingPathExtension().lastPathComponent();
    app.bundleIdentifier = identifier;
    return app;
}

// Answers questions about these applications, by name; "" where there is none.
class Judge {
  public:
    explicit Judge(std::vector<InstalledApp> apps)
        : m_apps(std::move(apps)) {}
    std::string owner(const std::string& label,
                      const std::optional<std::string>& program = std::nullopt) const {
        return nameOf(m_owners.owner(label, program));
    }
    std::string vendor(const std::string& label) const { return nameOf(m_owners.vendorOwner(label)); }
    Claim claim(const std::string& label, const std::optional<std::string>& program = std::nullopt) const {
        return m_owners.ownerName(label, program);
    }

  private:
    static std::string nameOf(const InstalledApp* app) { return app == nullptr ? "" : app->name; }

    std::vector<InstalledApp> m_apps;
    StartupOwners m_owners{m_apps, FileURL("/Users/alex")};
};

TEST(StartupOwners, AToolInABundleIsThatBundlesWhateverItsLabelSays) {
    const Judge judge({app("/Applications/Other.app", "com.other"), app("/Applications/Tool.app")});
    EXPECT_EQ(judge.owner("com.other", "/Applications/Tool.app/Contents/MacOS/agent"), "Tool");
}

TEST(StartupOwners, APathThatOnlyBeginsLikeABundlesIsNotInIt) {
    const Judge judge({app("/Applications/Tool.app")});
    EXPECT_EQ(judge.owner("x", "/Applications/Tool.app2/agent"), "");
    EXPECT_EQ(judge.owner("x", "/Applications/Tool.app"), "") << "the bundle is not in itself";
    EXPECT_EQ(judge.owner("x", "/opt/Applications/Tool.app/agent"), "");
}

TEST(StartupOwners, ATildeBeforeAProgramIsTheHomeFolder) {
    const Judge judge({app("/Users/alex/Applications/Tool.app")});
    EXPECT_EQ(judge.owner("x", "~/Applications/Tool.app/Contents/MacOS/agent"), "Tool");
}

TEST(StartupOwners, OfNestedBundlesTheFirstInTheListOwns) {
    const std::string inner = "/Applications/Outer.app/Contents/Inner.app";
    const auto program = inner + "/agent";
    EXPECT_EQ(Judge({app("/Applications/Outer.app"), app(inner)}).owner("x", program), "Outer");
    EXPECT_EQ(Judge({app(inner), app("/Applications/Outer.app")}).owner("x", program), "Inner");
}

TEST(StartupOwners, ALabelThatIsAnIdentifierOrExtendsItIsThatApplications) {
    const Judge judge({app("/A/NoIdentifier.app"), app("/A/Tool.app", "com.example.tool")});
    EXPECT_EQ(judge.owner("com.example.tool"), "Tool");
    EXPECT_EQ(judge.owner("com.example.tool.agent"), "Tool");
    EXPECT_EQ(judge.owner("com.example.toolbox"), "");
    EXPECT_EQ(judge.owner("com.example"), "");
    EXPECT_EQ(judge.owner("org.com.example.tool"), "");
    EXPECT_EQ(judge.owner("com.example.tool", "/elsewhere/agent"), "Tool");
}

TEST(StartupOwners, OfSeveralIdentifiersTheFirstInTheListOwns) {
    const Judge judge({app("/A/One.app", "com.example"), app("/A/Two.app", "com.example.tool")});
    EXPECT_EQ(judge.owner("com.example.tool.agent"), "One");
}

TEST(StartupOwners, CaseIsIgnoredInEveryTestOfALabel) {
    const Judge judge({app("/A/Tool.app", "Com.Example.TOOL")});
    EXPECT_EQ(judge.owner("com.example.tool"), "Tool");
    EXPECT_EQ(judge.owner("COM.EXAMPLE.tool.Agent"), "Tool");
    EXPECT_EQ(judge.vendor("COM.example.Other"), "Tool");
    EXPECT_EQ(judge.claim("COM.Apple.Thing"), (Claim{"macOS", true}));
}

TEST(StartupOwners, CaseCountsInThePathOfAProgram) {
    EXPECT_EQ(Judge({app("/Applications/Tool.app")}).owner("x", "/applications/tool.app/agent"), "");
}

TEST(StartupOwners, TheFirstTwoPartsAreTheVendor) {
    const Judge judge({app("/A/Tool.app", "com.example.tool"), app("/A/Late.app", "com.example.late")});
    EXPECT_EQ(judge.vendor("com.example.other.part"), "Tool") << "the first match alone counts";
    EXPECT_EQ(judge.vendor("com.example"), "Tool");
    EXPECT_EQ(judge.vendor("com..example.other"), "Tool") << "empty parts don't count";
    EXPECT_EQ(judge.vendor("com.examples.other"), "");
    EXPECT_EQ(judge.vendor("com.exampl.other"), "");
}

TEST(StartupOwners, AnIdentifierOfTwoPartsIsNoVendors) {
    EXPECT_EQ(Judge({app("/A/Tool.app", "com.example")}).vendor("com.example.other"), "");
}

TEST(StartupOwners, ALabelOfOnePieceIsNeverMatchedToAVendor) {
    const Judge judge({app("/A/Tool.app", "com.example.tool"), app("/A/Odd.app", "tool.x")});
    for (const std::string label : {"tool", "com", "com.", ".com.", "", "."}) {
        EXPECT_EQ(judge.vendor(label), "") << label;
        EXPECT_EQ(judge.claim(label), Claim{}) << label;
    }
}

TEST(StartupOwners, TheNameOfAnApplicationGoesBeforeItsVendorAndBothBeforeTheSystem) {
    const Judge judge({app("/A/Mine.app", "com.apple.mine"), app("/A/Tool.app", "com.example.tool")});
    EXPECT_EQ(judge.claim("com.example.tool.agent"), (Claim{"Tool", true}));
    EXPECT_EQ(judge.claim("com.example.agent"), (Claim{"Tool (same vendor)", true}));
    EXPECT_EQ(judge.claim("com.apple.other"), (Claim{"Mine (same vendor)", true}));
    EXPECT_EQ(judge.claim("com.apple.other", "/A/Tool.app/agent"), (Claim{"Tool", true}));
}

TEST(StartupOwners, WhatTheSystemsVendorHasLabelledIsTheSystems) {
    const Judge judge({});
    EXPECT_EQ(judge.claim("com.apple.thing"), (Claim{"macOS", true}));
    EXPECT_EQ(judge.claim("com.apple."), (Claim{"macOS", true}));
    EXPECT_EQ(judge.claim("com.apple"), Claim{});
    EXPECT_EQ(judge.claim("com.applesauce.thing"), Claim{});
}

TEST(StartupOwners, WhatNobodyOwnsIsNotClaimed) {
    EXPECT_EQ(Judge({app("/A/Tool.app", "com.example.tool")}).claim("org.gone.agent", "/opt/agent"), Claim{});
}

TEST(StartupOwners, AnApplicationWithoutAnIdentifierOwnsWhatLiesInItAlone) {
    const Judge judge({app("/A/Tool.app"), app("/A/Vacant.app", "")});
    EXPECT_EQ(judge.owner("Tool"), "");
    EXPECT_EQ(judge.owner("com.example"), "");
}

} // namespace
} // namespace quillane
