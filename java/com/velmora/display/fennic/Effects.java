package com.velmora.display.fennic;

import static com.velmora.display.fennic.Arguments.array;
import static com.velmora.display.fennic.Arguments.check;
import static com.velmora.display.fennic.Arguments.ofOneSize;
import static com.velmora.display.fennic.Arguments.written;

import android.graphics.Bitmap;

/**
 * The effects and filters by name: {@code Effects.sepia(bitmap, 0.6f)}. A {@code bitmap}, a {@code destination} and the
 * {@code centre} of {@link #emboss emboss} are written, alpha included where the formula says so, and must be mutable. All
 * bitmaps must be ARGB_8888, and several of one size. Numbers may have any value; the ranges given are those that make sense.
 *
 * <p>Every method throws
 * <ul>
 * <li>{@link NullPointerException} where a bitmap or array is null,
 * <li>{@link IllegalArgumentException} where a bitmap is recycled, immutable, of another format or size, or an array of another
 *     length,
 * <li>{@link IllegalStateException} where a bitmap cannot be locked,
 * <li>{@link OutOfMemoryError} where there is no native memory to work in, which only polka dots and Kuwahara need.
 * </ul>
 */
public final class Effects {
    private Effects() {}

    // ---- Channels ----------------------------------------------------------------------------------------------------------

    /** Makes pure white transparent; {@link VelUIBitmapUtils#nativeChannelThrough3 the formula}. */
    public static void eraseWhite(Bitmap bitmap) {
        check(VelUIBitmapUtils.nativeChannelThrough3(written("bitmap", bitmap)));
    }

    /**
     * Shows one channel as grey; {@link VelUIBitmapUtils#nativePickUpChannel the formula}.
     *
     * @param channel 0 red, 1 green, 2 blue, 3 alpha; any other is an {@link IllegalArgumentException}
     */
    public static void pickChannel(Bitmap bitmap, int channel) {
        check(VelUIBitmapUtils.nativePickUpChannel(written("bitmap", bitmap), channel));
    }

    /** Inverts the colour within its alpha; {@link VelUIBitmapUtils#nativeToBitReverse the formula}. */
    public static void invert(Bitmap bitmap) {
        check(VelUIBitmapUtils.nativeToBitReverse(written("bitmap", bitmap)));
    }

    /** Grey of the greatest channel; {@link VelUIBitmapUtils#nativeBitmapAdd the formula}. */
    public static void greatestChannel(Bitmap bitmap) {
        check(VelUIBitmapUtils.nativeBitmapAdd(written("bitmap", bitmap), 0));
    }

    /** 255 less each colour channel, whatever the alpha; {@link VelUIBitmapUtils#nativeBitmapContort the formula}. */
    public static void complement(Bitmap bitmap) {
        check(VelUIBitmapUtils.nativeBitmapContort(written("bitmap", bitmap), 0));
    }

    // ---- Tones -------------------------------------------------------------------------------------------------------------

    /**
     * Grey between two levels, by luminance; {@link VelUIBitmapUtils#nativeBitmapGrapMapping the formula}.
     *
     * @param low the level for black, 0 to 255
     * @param high the level for white, 0 to 255
     */
    public static void greyMap(Bitmap bitmap, int low, int high) {
        check(VelUIBitmapUtils.nativeBitmapGrapMapping(written("bitmap", bitmap), low, high));
    }

    /** The tint of an old comic strip; {@link VelUIBitmapUtils#nativeToComicGray the formula}. */
    public static void comic(Bitmap bitmap) {
        check(VelUIBitmapUtils.nativeToComicGray(written("bitmap", bitmap)));
    }

    /**
     * Grey between two levels, by lightness; {@link VelUIBitmapUtils#nativeBitmapPSDesaturate the formula}.
     *
     * @param low the level for black, 0 to 255
     * @param high the level for white, 0 to 255
     */
    public static void desaturate(Bitmap bitmap, int low, int high) {
        check(VelUIBitmapUtils.nativeBitmapPSDesaturate(written("bitmap", bitmap), low, high));
    }

    /**
     * Scales every channel, alpha included; {@link VelUIBitmapUtils#nativeBitmapSetAlphaPercentage the formula}.
     *
     * @param factor 0 clears, 0.5 halves, 1 keeps, 2 doubles
     */
    public static void alpha(Bitmap bitmap, float factor) {
        check(VelUIBitmapUtils.nativeBitmapSetAlphaPercentage(written("bitmap", bitmap), factor));
    }

    /**
     * White where a pixel is bright, else black; {@link VelUIBitmapUtils#nativeBitmapSetBlackAndWhite the formula}.
     *
     * @param threshold the least brightness that becomes white, 0 to 255
     */
    public static void blackAndWhite(Bitmap bitmap, float threshold) {
        check(VelUIBitmapUtils.nativeBitmapSetBlackAndWhite(written("bitmap", bitmap), threshold));
    }

