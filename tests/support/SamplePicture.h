#pragma once
#include "PngFile.h"
#include <cstdint>
#include <string>
#include <vector>

namespace quillane {

// A picture as a person might have it, drawn anew from a number: the same number draws the same picture, in any
// size.
struct SamplePicture {
    int width = 0;
    int height = 0;
    std::string rgb; // its rows from the top, three bytes to a pixel

    // Hills behind each other under a sky with a sun, a lake before them, and the grain of a camera.
    static SamplePicture landscape(std::uint32_t number, int width, int height);
    // A sheet of paper with lines of print, photographed askew.
    static SamplePicture paper(std::uint32_t number, int width, int height);
    // Windows with titles, lists and text on a desktop.
    static SamplePicture screen(std::uint32_t number, int width, int height);
    // One lamp in a dark room.
    static SamplePicture lamp(int width, int height);
};

std::string pngOf(const SamplePicture& picture, const std::vector<PngRemark>& texts = {});
std::string jpegOf(const SamplePicture& picture, int coarseness = 6);

} // namespace quillane
