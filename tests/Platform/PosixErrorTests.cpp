#include "PosixError.h"
#include <cerrno>
#include <gtest/gtest.h>

namespace quillane {
namespace {

struct Row {
    int errnoValue;
    int reading;
    int writing;
};

class PosixErrorTable : public testing::TestWithParam<Row> {};

INSTANTIATE_TEST_SUITE_P(Rows, PosixErrorTable,
                         testing::Values(Row{EPERM, 257, 513}, Row{EACCES, 257, 513}, Row{ENOENT, 260, 4},
                                         Row{ENAMETOOLONG, 258, 514}, Row{EEXIST, 256, 516},
                                         Row{ENOSPC, 256, 640}, Row{EDQUOT, 256, 640}, Row{EROFS, 256, 642},
                                         Row{EFBIG, 263, 512}, Row{ENOTDIR, 256, 512}, Row{EISDIR, 256, 512},
                                         Row{ELOOP, 256, 512}, Row{EBUSY, 256, 512}, Row{EXDEV, 256, 512},
                                         Row{EIO, 256, 512}, Row{EMFILE, 256, 512}, Row{EINVAL, 256, 512}));

TEST_P(PosixErrorTable, GivesThePlatformsCodeAndKeepsTheErrno) {
    const auto& row = GetParam();
    EXPECT_EQ(PosixError::reading(row.errnoValue), (PlatformError{row.reading, row.errnoValue}));
    EXPECT_EQ(PosixError::writing(row.errnoValue), (PlatformError{row.writing, row.errnoValue}));
}

} // namespace
} // namespace quillane
