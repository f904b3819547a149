#pragma once
#include "Clock.h"
#include "FaultTrash.h"
#include "FolderTrash.h"
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <unistd.h>

// Where the suite over Trashes works, and the Trashes that every system has.
namespace quillane {

namespace fs = std::filesystem;

class FixedClock final : public Clock {
  public:
    Date now() const override { return m_now; }
    void setNow(Date now) { m_now = now; }
    Calendar calendar() const override { return m_calendar; }
    Instant instant() const override { return {}; }
    TimerId callAt(Instant, Job) override { return 0; }
    void cancel(TimerId) override {}

  private:
    Date m_now = Date::fromUnix(1763712000);
    Calendar m_calendar{"GMT"};
};

// A folder of the machine that holds a home with files, and a Trash over it.
struct World {
    World() {
        std::string pattern = (fs::temp_directory_path() / "quillane-trash-XXXXXX").string();
        root = fs::path(::mkdtemp(pattern.data()));
        fs::create_directories(root / "home");
    }
    ~World() { fs::remove_all(root); }
    World(const World&) = delete;
    World& operator=(const World&) = delete;

    void write(const std::string& below, const std::string& text) const {
        fs::create_directories((root / below).parent_path());
        std::ofstream(root / below) << text;
    }

    fs::path root;
    FixedClock clock;
    mutable std::unique_ptr<Trash> wrapped; // by the one under test
};

struct PlainTrash {
    static std::unique_ptr<Trash> make(const World& world) {
        return std::make_unique<FolderTrash>(world.root.string(), FileURL("/home"));
    }
    // The location, as the Trash knows it, of a file of the world.
    static FileURL url(const World&, const std::string& below) { return FileURL("/" + below); }
    static fs::path host(const World& world, const FileURL& url) {
        return fs::path(world.root.string() + url.path());
    }
    static fs::path folder(const World& world) { return world.root / "home/.Trash"; }
    static constexpr bool kKeepsRecords = false;
    // Whether its folder must be one that can be listed for what lies in it to be put back.
    static constexpr bool kNeedsListing = false;
};

struct WrappedTrash : PlainTrash {
    static std::unique_ptr<Trash> make(const World& world) {
        world.wrapped = PlainTrash::make(world);
        return std::make_unique<FaultTrash>(*world.wrapped);
    }
};

} // namespace quillane
