#pragma once
#include "FreedesktopTrash.h"
#include "TrashWorld.h"
#include <gtest/gtest.h>

namespace quillane {

struct DesktopTrash {
    static std::unique_ptr<Trash> make(const World& world) {
        return std::make_unique<FreedesktopTrash>(
            FreedesktopTrash::Places{(world.root / "home/.local/share").string(), ::getuid()}, world.clock);
    }
    static FileURL url(const World& world, const std::string& below) {
        return FileURL((world.root / below).string());
    }
    static fs::path host(const World&, const FileURL& url) { return {url.path()}; }
    static fs::path folder(const World& world) { return world.root / "home/.local/share/Trash/files"; }
    static constexpr bool kKeepsRecords = true;
    static constexpr bool kNeedsListing = true;
};

using TrashKinds = testing::Types<PlainTrash, DesktopTrash, WrappedTrash>;

} // namespace quillane
