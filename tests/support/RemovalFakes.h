#pragma once
#include "FakeRunningApplications.h"
#include "MemoryDefaults.h"
#include "Trash.h"

namespace quillane {

// A volume without a Trash: nothing can be moved.
class NoTrash final : public Trash {
  public:
    std::optional<FileURL> location() const override { return std::nullopt; }
    Result<std::vector<FileURL>> items() const override { return std::vector<FileURL>(); }
    Result<std::optional<FileURL>> moveToTrash(const FileURL&) override { return kUnsupported; }
    Result<bool> cameFrom(const FileURL&, const FileURL&) const override { return kUnsupported; }
    Result<> moveOut(const FileURL&, const FileURL&) override { return kUnsupported; }
    Result<> deleteItem(const FileURL&) override { return kUnsupported; }

  private:
    static constexpr PlatformError kUnsupported{ErrorCode::kFeatureUnsupported, std::nullopt};
};

// The ports of a platform on which a test removes nothing.
struct RemovalFakes {
    NoTrash trash;
    FakeRunningApplications running;
    MemoryDefaults defaults;
};

} // namespace quillane
