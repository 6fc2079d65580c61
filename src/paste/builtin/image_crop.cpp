#include "paste/builtin/image_crop.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace verbatix {

int CoarseGrey(std::uint32_t pixel) {
    const double red = pixel >> 16 & 0xFF;
    const double green = pixel >> 8 & 0xFF;
    const double blue = pixel & 0xFF;
    return static_cast<int>((0.3 * red + 0.59 * green + 0.11 * blue) * 0.12);
}

namespace {

// The greys of a picture, and the questions that the border search asks about neighbours.
class GreyImage {
  public:
    explicit GreyImage(const PixelImage& image)
        : width_(image.width), height_(image.height), greys_(image.pixels.size()) {
        std::ranges::transform(image.pixels, greys_.begin(), [](std::uint32_t pixel) {
            return static_cast<std::uint8_t>(CoarseGrey(pixel));
        });
    }

    std::uint8_t At(int x, int y) const {
        return greys_[static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) +
                      static_cast<std::size_t>(x)];
    }

    // The grey that most corners have, the first of them when several do: content may touch some corners.
    std::uint8_t OfMostCorners() const {
        const std::array corners = {At(0, 0), At(width_ - 1, 0), At(0, height_ - 1),
                                    At(width_ - 1, height_ - 1)};
        return *std::ranges::max_element(
            corners, {}, [&](std::uint8_t grey) { return std::ranges::count(corners, grey); });
    }

    // Whether the row, or the part of the column, is all of that grey.
    bool RowIs(int y, std::uint8_t grey) const {
        for (int x = 0; x < width_; ++x) {
            if (At(x, y) != grey) return false;
        }
        return true;
    }
    bool ColumnIs(int x, int top, int bottom, std::uint8_t grey) const {
        for (int y = top; y < bottom; ++y) {
            if (At(x, y) != grey) return false;
        }
        return true;
    }

  private:
    int width_;
    int height_;
    std::vector<std::uint8_t> greys_;
};

struct Span {
    int begin;
    int end;
};

// The lines 0 to `count` without those at both ends for which isBorder(line) holds; all of them when
// nothing would remain.
template <typename IsBorder>
Span WithoutEnds(int count, IsBorder isBorder) {
    Span kept = {0, count};
    while (kept.begin < count && isBorder(kept.begin)) ++kept.begin;
    while (kept.end > kept.begin && isBorder(kept.end - 1)) --kept.end;
    return kept.begin < kept.end ? kept : Span{0, count};
}

PixelArea WithMargin(PixelArea area, int margin, const PixelImage& image) {
    margin = std::clamp(margin, 0, std::max(image.width, image.height));
    return {std::max(area.left - margin, 0), std::max(area.top - margin, 0),
            std::min(area.right + margin, image.width), std::min(area.bottom + margin, image.height)};
}

}  // namespace

PixelArea FindContent(const PixelImage& image, int margin) {
    if (image.pixels.empty()) return {0, 0, image.width, image.height};
    const GreyImage grey(image);
    const std::uint8_t border = grey.OfMostCorners();
    const Span rows = WithoutEnds(image.height, [&](int y) { return grey.RowIs(y, border); });
    const Span columns =
        WithoutEnds(image.width, [&](int x) { return grey.ColumnIs(x, rows.begin, rows.end, border); });
    return WithMargin({columns.begin, rows.begin, columns.end, rows.end}, margin, image);
}

PixelImage Crop(const PixelImage& image, const PixelArea& area) {
    PixelImage part = {area.right - area.left, area.bottom - area.top, {}};
    part.pixels.reserve(static_cast<std::size_t>(part.width) * static_cast<std::size_t>(part.height));
    for (int y = area.top; y < area.bottom; ++y) {
        const auto row = image.pixels.begin() + static_cast<std::ptrdiff_t>(y) * image.width;
        part.pixels.insert(part.pixels.end(), row + area.left, row + area.right);
    }
    return part;
}

}  // namespace verbatix
