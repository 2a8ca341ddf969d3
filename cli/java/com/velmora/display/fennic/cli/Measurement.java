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

    /** The native sums in 32 bits, which more pixels of 255 would overflow. */
    private static final long MOST_PIXELS = 0xffffffffL / 255;

    static Measurement of(Bitmap bitmap) {
        IconMetrics metrics = IconMetrics.of(bitmap);
        Sums sums = Sums.of(bitmap);
        boolean tooMany = (long) metrics.width() * metrics.height() > MOST_PIXELS;
        int[] average = tooMany ? sums.average() : metrics.averageChannels();
        Float median = metrics.visibleCount() > 0 ? metrics.medianBrightness() : null;
        return new Measurement(metrics.width(), metrics.height(), metrics.visibleCount(), metrics.invisibleCount(),
            metrics.outsideShare(), average, metrics.contentBounds(), metrics.squareCanvas(), median, sums.straight());
    }
}