    /**
     * Grey above a luminance, nothing below it; {@link VelUIBitmapUtils#nativeBitmapDenoise the formula}.
     *
     * @param threshold the largest luminance that is dropped, 0 to 254
     */
    public static void denoise(Bitmap bitmap, int threshold) {
        check(VelUIBitmapUtils.nativeBitmapDenoise(written("bitmap", bitmap), threshold));
    }

    /**
     * A matte of the darkest and lightest tones of a grey picture; {@link VelUIBitmapUtils#nativeEraseGray the formula}.
     *
     * @param threshold the width of either band of tones, 0 to 127
     */
    public static void eraseGrey(Bitmap bitmap, int threshold) {
        check(VelUIBitmapUtils.nativeEraseGray(written("bitmap", bitmap), threshold, null, null));
    }

    // ---- Patterns ----------------------------------------------------------------------------------------------------------

    /**
     * Hatches in an ink, the denser the darker; {@link VelUIBitmapUtils#nativeBitmapCrosshatch the formula}.
     *
     * @param spacing the scale of the distance between lines, relative to the bitmap's height: about 0.02 to 0.1
     * @param width half the thickness of a line on the same scale: less than half of {@code spacing}
     * @param color the ink as 0xRRGGBB
     * @param clearBackground whether what lies between the lines becomes transparent, else white
     * @param angle the direction of the lines in radians; 0 leaves out the lines across
     */
    public static void crosshatch(
        Bitmap bitmap, double spacing, double width, int color, boolean clearBackground, double angle) {
        check(VelUIBitmapUtils.nativeBitmapCrosshatch(
            written("bitmap", bitmap), spacing, width, color, clearBackground, angle));
    }

    /**
     * Dots on a clear ground, each in the colour of its centre; {@link VelUIBitmapUtils#nativeBitmapPolkaDot the formula}.
     *
     * @param size the side of a dot's cell in pixels, 1 or more
     * @param radius the dot's radius as a fraction of half its cell, 0 to 1
     */
    public static void polkaDot(Bitmap bitmap, int size, float radius) {
        check(VelUIBitmapUtils.nativeBitmapPolkaDot(written("bitmap", bitmap), size, 0, radius));
    }

    /**
     * The difference of two bitmaps around middle grey; {@link VelUIBitmapUtils#nativeToEmboss the formula}.
     *
     * @param destination what is written, but for its alpha
     * @param minuend what is taken from, usually the picture
     * @param subtrahend what is taken away, usually the picture moved by a pixel or two
     */
    public static void relief(Bitmap destination, Bitmap minuend, Bitmap subtrahend) {
        ofOneSize("destination minuend subtrahend", destination, minuend, subtrahend);
        check(VelUIBitmapUtils.nativeToEmboss(written("destination", destination), minuend, subtrahend));
    }

    // ---- Colour ------------------------------------------------------------------------------------------------------------

    /**
     * The tone of old photographs; {@link VelUIBitmapUtils#nativeImageFilter3 the formula}.
     *
     * @param intensity 0 (unchanged) to 1 (sepia)
     */
    public static void sepia(Bitmap bitmap, float intensity) {
        check(VelUIBitmapUtils.nativeImageFilter3(written("bitmap", bitmap), intensity));
    }

    /**
     * Stronger or weaker colours; {@link VelUIBitmapUtils#nativeImageFilter5 the formula}.
     *
     * @param saturation 0 grey, 1 unchanged, about 3 for the strongest
     */
    public static void saturation(Bitmap bitmap, float saturation) {
        check(VelUIBitmapUtils.nativeImageFilter5(written("bitmap", bitmap), saturation));
    }

    /**
     * Brighter or darker; {@link VelUIBitmapUtils#nativeImageFilter6 the formula}.
     *
     * @param exposure in stops, about -3 to 3: 1 doubles, 0 keeps, -1 halves
     */
    public static void exposure(Bitmap bitmap, float exposure) {
        check(VelUIBitmapUtils.nativeImageFilter6(written("bitmap", bitmap), exposure));
    }

    /**
     * One tint over the luminance; {@link VelUIBitmapUtils#nativeImageFilter7 the formula}.
     *
     * @param color the tint's red, green and blue, 0 to 255
     * @param intensity 0 (the picture's colours) to 1 (the tint)
     */
    public static void monochrome(Bitmap bitmap, float[] color, float intensity) {
        check(VelUIBitmapUtils.nativeImageFilter7(written("bitmap", bitmap), array("color", color, 3), intensity));
    }

