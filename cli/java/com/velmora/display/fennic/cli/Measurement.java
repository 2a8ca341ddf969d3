package com.velmora.display.fennic.cli;

import android.graphics.Bitmap;
import com.velmora.display.fennic.VelUIBitmapUtils;

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
        int width = bitmap.getWidth();
        int height = bitmap.getHeight();
        Sums sums = Sums.of(bitmap);
        int[] average = new int[4];
        int[] cutOff = new int[4];
        int[] square = new int[4];
        if ((long) width * height > MOST_PIXELS) {
            average = sums.average();
        } else {
            VelUIBitmapUtils.nativeGetBitmapAverageColorInRect2(bitmap, 0, 0, width, height, average);
        }
        VelUIBitmapUtils.nativeGetBitmapTransparentCutOffRect(bitmap, 0, cutOff);
        // The native takes the distances between the inclusive edges and makes sizes of them itself.
        int[] box = {cutOff[0], cutOff[1], cutOff[2] - cutOff[0], cutOff[3] - cutOff[1]};
        boolean oblong = VelUIBitmapUtils.nativeGetIconBitmapInfo(box, square);
        int visible = VelUIBitmapUtils.nativeGetBitmapVisiblePointNum(bitmap);
        int invisible = VelUIBitmapUtils.nativeGetBitmapInvisiblePointNum(bitmap);
        float outside = VelUIBitmapUtils.nativeGetBitmapInvisibleAreaPrecent(bitmap, 0);
        Float median = visible > 0 ? VelUIBitmapUtils.nativeBitmapGetMedian(bitmap) : null;
        return new Measurement(
            width, height, visible, invisible, outside, average, cutOff, oblong ? square : null, median, sums.straight());
    }
}
