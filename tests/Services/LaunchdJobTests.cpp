#include "LaunchdJob.h"
#include "SamplePlatform.h"
#include <gtest/gtest.h>

namespace quillane {
namespace {

const std::string kList = "Library/LaunchAgents/com.example.tool.plist";
const FileURL kListURL("/Users/alex/" + kList);

std::string xml(const std::string& dictionary) {
    return R"(<?xml version="1.0" encoding="UTF-8"?><plist version="1.0"><dict>)" + dictionary +
           "</dict></plist>";
}
std::string program(const std::string& path) {
    return "<key>Program</key><string>" + path + "</string>";
}
std::string arguments(const std::string& values) {
    return "<key>ProgramArguments</key><array>" + values + "</array>";
}

// A Mac with a program at /opt/tool, one of the same path in the home folder, a link to the first at /opt/link and
// one to nothing.
bool isAlive(const std::string& content, const std::string& list = kList) {
    SampleMac mac;
    mac.file("/opt/tool", "x")
        .file("opt/tool", "x")
        .link("/opt/link", "/opt/tool")
        .link("/opt/dangling", "/opt/gone")
        .file(list, content);
    const SamplePlatform sample(mac);
    return LaunchdJob::hasItsProgram(sample.platform, FileURL("/Users/alex/" + list));
}

TEST(LaunchdJob, AProgramThatIsThereIsFound) {
    EXPECT_TRUE(isAlive(xml(program("/opt/tool"))));
    EXPECT_FALSE(isAlive(xml(program("/opt/gone"))));
}

TEST(LaunchdJob, WithoutAProgramTheFirstArgumentIsIt) {
    EXPECT_TRUE(isAlive(xml(arguments("<string>/opt/tool</string><string>/opt/gone</string>"))));
    EXPECT_FALSE(isAlive(xml(arguments("<string>/opt/gone</string><string>/opt/tool</string>"))));
    EXPECT_TRUE(isAlive(xml(arguments("<string>/opt/tool</string><integer>1</integer>"))))
        << "whatever the others are";
}

TEST(LaunchdJob, TheProgramGoesBeforeTheFirstArgument) {
    EXPECT_FALSE(isAlive(xml(program("/opt/gone") + arguments("<string>/opt/tool</string>"))));
    EXPECT_TRUE(isAlive(xml(program("/opt/tool") + arguments("<string>a name of its own</string>"))));
    EXPECT_TRUE(
        isAlive(xml("<key>Program</key><integer>1</integer>" + arguments("<string>/opt/tool</string>"))))
        << "what is no text names nothing";
}

TEST(LaunchdJob, LinksToTheProgramAreFollowed) {
    EXPECT_TRUE(isAlive(xml(program("/opt/link"))));
    EXPECT_FALSE(isAlive(xml(program("/opt/dangling"))));
}

TEST(LaunchdJob, AListThatIsALinkIsReadWhereItPoints) {
    SampleMac mac;
    mac.file("/opt/tool", "x")
        .file("jobs/a.plist", xml(program("/opt/tool")))
        .link(kList, "../../jobs/a.plist");
    const SamplePlatform sample(mac);
    EXPECT_TRUE(LaunchdJob::hasItsProgram(sample.platform, kListURL));
}

TEST(LaunchdJob, ANameWithoutAPathIsLookedForWhereLaunchdLooks) {
    for (const auto& [folder, isLookedInto] :
         {std::pair("/usr/bin", true), std::pair("/bin", true), std::pair("/usr/sbin", true),
          std::pair("/sbin", true), std::pair("/usr/local/bin", false), std::pair("/opt", false)}) {
        SampleMac mac;
        mac.file(std::string(folder) + "/searched", "x")
            .file(kList, xml(arguments("<string>searched</string>")));
        const SamplePlatform sample(mac);
        EXPECT_EQ(LaunchdJob::hasItsProgram(sample.platform, kListURL), isLookedInto) << folder;
    }
}

TEST(LaunchdJob, WhatLaunchdCannotResolveNamesNoProgram) {
    for (const std::string path :
         {"~/opt/tool", "~alex/opt/tool", "opt/tool", "./opt/tool", "../opt/tool", ""}) {
        EXPECT_FALSE(isAlive(xml(program(path)))) << path;
    }
}

TEST(LaunchdJob, AListThatNamesNoProgramHasNone) {
    EXPECT_FALSE(isAlive(xml("<key>Label</key><string>com.example.tool</string>")));
    EXPECT_FALSE(isAlive(xml(arguments(""))));
    EXPECT_FALSE(isAlive(xml(arguments("<integer>1</integer>"))));
    EXPECT_FALSE(isAlive(xml("<key>ProgramArguments</key><string>/opt/tool</string>")));
    EXPECT_FALSE(isAlive(xml("<key>BundleProgram</key><string>/opt/tool</string>")))
        << "counts inside a bundle only";
}

TEST(LaunchdJob, WhatIsNoPropertyListHasNoProgram) {
    for (const std::string content :
         {"", "garbage", "<plist><array><string>/opt/tool</string></array></plist>",
          "<plist><dict><key>Program</key><string>/opt/tool</string>"}) {
        EXPECT_FALSE(isAlive(content)) << content;
    }
}

TEST(LaunchdJob, AListThatIsTooLargeIsNotReadWhole) {
    const auto whole = xml(program("/opt/tool"));
    EXPECT_TRUE(isAlive(whole + std::string(LaunchdJob::kLargestList - whole.size(), '\n')));
    EXPECT_FALSE(isAlive(whole + std::string(LaunchdJob::kLargestList - whole.size() + 1, '\n')));
}

TEST(LaunchdJob, OnlyANameThatLaunchdLoadsIsAJob) {
    EXPECT_FALSE(isAlive(xml(program("/opt/tool")), "Library/LaunchAgents/com.example.tool.plist.off"));
    EXPECT_FALSE(isAlive(xml(program("/opt/tool")), "Library/LaunchAgents/com.example.tool"));
}

TEST(LaunchdJob, AFolderOrAListThatCannotBeReadHasNoProgram) {
    SampleMac mac;
    mac.file("/opt/tool", "x")
        .file(kList, xml(program("/opt/tool")))
        .folder("Library/LaunchAgents/com.example.folder.plist");
    SamplePlatform sample(mac);
    EXPECT_FALSE(LaunchdJob::hasItsProgram(
        sample.platform, FileURL("/Users/alex/Library/LaunchAgents/com.example.folder.plist")));
    sample.files.fail(kListURL, {ErrorCode::kReadNoPermission, EACCES});
    EXPECT_FALSE(LaunchdJob::hasItsProgram(sample.platform, kListURL));
}

TEST(LaunchdJob, ATextWithAZeroIsNoPath) {
    EXPECT_FALSE(isAlive(R"({ "Program" = "/opt/tool\000"; })"));
    EXPECT_TRUE(isAlive(R"({ "Program" = "/opt/tool"; })"));
}

// The description of a list, which has to be one.
class LaunchdJobDescription : public testing::Test {
  protected:
    static std::optional<LaunchdJob::Description> read(const std::string& content) {
        SampleMac mac;
        mac.file(kList, content);
        const SamplePlatform sample(mac);
        return LaunchdJob::read(sample.platform, kListURL);
    }
    static LaunchdJob::Description described(const std::string& keys) { return read(xml(keys)).value(); }
    static std::string keepAlive(const std::string& value) { return "<key>KeepAlive</key>" + value; }
    static std::string interval(const std::string& value) { return "<key>StartInterval</key>" + value; }
};

TEST_F(LaunchdJobDescription, AnEmptyListSaysNothing) {
    const auto job = described("");
    EXPECT_EQ(job.label, std::nullopt);
    EXPECT_EQ(job.program, std::nullopt);
    EXPECT_EQ(job.firstArgument, std::nullopt);
    EXPECT_FALSE(job.runAtLoad);
    EXPECT_FALSE(job.keepAlive);
    EXPECT_EQ(job.interval, std::nullopt);
}

TEST_F(LaunchdJobDescription, ThreeFormsOfAListSayTheSame) {
    const auto list =
        Plist::dictionary({{"Label", "com.example.tool"}, {"RunAtLoad", true}, {"StartInterval", 60}});
    for (const auto& content : {xmlPropertyList(list), binaryPropertyList(list)}) {
        const auto job = read(content);
        ASSERT_TRUE(job.has_value());
        EXPECT_EQ(job->label, "com.example.tool");
        EXPECT_TRUE(job->runAtLoad);
        EXPECT_EQ(job->interval, 60);
    }
    const auto job = read("{ Label = com.example.tool; RunAtLoad = 1; StartInterval = 60; }");
    ASSERT_TRUE(job.has_value());
    EXPECT_EQ(job->label, "com.example.tool");
    EXPECT_FALSE(job->runAtLoad) << "the old form knows texts alone";
    EXPECT_EQ(job->interval, std::nullopt);
}

TEST_F(LaunchdJobDescription, ALabelThatIsNoTextIsAbsent) {
    EXPECT_EQ(described("<key>Label</key><integer>1</integer>").label, std::nullopt);
    EXPECT_EQ(described("<key>Label</key><string></string>").label, "");
}

TEST_F(LaunchdJobDescription, TheFirstArgumentIsTheProgramOnlyAmongTexts) {
    const auto texts = described(arguments("<string>/opt/tool</string><string>-v</string>"));
    EXPECT_EQ(texts.program, "/opt/tool");
    const auto mixed = described(arguments("<string>/opt/tool</string><integer>1</integer>"));
    EXPECT_EQ(mixed.program, std::nullopt);
    EXPECT_EQ(mixed.firstArgument, "/opt/tool");
    EXPECT_EQ(described(arguments("")).program, std::nullopt);
    EXPECT_EQ(described("<key>ProgramArguments</key><string>/opt/tool</string>").program, std::nullopt);
}

TEST_F(LaunchdJobDescription, AProgramIsKeptAsItIsWritten) {
    for (const std::string path : {"~/bin/tool", "tool", "../tool", "", "/opt//tool/"}) {
        EXPECT_EQ(described(program(path)).program, path);
    }
    EXPECT_EQ(described(program("/a") + arguments("<string>/b</string>")).program, "/a");
    EXPECT_EQ(described("<key>Program</key><true/>" + arguments("<string>/b</string>")).program, "/b");
}

TEST_F(LaunchdJobDescription, WhatKeepsAJobAliveIsATruthValueOrAnyConditions) {
    EXPECT_TRUE(described(keepAlive("<true/>")).keepAlive);
    EXPECT_FALSE(described(keepAlive("<false/>")).keepAlive);
    EXPECT_TRUE(described(keepAlive("<dict/>")).keepAlive);
    EXPECT_TRUE(described(keepAlive("<dict><key>SuccessfulExit</key><false/></dict>")).keepAlive);
    EXPECT_TRUE(described(keepAlive("<integer>1</integer>")).keepAlive);
    EXPECT_FALSE(described(keepAlive("<integer>0</integer>")).keepAlive);
    EXPECT_FALSE(described(keepAlive("<integer>2</integer>")).keepAlive);
    EXPECT_FALSE(described(keepAlive("<string>true</string>")).keepAlive);
    EXPECT_FALSE(described(keepAlive("<array><true/></array>")).keepAlive);
}

TEST_F(LaunchdJobDescription, RunningAtLoadIsATruthValue) {
    EXPECT_TRUE(described("<key>RunAtLoad</key><true/>").runAtLoad);
    EXPECT_FALSE(described("<key>RunAtLoad</key><false/>").runAtLoad);
    EXPECT_FALSE(described("<key>RunAtLoad</key><dict/>").runAtLoad);
    EXPECT_FALSE(described("<key>RunAtLoad</key><string>YES</string>").runAtLoad);
}

TEST_F(LaunchdJobDescription, AnIntervalIsAWholeNumber) {
    EXPECT_EQ(described(interval("<integer>3600</integer>")).interval, 3'600);
    EXPECT_EQ(described(interval("<real>60.0</real>")).interval, 60);
    EXPECT_EQ(described(interval("<real>60.5</real>")).interval, std::nullopt);
    EXPECT_EQ(described(interval("<string>60</string>")).interval, std::nullopt);
    EXPECT_EQ(described(interval("<integer>-5</integer>")).interval, -5);
}

TEST_F(LaunchdJobDescription, WhatIsNoListOfAJobIsNotRead) {
    for (const std::string content :
         {"", "garbage", "<plist><array><string>a</string></array></plist>", "<plist><dict><key>", "[1]"}) {
        EXPECT_FALSE(read(content).has_value()) << content;
    }
}

} // namespace
} // namespace quillane