    /**
     * Takes a white haze away, or lays one on; {@link VelUIBitmapUtils#nativeImageFilter9 the formula}.
     *
     * @param distance the strength in the top row, -1 to less than 1; a negative one lays haze on
     * @param slope what is added to it on the way to the bottom row, where the sum stays below 1
     */
    public static void haze(Bitmap bitmap, float distance, float slope) {
        check(VelUIBitmapUtils.nativeImageFilter9(written("bitmap", bitmap), distance, slope));
    }

    // ---- Detail ------------------------------------------------------------------------------------------------------------

    /**
     * Sharpens by the four neighbours; {@link VelUIBitmapUtils#nativeImageFilter1 the formula}.
     *
     * @param source what is read
     * @param destination what is written, usually another bitmap than the source
     * @param sharpness 0 (unchanged) to about 2
     */
    public static void sharpen(Bitmap source, Bitmap destination, float sharpness) {
        ofOneSize("source destination", source, destination);
        check(VelUIBitmapUtils.nativeImageFilter1(source, written("destination", destination), sharpness));
    }

    /**
     * Blocks of one colour; {@link VelUIBitmapUtils#nativeImageFilter2 the formula}.
     *
     * @param blockWidth a block's width in units of {@code scale}, 1 or more
     * @param blockHeight a block's height in units of {@code scale}, 1 or more
     * @param scale the pixels in a unit, 1 or more
     */
    public static void pixelate(Bitmap bitmap, int blockWidth, int blockHeight, int scale) {
        check(VelUIBitmapUtils.nativeImageFilter2(written("bitmap", bitmap), blockWidth, blockHeight, scale));
    }

    /**
     * Smooths like a painting and keeps edges; {@link VelUIBitmapUtils#nativeImageFilter4 the formula}.
     *
     * @param radius the reach in pixels, 0 to about 10; the time grows with its square
     */
    public static void kuwahara(Bitmap bitmap, int radius) {
        check(VelUIBitmapUtils.nativeImageFilter4(written("bitmap", bitmap), radius));
    }

    /**
     * A weighted sum of a picture and its eight neighbours; {@link VelUIBitmapUtils#nativeImageFilter0 the formula}.
     *
     * @param topLeft the picture moved so that each pixel's upper left neighbour lies in its place; the others likewise
     * @param centre the picture itself, which is written
     * @param kernel nine weights in the order of the bitmaps
     * @param scale the factor for the eight outer weights; 1 takes them as they are
     */
    public static void emboss(Bitmap topLeft, Bitmap top, Bitmap topRight, Bitmap left, Bitmap centre, Bitmap right,
        Bitmap bottomLeft, Bitmap bottom, Bitmap bottomRight, float[] kernel, float scale) {
        ofOneSize("topLeft top topRight left centre right bottomLeft bottom bottomRight",
            topLeft, top, topRight, left, centre, right, bottomLeft, bottom, bottomRight);
        check(VelUIBitmapUtils.nativeImageFilter0(topLeft, top, topRight, left, written("centre", centre), right, bottomLeft,
            bottom, bottomRight, 0, 0, array("kernel", kernel, 9), scale));
    }

    // ---- Space -------------------------------------------------------------------------------------------------------------

    /**
     * Fades to a colour away from a centre; {@link VelUIBitmapUtils#nativeImageFilter8 the formula}.
     *
     * @param centre the centre's x and y as fractions of the width and the height, 0 to 1
     * @param color the colour's red and green, 0 to 255; its blue is always 0
     * @param start the distance at which the fading begins, in widths and heights: 0 to about 1
     * @param end the distance from which only the colour is left: more than {@code start}
     */
    public static void vignette(Bitmap bitmap, float[] centre, int[] color, float start, float end) {
        check(VelUIBitmapUtils.nativeImageFilter8(
            written("bitmap", bitmap), array("centre", centre, 2), array("color", color, 2), start, end));
    }

    /**
     * Turns the pixels around a centre; {@link VelUIBitmapUtils#nativeImageFilter10 the formula}.
     *
     * @param source what is read
     * @param destination what is written, usually another bitmap than the source; where no pixel arrives it stays as it is
     * @param centreX the centre's column in pixels
     * @param centreY the centre's row in pixels
     * @param radius the radius of what turns, in pixels, more than 0
     * @param angle the angle at the centre in units of 8 radians, about -1 to 1; a positive one turns clockwise
     */
    public static void swirl(
        Bitmap source, Bitmap destination, float centreX, float centreY, float radius, double angle) {
        ofOneSize("source destination", source, destination);
        check(VelUIBitmapUtils.nativeImageFilter10(
            source, written("destination", destination), centreX, centreY, radius, angle));
    }
}
