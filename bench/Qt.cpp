// Qt's raster engine, in its own channel order, for which it is fastest.
#include "Pictures.h"

#include <QImage>
#include <QPainter>

namespace {

std::shared_ptr<QImage> imageOf(Picture& picture) {
    auto* bytes = reinterpret_cast<uchar*>(picture.pixels.get());
    return std::make_shared<QImage>(bytes, int(picture.info.width), int(picture.info.height), int(picture.info.stride),
                                    QImage::Format_ARGB32_Premultiplied);
}

Case blend(const char* op, QPainter::CompositionMode mode) {
    return {"qt", op, [=](Pictures& pictures) {
                const auto base = imageOf(pictures.destination), layer = imageOf(pictures.source(1));
                return [=] {
                    QPainter painter(base.get());
                    painter.setCompositionMode(mode);
                    painter.drawImage(0, 0, *layer);
                };
            }};
}

const Added qt({blend("darken", QPainter::CompositionMode_Darken), blend("multiply", QPainter::CompositionMode_Multiply),
                blend("color-burn", QPainter::CompositionMode_ColorBurn), blend("lighten", QPainter::CompositionMode_Lighten),
                blend("screen", QPainter::CompositionMode_Screen), blend("color-dodge", QPainter::CompositionMode_ColorDodge),
                blend("overlay", QPainter::CompositionMode_Overlay), blend("soft-light", QPainter::CompositionMode_SoftLight),
                blend("hard-light", QPainter::CompositionMode_HardLight),
                blend("difference", QPainter::CompositionMode_Difference),
                blend("exclusion", QPainter::CompositionMode_Exclusion),
                blend("linear-dodge", QPainter::CompositionMode_Plus)});

}  // namespace
