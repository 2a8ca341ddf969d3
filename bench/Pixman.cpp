// pixman's separable and HSL operators, and its plain sum, in its own channel order, for which it is fastest.
#include "Pictures.h"

#include <pixman.h>

namespace {

std::shared_ptr<pixman_image_t> imageOf(Picture& picture) {
    const int width = int(picture.info.width), height = int(picture.info.height), stride = int(picture.info.stride);
    return {pixman_image_create_bits_no_clear(PIXMAN_a8r8g8b8, width, height, picture.pixels.get(), stride),
            pixman_image_unref};
}

Case blend(const char* op, pixman_op_t mode) {
    return {"pixman", op, [=](Pictures& pictures) {
                const auto base = imageOf(pictures.destination), layer = imageOf(pictures.source(1));
                const int width = int(pictures.width), height = int(pictures.height);
                return
                    [=] { pixman_image_composite32(mode, layer.get(), nullptr, base.get(), 0, 0, 0, 0, 0, 0, width, height); };
            }};
}

const Added pixman({blend("darken", PIXMAN_OP_DARKEN), blend("multiply", PIXMAN_OP_MULTIPLY),
                    blend("color-burn", PIXMAN_OP_COLOR_BURN), blend("lighten", PIXMAN_OP_LIGHTEN),
                    blend("screen", PIXMAN_OP_SCREEN), blend("color-dodge", PIXMAN_OP_COLOR_DODGE),
                    blend("overlay", PIXMAN_OP_OVERLAY), blend("soft-light", PIXMAN_OP_SOFT_LIGHT),
                    blend("hard-light", PIXMAN_OP_HARD_LIGHT), blend("difference", PIXMAN_OP_DIFFERENCE),
                    blend("exclusion", PIXMAN_OP_EXCLUSION), blend("hue", PIXMAN_OP_HSL_HUE),
                    blend("linear-dodge", PIXMAN_OP_ADD)});

}  // namespace
