// Finding the content of a picture that sits on a plain border.
#pragma once

#include <cstdint>
#include <vector>

namespace verbatix {

// A picture in memory: rows from top to bottom, each pixel blue, green, red and alpha from the low byte up.
struct PixelImage {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> pixels;  // width * height of them
};

// The part of a picture from (left, top) up to but without (right, bottom).
struct PixelArea {
    int left;
    int top;
    int right;
    int bottom;
    bool operator==(const PixelArea&) const = default;
};

// A pixel's brightness in steps so coarse that the noise of a compressed picture disappears: 0 to 30.
int CoarseGrey(std::uint32_t pixel);

// What remains without the border: the rows and then the columns at the sides that are all of the grey that
// most corners have. `margin` pixels of the border stay on each side, as far as there are any. A picture of
// one grey has no content and remains whole.
PixelArea FindContent(const PixelImage& image, int margin);

// That part as a picture of its own. `area` lies within the image.
PixelImage Crop(const PixelImage& image, const PixelArea& area);

}  // namespace verbatix
