#include "ui/shell/tray_picture.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>
#include <vector>

#include "base/screen_scale.h"
#include "paste/builtin/clipboard_image.h"

namespace verbatix {

namespace {

using Pixel = std::uint32_t;

constexpr Pixel kRed = 0xffd32f2f;
constexpr Pixel kAmber = 0xffffb300;
constexpr Pixel kBlue = 0xff1e70c8;
constexpr Pixel kWhite = 0xffffffff;
constexpr Pixel kBlack = 0xff202020;
constexpr Pixel kNothing = 0;  // see-through

struct Point {
    double x;
    double y;
};

// The middle and the radius of the mark, in parts of the picture's side. Sixteenths, where it matters: with
// the edges between pixels the smallest picture is the sharpest.
constexpr Point kMiddle = {0.6875, 0.6875};
constexpr double kRadius = 0.3125;
// Around it the picture is cut away, so that the mark stands out from it on every ground.
constexpr double kGap = 0.06;

bool IsWithin(Point at, double left, double top, double right, double bottom) {
    return at.x >= left && at.x < right && at.y >= top && at.y < bottom;
}

bool IsInDisc(Point at, double radius) {
    return std::hypot(at.x - kMiddle.x, at.y - kMiddle.y) < radius;
}

bool IsInBars(Point at) {
    return IsWithin(at, 0.5, 0.5, 0.625, 0.875) || IsWithin(at, 0.75, 0.5, 0.875, 0.875);
}

bool IsInExclamation(Point at) {
    return IsWithin(at, 0.625, 0.4375, 0.75, 0.6875) || IsWithin(at, 0.625, 0.75, 0.75, 0.875);
}

// A shield, as Windows has it for administrators: straight above, running to a point below.
bool IsInShield(Point at, double margin) {
    constexpr double kTop = 0.375;
    constexpr double kShoulder = 0.6875;
    constexpr double kHalf = 0.3125;
    const double bottom = 1.0 + margin;
    if (at.y < kTop - margin || at.y >= bottom) return false;
    const double down = std::max(0.0, (at.y - kShoulder) / (bottom - kShoulder));
    return std::abs(at.x - kMiddle.x) < (kHalf + margin) * std::sqrt(1.0 - down * down);
}

// What the mark shows at that place; nothing where the picture stays.
std::optional<Pixel> MarkAt(Point at, TrayMark mark) {
    if (mark == TrayMark::kOutOfReach) {
        if (!IsInShield(at, kGap)) return std::nullopt;
        if (!IsInShield(at, 0.0)) return kNothing;
        // Quartered, so that it is told by its pattern too.
        return (at.x < kMiddle.x) == (at.y < kMiddle.y) ? kAmber : kBlue;
    }
    if (!IsInDisc(at, kRadius + kGap)) return std::nullopt;
    if (!IsInDisc(at, kRadius)) return kNothing;
    if (mark == TrayMark::kFailing) return IsInExclamation(at) ? kWhite : kRed;
    return IsInBars(at) ? kBlack : kAmber;
}

struct Sum {
    double alpha = 0;
    double red = 0;
    double green = 0;
    double blue = 0;
};

double Channel(Pixel pixel, int shift) {
    return static_cast<double>((pixel >> shift) & 0xff);
}

void Add(Sum& sum, Pixel pixel) {
    const double alpha = Channel(pixel, 24);
    sum.alpha += alpha;
    sum.red += alpha * Channel(pixel, 16);
    sum.green += alpha * Channel(pixel, 8);
    sum.blue += alpha * Channel(pixel, 0);
}

Pixel Mean(const Sum& sum, int count) {
    if (sum.alpha <= 0) return kNothing;
    const auto rounded = [](double value) { return static_cast<Pixel>(std::lround(value)); };
    return rounded(sum.alpha / count) << 24 | rounded(sum.red / sum.alpha) << 16 |
           rounded(sum.green / sum.alpha) << 8 | rounded(sum.blue / sum.alpha);
}

// Lighter on a dark bar, from which it would not stand out.
Pixel Greyed(Pixel pixel, bool isBarLight) {
    double grey = 0.3 * Channel(pixel, 16) + 0.59 * Channel(pixel, 8) + 0.11 * Channel(pixel, 0);
    if (!isBarLight) grey = 90 + grey * 165 / 255;
    const auto level = static_cast<Pixel>(std::lround(grey));
    return (pixel & 0xff000000) | level << 16 | level << 8 | level;
}

UniqueIcon LoadPicture(WORD resource, int width, int height) {
    return UniqueIcon(static_cast<HICON>(LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(resource),
                                                    IMAGE_ICON, width, height, LR_DEFAULTCOLOR)));
}

PixelImage PixelsOf(HICON icon) {
    ICONINFO info = {};
    if (!GetIconInfo(icon, &info)) return {};
    const UniqueBitmap mask(info.hbmMask);
    const UniqueBitmap color(info.hbmColor);
    return color ? ReadPixels(color.Get()) : PixelImage{};
}

UniqueIcon IconOf(const PixelImage& image) {
    // By alpha alone; the mask of one bit a pixel, rows of whole words, hides nothing.
    const std::size_t row = (static_cast<std::size_t>(image.width) + 15) / 16 * 2;
    const std::vector<BYTE> shown(row * static_cast<std::size_t>(image.height));
    const UniqueBitmap mask(CreateBitmap(image.width, image.height, 1, 1, shown.data()));
    const UniqueBitmap color = MakeBitmap(image);
    ICONINFO info = {TRUE, 0, 0, mask.Get(), color.Get()};
    return UniqueIcon(mask && color ? CreateIconIndirect(&info) : nullptr);
}

}  // namespace

