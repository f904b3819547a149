#pragma once
#include "Workspace.h"
#include <span>
#include <string>
#include <string_view>

// Writes Apple's icon container, as IcnsReader reads it. The same pictures give the same bytes.
namespace quillane::IcnsWriter {

// One size of the picture: its side in points, and in how many pixels a point is drawn.
struct Size {
    int points = 0;
    int scale = 1;

    int side() const { return points * scale; } // in pixels
};

// All that a program's icon has, from 16 points to 512, each for plain and for fine screens.
std::span<const Size> sizes();

// Gathers the sizes of one icon. Each is added once.
class Container {
  public:
    // A picture of 16 or 32 points for plain screens, as pixels: the Finder shows no PNG in these two. `image` has the
    // size's pixels, not multiplied with their opacity.
    void addPixels(Size size, const IconImage& image);
    // Any other, as a PNG file.
    void addPng(Size size, std::string_view png);

    // Whether a size is added by addPixels.
    static bool isKeptAsPixels(Size size);

    std::string bytes() const;

  private:
    void add(std::string_view type, std::string_view content);

    std::string m_entries;
};

} // namespace quillane::IcnsWriter
