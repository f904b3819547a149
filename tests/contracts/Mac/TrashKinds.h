#pragma once
#include "FoundationTrash.h"
#include "StandIns.h"
#include "TrashWorld.h"
#include <gtest/gtest.h>

namespace quillane {

// The system's moves are stood in for, within the world; it tells where they led without links.
struct MacTrash {
    static std::unique_ptr<Trash> make(const World& world) {
        const auto home = fs::canonical(world.root) / "home";
        StandIns::answerTrash([home](const FileURL& item) {
            const auto landed = FolderTrash("/", FileURL(home.string())).moveToTrash(item);
            if (landed.ok()) {
                return StandIns::Trashed{true, *landed, {}};
            }
            return StandIns::Trashed{
                false,
                {},
                {{"Cocoa", landed.error().code}, {"POSIX", landed.error().underlying.value_or(0)}}};
        });
        return std::make_unique<FoundationTrash>(FileURL((world.root / "home").string()));
    }
    static FileURL url(const World& world, const std::string& below) {
        return FileURL((world.root / below).string());
    }
    static fs::path host(const World&, const FileURL& url) { return {url.path()}; }
    static fs::path folder(const World& world) { return world.root / "home/.Trash"; }
    static constexpr bool kKeepsRecords = false;
    static constexpr bool kNeedsListing = false;
};

using TrashKinds = testing::Types<PlainTrash, MacTrash, WrappedTrash>;

} // namespace quillane
