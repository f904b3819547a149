#include "FakeMetadata.h"
#include "FakeWorkspace.h"
#include "FaultFileSystem.h"
#include "MachOInspector.h"
#include "ManualClock.h"
#include "PosixFileSystem.h"
#include "RemovalFakes.h"
#include "ScriptedCommandRunner.h"
#include "StepTaskRunner.h"
#include "TemporaryFolder.h"
#include <cstdint>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

namespace quillane {
namespace {

constexpr std::uint32_t kI386 = 7;
constexpr std::uint32_t kX86_64 = 0x01000007;
constexpr std::uint32_t kArm = 12;
constexpr std::uint32_t kArm64 = 0x0100000C;
constexpr std::uint32_t kPowerPC = 18;
constexpr std::uint32_t kPowerPC64 = 0x01000012;

constexpr std::uint32_t kFat = 0xCAFEBABE;
constexpr std::uint32_t kFat64 = 0xCAFEBABF;

using Head = std::vector<unsigned char>;

void addBigEndian(Head& head, std::uint32_t number) {
    for (int shift = 24; shift >= 0; shift -= 8) {
        head.push_back(static_cast<unsigned char>(number >> shift & 0xFFU));
    }
}

void addLittleEndian(Head& head, std::uint32_t number) {
    for (int shift = 0; shift <= 24; shift += 8) {
        head.push_back(static_cast<unsigned char>(number >> shift & 0xFFU));
    }
}

// Records of the right length, whose other fields look like the types of other processors so that a wrong
// step is seen.
Head fat(std::uint32_t magic, std::uint32_t count, std::initializer_list<std::uint32_t> types) {
    Head head;
    addBigEndian(head, magic);
    addBigEndian(head, count);
    for (const auto type : types) {
        addBigEndian(head, type);
        for (std::size_t field = 1; field < (magic == kFat64 ? 8U : 5U); ++field) {
            addBigEndian(head, kPowerPC);
        }
    }
    return head;
}

Head fat(std::initializer_list<std::uint32_t> types) {
    return fat(kFat, static_cast<std::uint32_t>(types.size()), types);
}

// A Mach-O file with more behind its first fields.
Head thin(std::uint32_t magic, std::uint32_t type) {
    Head head;
    addLittleEndian(head, magic);
    addLittleEndian(head, type);
    head.resize(64, 0);
    return head;
}

Head thinBigEndian(std::uint32_t magic, std::uint32_t type) {
    Head head;
    addBigEndian(head, magic);
    addBigEndian(head, type);
    head.resize(64, 0);
    return head;
}

Architecture inspected(const Head& head) {
    return MachOInspector::architectureOfHead(head);
}

Head cut(Head head, std::size_t length) {
    head.resize(length);
    head.shrink_to_fit(); // so that a read beyond the end is seen
    return head;
}

TEST(MachOInspector, TheClassificationTable) {
    struct Row {
        Head head;
        Architecture expected;
    };
    const std::vector<Row> rows = {
        {fat({kX86_64, kArm64}), Architecture::universal},
        {fat({kArm64, kX86_64, kI386, kPowerPC}), Architecture::universal},
        {fat({kX86_64}), Architecture::intel},
        {fat({kX86_64, kI386}), Architecture::intel},
        {fat({kX86_64, kPowerPC}), Architecture::intel},
        {fat({kArm64}), Architecture::appleSilicon},
        {fat({kArm64, kArm64}), Architecture::appleSilicon}, // arm64e is of the same type
        {fat({kArm64, kI386}), Architecture::appleSilicon},
        {fat({kArm64, kPowerPC64}), Architecture::appleSilicon},
        {fat({kI386}), Architecture::intel32},
        {fat({kI386, kPowerPC}), Architecture::intel32},
        {fat({kI386, kPowerPC64}), Architecture::intel32},
        {fat({kPowerPC}), Architecture::powerPC},
        {fat({kPowerPC64}), Architecture::powerPC},
        {fat({kPowerPC, kPowerPC64}), Architecture::powerPC},
        {fat({kArm, kPowerPC64}), Architecture::powerPC},
        {fat({kArm}), Architecture::unknown},
        {fat({0xFFFFFFFF, 0}), Architecture::unknown},
    };
    for (std::size_t i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(inspected(rows[i].head), rows[i].expected) << "row " << i;
    }
}

TEST(MachOInspector, APlainFileOfEachMagicGivesItsType) {
    EXPECT_EQ(inspected(thin(0xFEEDFACF, kArm64)), Architecture::appleSilicon);
    EXPECT_EQ(inspected(thin(0xFEEDFACF, kX86_64)), Architecture::intel);
    EXPECT_EQ(inspected(thin(0xFEEDFACE, kI386)), Architecture::intel32);
    EXPECT_EQ(inspected(thinBigEndian(0xFEEDFACE, kPowerPC)), Architecture::powerPC);
    EXPECT_EQ(inspected(thinBigEndian(0xFEEDFACF, kPowerPC64)), Architecture::powerPC);
}

TEST(MachOInspector, APlainFileIsReadInItsOwnByteOrder) {
    Head mixed = thin(0xFEEDFACF, 0);
    mixed[4] = 0x01; // the type of x86_64 in the other order
    mixed[7] = 0x07;
    EXPECT_EQ(inspected(mixed), Architecture::unknown);
}

TEST(MachOInspector, SevenBytesWithAValidMagicAreUnknown) {
    EXPECT_EQ(inspected(cut(thin(0xFEEDFACF, kArm64), 7)), Architecture::unknown);
    EXPECT_EQ(inspected(cut(fat({kArm64}), 7)), Architecture::unknown);
    EXPECT_EQ(inspected(cut(thin(0xFEEDFACF, kArm64), 8)), Architecture::appleSilicon);
}

TEST(MachOInspector, NoBytesAreUnknown) {
    EXPECT_EQ(inspected({}), Architecture::unknown);
}

TEST(MachOInspector, MoreThan63RecordsAreUnknownWhateverFollows) {
    EXPECT_EQ(inspected(fat(kFat, 64, {kArm64, kX86_64})), Architecture::unknown);
    EXPECT_EQ(inspected(fat(kFat64, 64, {kArm64, kX86_64})), Architecture::unknown);
    EXPECT_EQ(inspected(fat(kFat, 0xFFFFFFFF, {kArm64})), Architecture::unknown);
    EXPECT_EQ(inspected(fat(kFat, 63, {kArm64, kX86_64})), Architecture::universal);
}

TEST(MachOInspector, NoRecordsAreUnknownWhateverFollows) {
    EXPECT_EQ(inspected(fat(kFat, 0, {kArm64})), Architecture::unknown);
}

TEST(MachOInspector, RecordsBeyondTheDeclaredOnesDoNotCount) {
    EXPECT_EQ(inspected(fat(kFat, 1, {kArm64, kX86_64})), Architecture::appleSilicon);
}

TEST(MachOInspector, ATableCutAfterItsFirstRecordGivesThatOneAlone) {
    const auto whole = fat({kArm64, kX86_64, kI386});
    EXPECT_EQ(inspected(cut(whole, 28)), Architecture::appleSilicon);
    EXPECT_EQ(inspected(cut(whole, 31)), Architecture::appleSilicon); // three bytes of the second type
    EXPECT_EQ(inspected(cut(whole, 32)), Architecture::universal);    // the type alone is enough
    EXPECT_EQ(inspected(cut(whole, 11)), Architecture::unknown);
    EXPECT_EQ(inspected(cut(whole, 12)), Architecture::appleSilicon);
}

TEST(MachOInspector, RecordsWith64BitOffsetsAre32BytesLong) {
    EXPECT_EQ(inspected(fat(kFat64, 2, {kArm64, kX86_64})), Architecture::universal);
    const auto whole = fat(kFat64, 2, {kArm64, kX86_64});
    EXPECT_EQ(inspected(cut(whole, 43)), Architecture::appleSilicon);
    EXPECT_EQ(inspected(cut(whole, 44)), Architecture::universal);
}

TEST(MachOInspector, TheWholeTableOf63WideRecordsIsRead) {
    auto head = fat(kFat64, 63, {});
    head.resize(8 + 63 * 32, 0);
    head[8 + 62 * 32] = 0x01; // x86_64 in the last record
    head[8 + 62 * 32 + 3] = 0x07;
    ASSERT_LE(head.size(), MachOInspector::kHeadBytes);
    EXPECT_EQ(inspected(head), Architecture::intel);
}

TEST(MachOInspector, OtherFilesAreUnknown) {
    const std::string script = "#!/bin/sh\nexec /usr/bin/true\n";
    EXPECT_EQ(inspected(Head(script.begin(), script.end())), Architecture::unknown);
    EXPECT_EQ(inspected({0x7F, 'E', 'L', 'F', 7, 0, 0, 1, 7, 0, 0, 1}), Architecture::unknown);
    // A fat magic in the wrong byte order is none.
    EXPECT_EQ(inspected(thin(kFat, kArm64)), Architecture::unknown);
}

// A class file begins with the magic of fat files, its version where they have their number of records.
Head javaClass(std::uint32_t version, std::uint32_t whereTheSecondTypeWouldBe) {
    auto head = fat(kFat, version, {0x001D0A00, whereTheSecondTypeWouldBe});
    head.resize(300, 0x2A);
    return head;
}

TEST(MachOInspector, MostJavaClassesHoldNoProcessorWhereATypeWouldBe) {
    for (const std::uint32_t version : {45U, 52U, 63U}) {
        EXPECT_EQ(inspected(javaClass(version, 0x06000F09)), Architecture::unknown) << version;
    }
}

TEST(MachOInspector, AJavaClassUpToVersion63PassesAsFatWhereItsConstantsReadAsAProcessor) {
    for (const std::uint32_t version : {45U, 52U, 63U}) {
        EXPECT_EQ(inspected(javaClass(version, kI386)), Architecture::intel32) << version;
        EXPECT_EQ(inspected(javaClass(version, kPowerPC)), Architecture::powerPC) << version;
    }
    EXPECT_EQ(inspected(javaClass(64, kI386)), Architecture::unknown); // Java 20 and later
}

TEST(MachOInspector, EveryLengthOfEveryHeadIsReadWithinItsBounds) {
    for (const auto& whole : {fat(kFat, 63, {kArm64, kX86_64}), fat(kFat64, 63, {kX86_64, kI386}),
                              thin(0xFEEDFACF, kArm64), thinBigEndian(0xFEEDFACE, kPowerPC)}) {
        auto padded = whole;
        padded.resize(MachOInspector::kHeadBytes, 0);
        const auto final = inspected(padded);
        for (std::size_t length = 0; length <= padded.size(); ++length) {
            const auto answer = inspected(cut(padded, length));
            if (length < 8) {
                EXPECT_EQ(answer, Architecture::unknown) << length;
            } else if (length >= whole.size()) {
                EXPECT_EQ(answer, final) << length;
            }
        }
    }
}

// Notes what is read of a real file.
class RecordingFiles final : public ForwardingFileSystem {
  public:
    using ForwardingFileSystem::ForwardingFileSystem;

