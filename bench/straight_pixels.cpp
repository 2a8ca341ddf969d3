// Writes a picture as bytes of red, green, blue and alpha, the colour straight, for peers that no program can be linked with.
//
//   straight_pixels PICTURE NUMBER    (PICTURE as 192 or 1024:icon; 0 for what calls change, 1 for the layer)
#include "Pictures.h"

#include <cstdio>

namespace {

std::uint32_t straight(std::uint32_t pixel) {
    const std::uint32_t a = pixel >> 24;
    auto channel = [=](int shift) { return (pixel >> shift & 255) * 255 + a / 2; };
    return a == 0 ? 0 : channel(0) / a | channel(8) / a << 8 | channel(16) / a << 16 | a << 24;
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 3) return 2;
    const Motif motif(arguments[1]);
    Pictures pictures(motif.size, motif.size, motif.subject);
    Picture& picture = pictures.source(std::atoi(arguments[2]));
    for (std::size_t i = 0; i < picture.count(); ++i) picture.pixels[i] = straight(picture.pixels[i]);
    return std::fwrite(picture.pixels.get(), 1, picture.bytes(), stdout) == picture.bytes() ? 0 : 1;
}
