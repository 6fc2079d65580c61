#include "paste/builtin/gdi_plus.h"

// The GDI+ header wants COM's base types, which the lean windows.h leaves out.
#include <objidl.h>

#include <gdiplus.h>

#include <cstdint>
#include <cstring>

#include "base/system_library.h"
#include "clipboard/clipboard_bitmap.h"

namespace verbatix {

std::uint64_t MemoryLeft() {
    MEMORYSTATUSEX status = {};
    status.dwLength = sizeof status;
    return GlobalMemoryStatusEx(&status) ? status.ullAvailPageFile : 0;
}

bool IsDecodableSize(UINT width, UINT height, std::uint64_t memory) {
    // What GDI can make; then the decoder's picture, the one that is drawn into and the clipboard's block.
    constexpr std::uint64_t kLargestBitmap = 0x7FFFFFFF;
    constexpr std::uint64_t kCopies = 3;
    if (width == 0 || height == 0 || width > kLargestBitmap / 4 / height) return false;
    return std::uint64_t{width} * height * 4 <= memory / kCopies;
}

namespace {

using UniqueDc = UniqueHandle<HDC, DeleteDC>;
namespace Flat = Gdiplus::DllExports;

// GDI+, started. False when the system has none or it does not start.
class GdiPlus {
  public:
    GdiPlus() : library_(LoadSystemLibrary(L"gdiplus.dll")) {
        if (!library_ || !FindAll()) return;
        const Gdiplus::GdiplusStartupInput input;
        started_ = startup_(&token_, &input, nullptr) == Gdiplus::Ok;
    }
    ~GdiPlus() {
        if (started_) shutdown_(token_);
    }
    GdiPlus(const GdiPlus&) = delete;
    GdiPlus& operator=(const GdiPlus&) = delete;

    explicit operator bool() const { return started_; }

    decltype(&Flat::GdipLoadImageFromFile) loadImageFromFile = nullptr;
    decltype(&Flat::GdipGetImageWidth) getImageWidth = nullptr;
    decltype(&Flat::GdipGetImageHeight) getImageHeight = nullptr;
    decltype(&Flat::GdipDisposeImage) disposeImage = nullptr;
    decltype(&Flat::GdipCreateFromHDC) createFromHdc = nullptr;
    decltype(&Flat::GdipDrawImageRectI) drawImageRect = nullptr;
    decltype(&Flat::GdipDeleteGraphics) deleteGraphics = nullptr;

  private:
    bool FindAll() {
        return Find(startup_, "GdiplusStartup") && Find(shutdown_, "GdiplusShutdown") &&
               Find(loadImageFromFile, "GdipLoadImageFromFile") &&
               Find(getImageWidth, "GdipGetImageWidth") && Find(getImageHeight, "GdipGetImageHeight") &&
               Find(disposeImage, "GdipDisposeImage") && Find(createFromHdc, "GdipCreateFromHDC") &&
               Find(drawImageRect, "GdipDrawImageRectI") && Find(deleteGraphics, "GdipDeleteGraphics");
    }

    template <typename Function>
    bool Find(Function& function, const char* name) {
        function = FindFunction<Function>(library_.Get(), name);
        return function != nullptr;
    }

    UniqueModule library_;
    ULONG_PTR token_ = 0;
    bool started_ = false;
    decltype(&Gdiplus::GdiplusStartup) startup_ = nullptr;
    decltype(&Gdiplus::GdiplusShutdown) shutdown_ = nullptr;
};

// An image that GDI+ has loaded; null when the file is none.
class LoadedImage {
  public:
    LoadedImage(const GdiPlus& gdiPlus, const std::wstring& path) : gdiPlus_(gdiPlus) {
        if (gdiPlus_.loadImageFromFile(path.c_str(), &image_) != Gdiplus::Ok) image_ = nullptr;
    }
    ~LoadedImage() {
        if (image_) gdiPlus_.disposeImage(image_);
    }
    LoadedImage(const LoadedImage&) = delete;
    LoadedImage& operator=(const LoadedImage&) = delete;

    Gdiplus::GpImage* Get() const { return image_; }

  private:
    const GdiPlus& gdiPlus_;
    Gdiplus::GpImage* image_ = nullptr;
};

// A device-independent bitmap that can be drawn into.
struct DibSection {
    BITMAPINFOHEADER header = {};
    UniqueBitmap bitmap;
    void* bits = nullptr;  // the bitmap's own
};

DibSection MakeDibSection(UINT width, UINT height) {
    DibSection section;
    section.header.biSize = sizeof section.header;
    section.header.biWidth = static_cast<LONG>(width);
    section.header.biHeight = static_cast<LONG>(height);  // positive: the bottom row comes first
    section.header.biPlanes = 1;
    section.header.biBitCount = 32;
    section.header.biSizeImage = width * height * 4;
    section.bitmap.Reset(CreateDIBSection(nullptr, reinterpret_cast<const BITMAPINFO*>(&section.header),
                                          DIB_RGB_COLORS, &section.bits, nullptr, 0));
    return section;
}

bool Draw(const GdiPlus& gdiPlus, const LoadedImage& image, const DibSection& section) {
    const UniqueDc context(CreateCompatibleDC(nullptr));
    const HGDIOBJ before = SelectObject(context.Get(), section.bitmap.Get());
    Gdiplus::GpGraphics* graphics = nullptr;
    bool drawn = false;
    if (gdiPlus.createFromHdc(context.Get(), &graphics) == Gdiplus::Ok) {
        drawn = gdiPlus.drawImageRect(graphics, image.Get(), 0, 0, section.header.biWidth,
                                      section.header.biHeight) == Gdiplus::Ok;
        gdiPlus.deleteGraphics(graphics);
    }
    GdiFlush();
    SelectObject(context.Get(), before);
    return drawn;
}

// Header and pixels in one block.
UniqueGlobal PackedDib(const DibSection& section) {
    UniqueGlobal block(
        GlobalAlloc(GMEM_MOVEABLE | GMEM_DDESHARE, sizeof section.header + section.header.biSizeImage));
    char* const bytes = block ? static_cast<char*>(GlobalLock(block.Get())) : nullptr;
    if (!bytes || !section.bits) return {};
    std::memcpy(bytes, &section.header, sizeof section.header);
    std::memcpy(bytes + sizeof section.header, section.bits, section.header.biSizeImage);
    GlobalUnlock(block.Get());
    return block;
}

}  // namespace

UniqueGlobal LoadImageAsDib(const std::wstring& path) {
    const GdiPlus gdiPlus;
    if (!gdiPlus) return {};
    const LoadedImage image(gdiPlus, path);
    UINT width = 0;
    UINT height = 0;
    if (!image.Get() || gdiPlus.getImageWidth(image.Get(), &width) != Gdiplus::Ok ||
        gdiPlus.getImageHeight(image.Get(), &height) != Gdiplus::Ok ||
        !IsDecodableSize(width, height, MemoryLeft())) {
        return {};
    }
    const DibSection section = MakeDibSection(width, height);
    if (!section.bitmap || !Draw(gdiPlus, image, section)) return {};
    return PackedDib(section);
}

}  // namespace verbatix
