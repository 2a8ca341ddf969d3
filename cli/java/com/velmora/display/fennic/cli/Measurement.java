package com.velmora.display.fennic.cli;

import android.graphics.Bitmap;
import com.velmora.display.fennic.IconMetrics;

/**
 * What the library measures of an icon. The average is red, green, blue and alpha as stored, that is premultiplied; the cut-off
 * rectangle is left, top, right, bottom, all inclusive; the square is the offset of its content on a square canvas and that
 * canvas's side twice, or null where the content is square enough. The median is that of the brightness, or null where nothing
 * is visible. Straight is the average colour without its alpha.
 */
record Measurement(
    int width, int height, int visible, int invisible, float outside, int[] average, int[] cutOff, int[] square,
    Float median, int[] straight) {

    static Measurement of(Bitmap bitmap) {
        IconMetrics metrics = IconMetrics.of(bitmap);
        Sums sums = Sums.of(bitmap);
        Float median = metrics.visibleCount() > 0 ? metrics.medianBrightness() : null;
        return new Measurement(metrics.width(), metrics.height(), metrics.visibleCount(), metrics.invisibleCount(),
            metrics.outsideShare(), sums.average(), metrics.contentBounds(), metrics.squareCanvas(), median, sums.straight());
    }
}
