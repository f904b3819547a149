#pragma once
#include "FileDefaults.h"
#include "MemoryDefaults.h"
#include "TemporaryFolder.h"
#include <gtest/gtest.h>
#include <memory>

namespace quillane {

struct MemoryKind {
    static std::unique_ptr<Defaults> make(const TemporaryFolder&) {
        return std::make_unique<MemoryDefaults>();
    }
};

struct FileKind {
    static std::unique_ptr<Defaults> make(const TemporaryFolder& folder) {
        return std::make_unique<FileDefaults>(folder.path() + "/config/quillane/defaults.plist");
    }
};

using DefaultsKinds = testing::Types<MemoryKind, FileKind>;

} // namespace quillane