    Result<std::string> read(const FileURL& url, std::size_t limit) const override {
        m_reads.emplace_back(url.path(), limit);
        return ForwardingFileSystem::read(url, limit);
    }
    const std::vector<std::pair<std::string, std::size_t>>& reads() const { return m_reads; }

  private:
    mutable std::vector<std::pair<std::string, std::size_t>> m_reads;
};

// Files on the disk, and the rest of a platform, of which nothing is asked.
class MachOInspectorFiles : public testing::Test {
  protected:
    TemporaryFolder disk;
    PosixFileSystem volume{disk.path(), FileURL("/Users/alex")};
    FaultFileSystem faults{volume};
    RecordingFiles files{faults};
    ScriptedCommandRunner commands;
    FakeMetadata metadata;
    FakeWorkspace workspace;
    StepTaskRunner tasks;
    ManualClock clock{tasks};
    RemovalFakes fakes;
    const Platform platform{files,     commands,    metadata,      clock,         tasks,
                            workspace, fakes.trash, fakes.running, fakes.defaults};

    void write(const Head& head) {
        disk.file("tool", std::string_view(reinterpret_cast<const char*>(head.data()), head.size()));
    }
    Architecture inspectedTool() const { return MachOInspector::architecture(platform, FileURL("/tool")); }
};

TEST_F(MachOInspectorFiles, AnExecutableIsToldFromOneReadOfItsHead) {
    auto head = fat({kArm64, kX86_64});
    head.resize(100'000, 0);
    write(head);
    EXPECT_EQ(inspectedTool(), Architecture::universal);
    EXPECT_THAT(files.reads(), testing::ElementsAre(testing::Pair("/tool", 4096U)));
}

TEST_F(MachOInspectorFiles, AMissingFileIsUnknown) {
    EXPECT_EQ(inspectedTool(), Architecture::unknown);
}

TEST_F(MachOInspectorFiles, AFileThatCantBeReadIsUnknown) {
    write(thin(0xFEEDFACF, kArm64));
    ASSERT_EQ(inspectedTool(), Architecture::appleSilicon);
    faults.fail(FileURL("/tool"), {ErrorCode::kReadNoPermission, std::nullopt});
    EXPECT_EQ(inspectedTool(), Architecture::unknown);
}

TEST_F(MachOInspectorFiles, AnEmptyFileIsUnknown) {
    write({});
    EXPECT_EQ(inspectedTool(), Architecture::unknown);
}

TEST_F(MachOInspectorFiles, AFolderIsUnknown) {
    disk.folder("tool");
    EXPECT_EQ(inspectedTool(), Architecture::unknown);
}

} // namespace
} // namespace quillane
