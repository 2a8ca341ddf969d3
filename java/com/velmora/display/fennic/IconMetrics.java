package com.velmora.display.fennic;

import static com.velmora.display.fennic.Arguments.array;
import static com.velmora.display.fennic.Arguments.read;

import android.graphics.Bitmap;

/**
 * What can be measured of an icon: all of it at once, {@code IconMetrics.of(icon)}, or one thing at a time,
 * {@code IconMetrics.median(icon)}. No bitmap and no array that is handed in is changed.
 *
 * <p>A null bitmap or array is a {@link NullPointerException}; a bitmap that is recycled or not ARGB_8888, or an array of
 * another length, is an {@link IllegalArgumentException}. Where a bitmap cannot be locked the natives answer 0, and so does
 * this class.
 */
public final class IconMetrics {
    private final int width, height, visible, invisible;
    private final float outside, median;
    private final int[] average, cutOff, square;

    private IconMetrics(Bitmap icon) {
        width = read("icon", icon).getWidth();
        height = icon.getHeight();
        visible = visible(icon);
        invisible = invisible(icon);
        outside = outside(icon, 0);
        median = median(icon);
        average = average(icon, 0, 0, width, height);
        cutOff = cutOff(icon, 0);
        // The native takes the distances between the inclusive edges and makes sizes of them itself.
        square = iconInfo(new int[] {cutOff[0], cutOff[1], cutOff[2] - cutOff[0], cutOff[3] - cutOff[1]});
    }

    /**
     * Measures everything that needs no parameters, as it is now.
     *
     * @param icon the bitmap to measure
     * @return the measurements, which do not change with the bitmap
     */
    public static IconMetrics of(Bitmap icon) {
        return new IconMetrics(icon);
    }

    /** The icon's width in pixels. */
    public int width() {
        return width;
    }

    /** The icon's height in pixels. */
    public int height() {
        return height;
    }

    /** The number of pixels with any alpha: {@link #visible(Bitmap)}. */
    public int visibleCount() {
        return visible;
    }

    /** The number of fully transparent pixels: {@link #invisible(Bitmap)}. */
    public int invisibleCount() {
        return invisible;
    }

    /** The share of the area outside each row's visible span, 0 to 1: {@link #outside(Bitmap, float)} at a threshold of 0. */
    public float outsideShare() {
        return outside;
    }

    /** The median brightness of the visible pixels, 0 to 255: {@link #median(Bitmap)}; 0 where none is. */
    public float medianBrightness() {
        return median;
    }

    /** Red, green, blue and alpha, premultiplied, 0 to 255: {@link #average(Bitmap, int, int, int, int)} of the whole icon. */
    public int[] averageChannels() {
        return average.clone();
    }

    /** The same average as a straight colour, 0xAARRGGBB like Android's colours; 0 where nothing is visible. */
    public int averageColor() {
        return average[3] << 24 | straight(0) << 16 | straight(1) << 8 | straight(2);
    }

    /** Left, top, right and bottom of the visible content, all inclusive: {@link #cutOff(Bitmap, int)} at a threshold of 0. */
    public int[] contentBounds() {
        return cutOff.clone();
    }

    /** The square canvas for the visible content, as {@link #iconInfo} gives it; null where that is square enough. */
    public int[] squareCanvas() {
        return square == null ? null : square.clone();
    }

    /**
     * Counts the pixels that have any alpha; {@link VelUIBitmapUtils#nativeGetBitmapVisiblePointNum the formula}.
     *
     * @return their number
     */
    public static int visible(Bitmap bitmap) {
        return VelUIBitmapUtils.nativeGetBitmapVisiblePointNum(read("bitmap", bitmap));
    }

    /**
     * Counts the fully transparent pixels; {@link VelUIBitmapUtils#nativeGetBitmapInvisiblePointNum the formula}.
     *
     * @return their number
     */
    public static int invisible(Bitmap bitmap) {
        return VelUIBitmapUtils.nativeGetBitmapInvisiblePointNum(read("bitmap", bitmap));
    }

    /**
     * Measures how much lies outside the silhouette; {@link VelUIBitmapUtils#nativeGetBitmapInvisibleAreaPrecent the formula}.
     *
     * @param threshold the largest alpha that still counts as invisible, 0 to 255
     * @return a share of the area, 0 to 1
     */
    public static float outside(Bitmap bitmap, float threshold) {
        return VelUIBitmapUtils.nativeGetBitmapInvisibleAreaPrecent(read("bitmap", bitmap), threshold);
    }