TrayLook LookOnTaskBar() {
    DWORD light = 0;
    DWORD size = sizeof light;
    const LSTATUS status = RegGetValueW(
        HKEY_CURRENT_USER, L"Software\\Microsoft\\Windows\\CurrentVersion\\Themes\\Personalize",
        L"SystemUsesLightTheme", RRF_RT_REG_DWORD, nullptr, &light, &size);
    const UINT dpi = DpiOf(FindWindowW(L"Shell_TrayWnd", nullptr));
    return {TrayMark::kNone, status == ERROR_SUCCESS && light != 0, MetricAt(SM_CXSMICON, dpi)};
}

void DrawMark(std::span<std::uint32_t> pixels, TrayLook look) {
    const int side = look.side;
    constexpr int kSteps = 4;  // looked at in so many places across and down, for soft edges
    if (look.mark == TrayMark::kNone) return;
    for (int place = 0; place < side * side; ++place) {
        Pixel& pixel = pixels[static_cast<std::size_t>(place)];
        const Pixel before = look.mark == TrayMark::kPaused ? Greyed(pixel, look.isBarLight) : pixel;
        Sum sum;
        for (int step = 0; step < kSteps * kSteps; ++step) {
            const auto at = [&](int whole, int part) { return (whole + (part + 0.5) / kSteps) / side; };
            const Point point = {at(place % side, step % kSteps), at(place / side, step / kSteps)};
            Add(sum, MarkAt(point, look.mark).value_or(before));
        }
        pixel = Mean(sum, kSteps * kSteps);
    }
}

UniqueIcon MakeTrayPicture(WORD resource, TrayLook look) {
    if (look.mark == TrayMark::kNone) {
        return LoadPicture(resource, GetSystemMetrics(SM_CXICON), GetSystemMetrics(SM_CYICON));
    }
    UniqueIcon plain = LoadPicture(resource, look.side, look.side);
    PixelImage image = plain ? PixelsOf(plain.Get()) : PixelImage{};
    if (image.width != look.side || image.height != look.side) return plain;
    DrawMark(image.pixels, look);
    UniqueIcon marked = IconOf(image);
    return marked ? std::move(marked) : std::move(plain);
}

}  // namespace verbatix
