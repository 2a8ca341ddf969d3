// The exported functions of single pixels, and the exported global, for native callers.
#include "../KorvGraphics2D.h"
#include "../ground/Greys.h"
#include "Denoised.h"
#include "Hatch.h"

using namespace LEVEL;

extern "C" {
JNIEXPORT unsigned int numaaaa = 0;
}

float KorvGraphics2D::GetBrightness(float r, float g, float b, float a) { return straightSum(r, g, b, a, brightnessWeights); }
float KorvGraphics2D::GetLuminance(float r, float g, float b, float a) { return straightSum(r, g, b, a, luminanceWeights); }

float KorvGraphics2D::Denoise(float r, float g, float b, float a, float threshold) {
    return denoised(float(weightedSum(r, g, b, luminanceWeights)), a, threshold);
}

float KorvGraphics2D::Add(float x, float m) {
    constexpr double pi = 3.141592653589793;
    return float((sin(double(x / m) * pi - pi / 2.0) + 1.0) * double(m) * 0.5);
}

bool KorvGraphics2D::needDrawLine(double base, double slope, double x, double spacing, double width, bool shifted) {
    return onLine<libraryRemainder>(fused(-slope, x, base) - (shifted ? spacing * 0.5 : 0.0), Spacing(spacing), fabs(width));
}

bool KorvGraphics2D::NeedSetColor(int lum, double x, double y, double height, double spacing, double width, double angle) {
    return double(lum) < Hatch(height, spacing, width, angle).limit<libraryRemainder>(x, y);
}
