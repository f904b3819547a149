#include "FakeMetadata.h"
#include "PosixFileSystem.h"
#include "RecentlyUsedFiles.h"
#include "TemporaryFolder.h"
#include <atomic>
#include <gtest/gtest.h>
#include <thread>

namespace quillane {
namespace {

struct Adapter {
    const char* name;
    std::unique_ptr<Metadata> (*make)();
};

// The desktop's register at a path of a volume that holds one, in which another file is.
std::unique_ptr<Metadata> overRegister(const std::string& path) {
    static const TemporaryFolder folder;
    static const PosixFileSystem files(folder.path(), FileURL("/"));
    DiskFolder(folder.path())
        .file("register", R"(<xbel><bookmark href="file:///other" visited="2026-01-02T03:04:05Z"/></xbel>)");
    return std::make_unique<RecentlyUsedFiles>(files, FileURL(path));
}
std::unique_ptr<Metadata> registerOfAnother() {
    return overRegister("/register");
}

class MetadataContract : public testing::TestWithParam<Adapter> {
  protected:
    std::unique_ptr<Metadata> m_metadata = GetParam().make();
};

TEST_P(MetadataContract, NothingIsKnownOfAnItemThatTheIndexHasNeverSeen) {
    EXPECT_EQ(m_metadata->lastUsed(FileURL("/no such folder/no such file")), std::nullopt);
    EXPECT_EQ(m_metadata->lastUsed(FileURL("/")), std::nullopt);
}

TEST_P(MetadataContract, APathThatIsNoTextIsAskedForLikeAnyOther) {
    EXPECT_EQ(m_metadata->lastUsed(FileURL("/\xFF\n")), std::nullopt);
}

TEST_P(MetadataContract, ManyThreadsAskAtOnce) {
    std::atomic<int> unknown = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] { unknown += m_metadata->lastUsed(FileURL("/nothing")) ? 0 : 1; });
    }
    for (auto& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(unknown, 4);
}

INSTANTIATE_TEST_SUITE_P(Adapters, MetadataContract,
                         testing::Values(Adapter{"RecentlyUsedFiles", &registerOfAnother},
                                         Adapter{"NoRegister", [] { return overRegister("/missing"); }},
                                         Adapter{"Fake",
                                                 [] { return std::unique_ptr<Metadata>(new FakeMetadata); }}),
                         [](const auto& adapter) { return adapter.param.name; });

TEST(FakeMetadata, KnowsWhatItWasTold) {
    FakeMetadata metadata;
    metadata.setLastUsed(FileURL("/a"), Date{1});
    metadata.setLastUsed(FileURL("/a"), Date{2});
    EXPECT_EQ(metadata.lastUsed(FileURL("/a")), Date{2});
    EXPECT_EQ(metadata.lastUsed(FileURL("/a/b")), std::nullopt);
}

} // namespace
} // namespace quillane
