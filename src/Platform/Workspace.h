#pragma once
#include "FileURL.h"
#include <cstdint>
#include <memory>
#include <vector>

namespace quillane {

// A picture: 8-bit RGBA, alpha not multiplied in, rows from top to bottom without padding.
struct IconImage {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> rgba;
    bool isEmpty() const { return width <= 0 || height <= 0; }
    friend bool operator==(const IconImage&, const IconImage&) = default;
};

// The desktop around us.
class Workspace {
  public:
    virtual ~Workspace() = default;

    // The argument of a start that follows upon the end of the one that started it, and waits for that.
    static constexpr const char* kRelaunched = "--relaunched";

    // The icon of whatever lies at `url`, at least `side` pixels square where the source holds that much;
    // a generic icon for what has none or does not exist, never null. Blocks: never on the main thread.
    virtual std::shared_ptr<const IconImage> icon(const FileURL& url, int side) = 0;
    // Opens the item as a double click in the file manager would. Returns at once; failures are silent.
    virtual void open(const FileURL& url) = 0;
    // Shows the items selected in the file manager. Returns at once; failures are silent.
    virtual void reveal(const std::vector<FileURL>& urls) = 0;
    // Shows the system's settings page for Full Disk Access, where there is one. Returns at once.
    virtual void openFullDiskAccessSettings() = 0;
    // Starts a second instance of this program and ends this one.
    virtual void relaunch() = 0;
};

} // namespace quillane