    /**
     * Averages a rectangle's pixels above an alpha; {@link VelUIBitmapUtils#nativeGetBitmapAverageColorInRect the formula}.
     * Above 16,843,009 such pixels the native's sums may wrap, and the averages are then wrong.
     *
     * @param x the rectangle's first column
     * @param y the rectangle's first row
     * @param w the rectangle's width in pixels; what lies outside the bitmap does not count
     * @param h the rectangle's height in pixels, likewise
     * @param minAlpha the least alpha that takes part, 0 to 255
     * @return red, green, blue and alpha, premultiplied, 0 to 255; zeros where no pixel takes part
     */
    public static int[] averageFromAlpha(Bitmap bitmap, int x, int y, int w, int h, int minAlpha) {
        int[] average = new int[4];
        VelUIBitmapUtils.nativeGetBitmapAverageColorInRect(read("bitmap", bitmap), x, y, w, h, average, minAlpha);
        return average;
    }

    /**
     * Averages a rectangle's visible pixels, otherwise as {@link #averageFromAlpha};
     * {@link VelUIBitmapUtils#nativeGetBitmapAverageColorInRect2 the formula}.
     *
     * @param x the rectangle's first column
     * @param y the rectangle's first row
     * @param w the rectangle's width in pixels
     * @param h the rectangle's height in pixels
     * @return red, green, blue and alpha, premultiplied, 0 to 255; zeros where no pixel is visible
     */
    public static int[] average(Bitmap bitmap, int x, int y, int w, int h) {
        int[] average = new int[4];
        VelUIBitmapUtils.nativeGetBitmapAverageColorInRect2(read("bitmap", bitmap), x, y, w, h, average);
        return average;
    }

    /**
     * Finds the rectangle around what is visible; {@link VelUIBitmapUtils#nativeGetBitmapTransparentCutOffRect the scans}.
     *
     * @param threshold the largest alpha that still counts as invisible, 0 to 254
     * @return left, top, right and bottom, all inclusive
     */
    public static int[] cutOff(Bitmap bitmap, int threshold) {
        int[] rect = new int[4];
        VelUIBitmapUtils.nativeGetBitmapTransparentCutOffRect(read("bitmap", bitmap), threshold, rect);
        return rect;
    }

    /**
     * Measures the median brightness of the visible pixels; {@link VelUIBitmapUtils#nativeBitmapGetMedian the formula}.
     *
     * @return the median, 0 to 255; 0 where no pixel is visible
     */
    public static float median(Bitmap bitmap) {
        return VelUIBitmapUtils.nativeBitmapGetMedian(read("bitmap", bitmap));
    }

    /**
     * Computes a square canvas for a box that is far from square; {@link VelUIBitmapUtils#nativeGetIconBitmapInfo the formula}.
     *
     * @param box left, top, and the box's width and height less one, in pixels
     * @return the box's x and y on the canvas and twice the canvas's side; null where the box is square enough
     */
    public static int[] iconInfo(int[] box) {
        int[] square = new int[4];
        return VelUIBitmapUtils.nativeGetIconBitmapInfo(array("box", box, 4).clone(), square) ? square : null;
    }

    /**
     * Fits a size to a scaled target and keeps its aspect ratio; {@link VelUIBitmapUtils#nativeGetSourceSize the formula}.
     *
     * @param useFirst whether {@code scaleA} is the scale, else {@code scaleB}
     * @param scaleA the first scale, more than 0
     * @param scaleB the second scale, more than 0
     * @param size the source's width and height in pixels
     * @param targetW the target's width in pixels before it is scaled
     * @param targetH the target's height in pixels before it is scaled
     * @return the fitted width and height
     */
    public static int[] sourceSize(boolean useFirst, float scaleA, float scaleB, int[] size, int targetW, int targetH) {
        int[] fitted = array("size", size, 2).clone();
        VelUIBitmapUtils.nativeGetSourceSize(useFirst, scaleA, scaleB, fitted, targetW, targetH);
        return fitted;
    }

    /** Rounded to the nearest, as bitmaps give their colours. */
    private int straight(int channel) {
        int alpha = average[3];
        return alpha == 0 ? 0 : Math.min((average[channel] * 255 + alpha / 2) / alpha, 255);
    }
}
