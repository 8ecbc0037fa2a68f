#include <cstddef>
#include <cstdint>
#include <string_view>

#include "platform/coretext/CFMutableAttributedString.h"
#include "platform/coretext/CTFont.h"
#include "platform/coretext/CTFrame.h"
#include "platform/coretext/CTFramesetter.h"
#include "platform/raster/CGBitmapContext.h"

using namespace orvane::platform;

// The first byte is the width of the lines; the rest is the text.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    CFMutableAttributedString string;
    string.replaceString({reinterpret_cast<const char*>(data) + 1, size - 1});
    string.setFont(string.range(), CTFont::createWithName("DejaVuSans", 12));
    string.setUnderline({size / 3, size / 3}, true);
    const CTFramesetter framesetter(string);
    const CGSize extent = framesetter.suggestFrameSize(data[0]);
    const auto frame = framesetter.createFrame({{0, 0}, extent});
    for (const double share : {-0.1, 0.3, 0.9}) {
        const auto index =
            frame->stringIndexForPosition({share * extent.width, share * extent.height});
        if (index && *index > string.length()) {
            __builtin_trap();
        }
    }
    CGBitmapContext canvas(64, 64);
    canvas.drawFrame(*frame);
    return 0;
}
