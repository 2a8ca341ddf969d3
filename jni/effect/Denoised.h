// The grey that is left above a threshold of luminance.
#pragma once

namespace LEVEL {

// (L - t) * a / (255 - t), which is 255 at most for bytes, for luminances L above the threshold t.
inline float denoised(float luminance, float a, float threshold) {
    return luminance <= threshold ? 0.0f : float(double((luminance - threshold) * a) / (255.0 - double(threshold)));
}

}  // namespace LEVEL
