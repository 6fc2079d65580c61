#include "bench/builtin_bench.h"

// The GDI+ header wants COM's base types, which the lean windows.h leaves out.
#include <objidl.h>

#include <gdiplus.h>

#include <cstdint>
#include <string>

#include "base/handle.h"
#include "bench/measure.h"
#include "paste/builtin/image_clipboard.h"
#include "support/desktop.h"
#include "support/folder.h"

namespace verbatix::bench {

using namespace verbatix::test;

namespace {

constexpr int kWidth = 4000;
constexpr int kHeight = 3000;
constexpr DWORD kFixedWait = 20;
constexpr CLSID kPngEncoder = {
    0x557CF406, 0x1A04, 0x11D3, {0x9A, 0x73, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};

template <typename Function>
Function* Find(const UniqueModule& library, const char* name) {
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(library.Get(), name)));
}

// A picture like a photograph for the decoder: smooth, with noise in the low bits.
std::vector<std::uint32_t> Photograph() {
    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(kWidth) * kHeight);
    std::uint32_t noise = 1;
    for (std::size_t index = 0; index < pixels.size(); ++index) {
        noise = noise * 1664525 + 1013904223;
        const auto x = static_cast<std::uint32_t>(index % kWidth);
        const auto y = static_cast<std::uint32_t>(index / kWidth);
        pixels[index] = 0xFF000000 | (x / 16 & 0xFF) << 16 | (y / 12 & 0xFF) << 8 | (noise >> 29);
    }
    return pixels;
}

bool WritePng(const std::wstring& path) {
    using namespace Gdiplus;
    const UniqueModule library(LoadLibraryW(L"gdiplus.dll"));
    if (!library) return false;
    ULONG_PTR token = 0;
    const GdiplusStartupInput input;
    Find<decltype(GdiplusStartup)>(library, "GdiplusStartup")(&token, &input, nullptr);
    std::vector<std::uint32_t> pixels = Photograph();
    GpBitmap* bitmap = nullptr;
    Find<decltype(DllExports::GdipCreateBitmapFromScan0)>(library, "GdipCreateBitmapFromScan0")(
        kWidth, kHeight, kWidth * 4, PixelFormat32bppARGB, reinterpret_cast<BYTE*>(pixels.data()), &bitmap);
    const bool saved = Find<decltype(DllExports::GdipSaveImageToFile)>(library, "GdipSaveImageToFile")(
                           bitmap, path.c_str(), &kPngEncoder, nullptr) == Ok;
    Find<decltype(DllExports::GdipDisposeImage)>(library, "GdipDisposeImage")(bitmap);
    Find<decltype(GdiplusShutdown)>(library, "GdiplusShutdown")(token);
    return saved;
}

}  // namespace

void BenchImage() {
    const Folder folder;
    const std::wstring path = folder.File(L"photograph.png");
    WaitForClipboard();
    if (!WritePng(path)) return;
    const double time = MedianTime(5, [&] { ImageFileToClipboard(path); });
    Row("img: of a 12-megapixel PNG, median of 5", time - kFixedWait, "ms above the fixed waits");
    Row("img: its fixed waits", kFixedWait, "ms");
}

}  // namespace verbatix::bench
