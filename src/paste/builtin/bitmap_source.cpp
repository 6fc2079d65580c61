#include "paste/builtin/bitmap_source.h"

#include <array>
#include <cstddef>

#include "base/text.h"

namespace verbatix {

// A picture has millions of bytes but only 256 different ones.
static std::array<std::wstring, 256> ByteTexts() {
    std::array<std::wstring, 256> texts;
    for (std::size_t value = 0; value < texts.size(); ++value) texts[value] = std::to_wstring(value) + L",";
    return texts;
}

std::wstring BitmapSourceText(int width, int height, std::span<const std::uint8_t> bytes) {
    const std::array<std::wstring, 256> texts = ByteTexts();
    std::wstring source = Format(L"int xs=%d;\r\nint ys=%d;\r\nUCHAR img_data[]={", width, height);
    source.reserve(source.size() + bytes.size() * 4 + bytes.size() / kSourceBytesPerLine * 2 + 16);
    for (std::size_t index = 0; index < bytes.size(); ++index) {
        if (index % kSourceBytesPerLine == 0) source += L"\r\n";
        source += texts[bytes[index]];
    }
    return source += L"\r\n0};\r\n";
}

}  // namespace verbatix
