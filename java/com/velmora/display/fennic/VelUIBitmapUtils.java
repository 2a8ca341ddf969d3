package com.velmora.display.fennic;

import android.graphics.Bitmap;

/**
 * Icon analysis, layer blends, effects and filters on {@link Bitmap}s, done by the native library {@code libfennic}.
 *
 * <p><b>By name.</b> {@link Blend}, {@link StraightBlend}, {@link Effects} and {@link IconMetrics} call these natives under
 * plain names, look at the arguments first, and throw exceptions with words instead of returning a status.
 *
 * <p><b>Pixels.</b> A pixel is four bytes, red, green, blue and alpha, each 0 to 255, its colour premultiplied by its alpha:
 * RGBA_8888 to native code, {@code Bitmap.Config.ARGB_8888} to Java. An operation works in place, at once, without scaling or
 * offset: the layer's pixel of the same row and column belongs to the base's pixel. A bitmap that is written must be mutable;
 * that is for the caller to see to, for an immutable one is written all the same. In the formulas:
 * <ul>
 * <li>{@code c1}, {@code a1} are a colour channel and the alpha of the base, {@code c2}, {@code a2} those of the layer (or
 *     mask); {@code r}, {@code g}, {@code b}, {@code c}, {@code a} are red, green, blue, any of the three, and alpha where only
 *     one bitmap takes part. An assignment to {@code c1} or {@code c} holds for red, green and blue alike.
 * <li>{@code K} is 0.00392157f, a shade above 1/255.
 * <li>{@code clamp(v, top)} is {@code v} held between 0 and {@code top}, and 0 for NaN.
 * <li>{@code mix(f)} is {@code clamp((255 - a2) * c1 * K + f * a2 * K, a1)}: the term {@code f} laid over the base with the
 *     layer's alpha as its opacity; no channel exceeds the base's alpha.
 * <li>{@code trunc(v)} drops the fraction. Every result is truncated, never rounded, when it is stored as a byte; a value
 *     outside 0 to 255 that no clamp has held wraps modulo 256.
 * <li>A <i>straight</i> channel is one without premultiplication, {@code c * 255 / a}. The image filters truncate it to a whole
 *     number, take the byte as it is where {@code a} is 0 or 255, and premultiply their result again by {@code a * K}.
 * </ul>
 * Alpha keeps its value, and the layer is not written, unless a method says otherwise.
 *
 * <p><b>Status.</b> Most methods return a status: 0 for success, or a negative result of the platform's bitmap interface: -1
 * bad parameter, -2 Java exception, -3 allocation failed. A bitmap of another format than RGBA_8888 gives 0, and nothing is
 * changed. Where the second of two bitmaps, or a later one of three, cannot be locked, nothing is changed either, and the
 * status is that of unlocking the first, usually 0. A method that measures has no status: it returns 0, or writes zeros into
 * the caller's array, whenever it fails.
 *
 * <p><b>Refused.</b> With status -1, before anything is locked or changed: a layer or mask that is narrower or lower than its
 * base; any other second or further bitmap whose memory (height times bytes per row) does not cover what the operation reads or
 * writes there; a channel number outside 0 to 3. A pixel that would be moved outside of its destination is dropped; a sample
 * from outside a bitmap is the nearest pixel of the bitmap. From a null array zeros are read; what would be written to it is
 * dropped. An array that is too short raises an {@link ArrayIndexOutOfBoundsException}, after the operation has run with zeros
 * in the place of what it could not read, and receives nothing.
 *
 * <p><b>Threads.</b> Every method runs to completion on the calling thread and may be called on any. Nothing is kept between
 * calls. Calls on different bitmaps are independent; calls that share a bitmap are for the caller to keep apart.
 *
 * <p><b>Log.</b> Two overlays, {@link #nativeBitmapHandle13} and {@link #nativeBitmapHandle13B}, log every call:
 * {@code Rect is 0, 0, width, height} of the base. The line goes to the platform's log, with the priority debug and the tag
 * {@code jni/KorvGraphics2D}, and without a line break to the process's standard error stream. On Android
 * {@code adb logcat jni/KorvGraphics2D:S} leaves it out of what is shown; no property can silence that tag, for none may have a
 * slash in its name. On a desktop JVM the log is the error stream as well, and {@code ANDROID_LOG_TAGS='*:S'} in the environment
 * silences it; the other copy is not what {@link System#setErr} redirects: {@code 2>/dev/null} is.
 * {@link #nativeBitmapHandle13C} and {@link #nativeTkPSBlendingMode} log nothing.
 *
 * <p><b>Sources.</b> A blend marked "W3C blending" follows the mode of its name in
 * <a href="https://www.w3.org/TR/compositing-1/#blending">Compositing and Blending Level 1, section 10</a>; the special cases
 * at 0 and 255 are those given with the method. Overlay, soft light, hard light and exclusion take {@code p * q / 128} for the
 * textbook's {@code 2 * p * q / 255}; the blends by number do not.
 */
public final class VelUIBitmapUtils {
    static {
        NativeLibrary.load();
    }

    private VelUIBitmapUtils() {}

    // ---- Icon analysis -----------------------------------------------------------------------------------------------------

    /**
     * Counts the pixels that have any alpha: {@code a != 0}. Colour does not matter.
     *
     * @param bitmap the bitmap to measure
     * @return the number of visible pixels; 0 on failure
     */
    public static native int nativeGetBitmapVisiblePointNum(Bitmap bitmap);

    /**
     * Counts the fully transparent pixels: {@code a == 0}. Colour does not matter.
     *
     * @param bitmap the bitmap to measure
     * @return the number of transparent pixels; 0 on failure
     */
    public static native int nativeGetBitmapInvisiblePointNum(Bitmap bitmap);

    /**
     * Measures how much of an icon lies outside its silhouette: the share of pixels before the first and after the last visible
     * pixel of their row. A pixel is visible where {@code a > threshold}; a row without one counts as a whole. Transparent
     * pixels between the first and the last visible one are not counted.
     *
     * @param bitmap the bitmap to measure
     * @param threshold the largest alpha that still counts as invisible, 0 to 255; with NaN nothing is visible
     * @return a fraction from 0 to 1, not a percentage; 0 on failure and for an empty bitmap
     */
    public static native float nativeGetBitmapInvisibleAreaPrecent(Bitmap bitmap, float threshold);

    /**
     * Averages the colour of those pixels of a rectangle that have at least a given alpha: {@code a >= minAlpha}. The averages
     * are of the premultiplied bytes and are truncated; zeros where no pixel takes part.
     *
     * <p>The rectangle is clipped to the bitmap. A negative {@code x} or {@code y} becomes 0 without shortening the rectangle:
     * {@code x = -5} with {@code width = 10} covers the columns 0 to 9.
     *
     * <p>The sums of the channels have 32 bits and wrap: above 16,843,009 pixels that take part, which is 4104 by 4104, the
     * averages may be wrong.
     *
     * @param bitmap the bitmap to measure
     * @param x the rectangle's first column
     * @param y the rectangle's first row
     * @param width the rectangle's width in pixels; 0 gives zeros without touching the bitmap
     * @param height the rectangle's height in pixels; 0 gives zeros without touching the bitmap
     * @param average receives red, green, blue and alpha, 0 to 255, in its first four elements
     * @param minAlpha the least alpha that takes part; 0 lets every pixel take part, a negative number none
     */
    public static native void nativeGetBitmapAverageColorInRect(
        Bitmap bitmap, int x, int y, int width, int height, int[] average, int minAlpha);

    /**
     * Averages the colour of those pixels of a rectangle that have any alpha: {@code a != 0}. Otherwise as
     * {@link #nativeGetBitmapAverageColorInRect}.
     *
     * @param bitmap the bitmap to measure
     * @param x the rectangle's first column
     * @param y the rectangle's first row
     * @param width the rectangle's width in pixels; 0 gives zeros without touching the bitmap
     * @param height the rectangle's height in pixels; 0 gives zeros without touching the bitmap
     * @param average receives red, green, blue and alpha, 0 to 255, in its first four elements
     */
    public static native void nativeGetBitmapAverageColorInRect2(
        Bitmap bitmap, int x, int y, int width, int height, int[] average);

    /**
     * Finds the tight rectangle around an icon's visible pixels, those with {@code a > threshold}, so that its transparent
     * border can be cut off.
     *
     * <p>Four scans run one after the other, each within what the earlier ones have found: top and left look at neither the
     * last row nor the last column, bottom not at the last column, right not at the row {@code bottom}. A scan that finds
     * nothing leaves 0. A bitmap of another format than RGBA_8888 gives itself as a whole.
     *
     * @param bitmap the bitmap to measure
     * @param threshold the largest alpha that still counts as invisible; -1 makes every pixel visible
     * @param rect receives left, top, right and bottom, all inclusive, in its first four elements
     */
    public static native void nativeGetBitmapTransparentCutOffRect(Bitmap bitmap, int threshold, int[] rect);

    /**
     * Tells whether an icon's box is so far from square that it needs a square canvas, and computes that canvas. The box is far
     * from square where {@code w / h} of the values passed in differs from 1 by more than 0.1. On every call {@code box[2]} and
     * {@code box[3]} grow by 1, to W and H. The canvas is {@code {(H - W) / 2, 0, H, H}} where {@code H >= W}, else
     * {@code {0, (W - H) / 2, W, W}}.
     *
     * @param box four ints, the third and fourth being w and h: the box's width and height less one; both are incremented
     * @param square receives the icon's x and y inside the canvas and twice the canvas's side; left alone for {@code false}
     * @return whether the box is far from square; a box of 0 by 0 is not
     */
    public static native boolean nativeGetIconBitmapInfo(int[] box, int[] square);

    /**
     * Fits a source size to a scaled target size and keeps the source's aspect ratio. The target becomes
     * {@code A = scale * targetWidth} and {@code B = scale * targetHeight}, both truncated to even whole numbers; the aspect is
     * {@code w / h}.
     * <ul>
     * <li>A source with a side below 1 stays as it is; one of exactly A by B too.
     * <li>Where it is larger in a dimension, {@code w - A <= h - B} gives {@code {aspect * B, A}}, else
     *     {@code {B, A / aspect}}: the target's values are crossed over, which shows when it is not square.
     * <li>Otherwise {@code A - w > B - h} gives {@code {A, A / aspect}}, else {@code {aspect * B, B}}.
     * </ul>
     *
     * @param useFirst whether {@code scaleA} is the scale, else {@code scaleB}
     * @param scaleA the first scale
     * @param scaleB the second scale
     * @param size the source's width w and height h, replaced by the fitted ones
     * @param targetWidth the target's width before it is scaled
     * @param targetHeight the target's height before it is scaled
     */
    public static native void nativeGetSourceSize(
        boolean useFirst, float scaleA, float scaleB, int[] size, int targetWidth, int targetHeight);

    // ---- Darkening blends --------------------------------------------------------------------------------------------------

    /**
     * Darken: keeps the darker of both channels. {@code c1 = mix(min(c1, c2))}, see {@link VelUIBitmapUtils}. W3C blending,
     * here on premultiplied channels.
     *
     * @param base the bitmap that is written
     * @param layer the bitmap laid over it
     * @return the status
     */
    public static native int nativeBitmapHandle3(Bitmap base, Bitmap layer);

    /**
     * Multiply: darkens the base by the layer, as two slides on one projector. {@code c1 = mix(c1 * c2 * K)}, see
     * {@link VelUIBitmapUtils}. W3C blending, here on premultiplied channels.
     *
     * @param base the bitmap that is written
     * @param layer the bitmap laid over it
     * @return the status
     */
    public static native int nativeBitmapHandle4(Bitmap base, Bitmap layer);

    /**
     * Colour burn: darkens the base the more the darker the layer is; a fully transparent layer pixel erases the base pixel,
     * alpha included. {@code c1 = clamp(c1 - (a1 - c1) * (255 - c2) / c2, a1)}, and 0 where {@code c2 = 0}. The layer's alpha
     * is read for nothing but the erasing. W3C blending with the base's alpha as full scale.
     *
     * @param base the bitmap that is written
     * @param layer the bitmap laid over it
     * @return the status
     */
    public static native int nativeBitmapHandle5(Bitmap base, Bitmap layer);

    /**
     * Colour burn B: colour burn with the layer's alpha as full scale and opacity; the base's alpha is scaled by the layer's,
     * and a fully transparent layer pixel erases the base pixel. With {@code P = a1 * a2 * K} it is
     * {@code c1 = clamp(a2 * K * (c1 - (a1 - c1) * (a2 - c2) / c2), P)}, and 0 where {@code c2 = 0}; then {@code a1 = P}.
     *
     * @param base the bitmap that is written, alpha included
     * @param layer the bitmap laid over it
     * @return the status
     */
    public static native int nativeBitmapHandle5B(Bitmap base, Bitmap layer);

    /**
     * Linear burn: adds the layer to the base and takes an offset away; a sum above 255 wraps.
     * {@code c1 = max(c1 + (c2 - offset) * a1 * K, a1 * K)}. The floor makes 1 the least channel under an opaque base. There is
     * no ceiling: with an offset below the layer's channel a bright base turns dark. The layer's alpha is not read.
     *
     * @param base the bitmap that is written
     * @param layer the bitmap added to it
     * @param offset what is taken away on the scale 0 to 255; 255 is the usual linear burn and cannot wrap
     * @return the status
     */
    public static native int nativeBitmapHandle6(Bitmap base, Bitmap layer, int offset);

    /**
     * Darker colour: keeps the darker of the two colours as a whole, judged by the sum of red, green and blue. The base stays
     * where {@code a1 * K * (r2 + g2 + b2) > r1 + g1 + b1}; otherwise, equality included, {@code c1 = a1 * K * c2}. The layer's
     * alpha is not read.
     *
     * @param base the bitmap that is written
     * @param layer the bitmap compared with it
     * @return the status
     */
    public static native int nativeBitmapHandle7(Bitmap base, Bitmap layer);

    // ---- Lightening blends -------------------------------------------------------------------------------------------------

    /**
     * Lighten: keeps the lighter of both channels. {@code c1 = max(c1, a1 * K * c2)}. The layer's alpha is not read. W3C
     * blending, with the layer scaled by the base's alpha.
     *
     * @param base the bitmap that is written
     * @param layer the bitmap compared with it
     * @return the status
     */
    public static native int nativeBitmapHandle8(Bitmap base, Bitmap layer);

    /**
     * Screen: brightens the base by the layer, as two projectors on one wall.
     * {@code c1 = mix(a1 - (a1 - c1) * (a2 - c2) / a1)}, see {@link VelUIBitmapUtils}; a fully transparent base pixel stays as
     * it is. W3C blending with the base's alpha as full scale.
     *
     * @param base the bitmap that is written
     * @param layer the bitmap laid over it
     * @return the status
     */
    public static native int nativeBitmapHandle9(Bitmap base, Bitmap layer);

    /**
     * Colour dodge: brightens the base the more the brighter the layer is; blue is driven by the layer's red too. In whole
     * numbers {@code c1 = min(c1 + c2 * c1 / (255 - c2), a1)} for red and green and
     * {@code b1 = min(b1 + r2 * b1 / (255 - b2), a1)} for blue; {@code a1} where the divisor is 0. The layer's alpha is not
     * read. W3C blending, but for blue.
     *
     * @param base the bitmap that is written
     * @param layer the bitmap laid over it
     * @return the status
     */
    public static native int nativeBitmapHandle10(Bitmap base, Bitmap layer);

    /**
     * Linear dodge: adds the layer to the base. {@code c1 = min(c1 + c2 * a1 * K, a1)}. The layer's alpha is not read.
     *
     * @param base the bitmap that is written
     * @param layer the bitmap added to it
     * @return the status
     */
    public static native int nativeBitmapHandle11(Bitmap base, Bitmap layer);

    /**
     * Lighter colour: keeps the lighter of the two colours as a whole, judged by the sum of red, green and blue. The base stays
     * where {@code a1 * K * (r2 + g2 + b2) < r1 + g1 + b1}; otherwise, equality included, {@code c1 = a1 * K * c2}. The layer's
     * alpha is not read.
     *
     * @param base the bitmap that is written
     * @param layer the bitmap compared with it
     * @return the status
     */
    public static native int nativeBitmapHandle12(Bitmap base, Bitmap layer);

    // ---- Contrast blends ---------------------------------------------------------------------------------------------------

    /**
     * Overlay: multiplies where the base is dark and screens where it is light.
     * {@code c1 = clamp(c1 <= a1 / 2 ? c1 * c2 / 128 : a1 - (255 - c2) * (a1 - c1) / 128, a1)}. The layer's alpha is not read.
     * Every call logs the base's size, see {@link VelUIBitmapUtils}. W3C blending with the base's alpha as full scale.
     *
     * @param base the bitmap that is written
     * @param layer the bitmap laid over it
     * @return the status
     */
    public static native int nativeBitmapHandle13(Bitmap base, Bitmap layer);

    /**
     * Overlay B: overlay under the product of both alphas, which becomes the base's alpha. With {@code P = a1 * a2 * K} it is
     * {@code c1 = clamp(c1 <= a1 / 2 ? c1 * c2 / 128 : P - (a2 - c2) * (a1 - c1) / 128, P)}; then {@code a1 = P}. Every call
     * logs the base's size, see {@link VelUIBitmapUtils}.
     *
     * @param base the bitmap that is written, alpha included
     * @param layer the bitmap laid over it
     * @return the status
     */
    public static native int nativeBitmapHandle13B(Bitmap base, Bitmap layer);

    /**
     * Overlay C: overlay with the layer's straight colour, laid over the base by the layer's alpha. With
     * {@code d = c2 * 255 / a2}, or 0 where {@code a2 = 0}, it is
     * {@code c1 = mix(c1 <= a1 / 2 ? d * c1 / 128 : a1 - (255 - d) * (a1 - c1) / 128)}, see {@link VelUIBitmapUtils}.
     *
     * @param base the bitmap that is written
     * @param layer the bitmap laid over it
     * @return the status
     */
    public static native int nativeBitmapHandle13C(Bitmap base, Bitmap layer);

    /**
     * Soft light: darkens or lightens the base gently, as a diffuse lamp would. With {@code x = c1 / a1} it is
     * {@code c1 = mix(f)}, see {@link VelUIBitmapUtils}, where {@code f = c2 * c1 / 128 + (a2 - 2 * c2) * x * x} for
     * {@code c2 <= a2 / 2} and {@code f = (a2 - c2) * c1 / 128 + (2 * c2 - a2) * sqrt(x)} otherwise. A fully transparent base
     * pixel stays as it is. W3C blending with the square root for every base, dark ones too.
     *
     * @param base the bitmap that is written
     * @param layer the bitmap laid over it
     * @return the status
     */
    public static native int nativeBitmapHandle14(Bitmap base, Bitmap layer);

    /**
     * Hard light: multiplies where the layer is dark and screens where it is light.
     * {@code c1 = clamp(c2 <= 128 ? c1 * c2 / 128 : a1 - (255 - c2) * (a1 - c1) / 128, a1)}. The layer's alpha is not read. W3C
     * blending with the base's alpha as full scale.
     *
     * @param base the bitmap that is written
     * @param layer the bitmap laid over it
     * @return the status
     */
    public static native int nativeBitmapHandle15(Bitmap base, Bitmap layer);

    /**
     * Hard light B: hard light under the product of both alphas, which becomes the base's alpha. With
     * {@code T = trunc(a1 * a2 * K)} it is {@code c1 = clamp(c2 <= 128 ? c1 * c2 / 128 : T - (255 - c2) * (T - c1) / 128, T)};
     * then {@code a1 = T}.
     *
     * @param base the bitmap that is written, alpha included
     * @param layer the bitmap laid over it
     * @return the status
     */
    public static native int nativeBitmapHandle15B(Bitmap base, Bitmap layer);

    /**
     * Vivid light: darkens the base where the layer is dark and brightens it where the layer is bright.
     * {@code c1 = mix(c1 - (a2 - 2 * c2) * (a1 - c1) / (2 * c2))}, see {@link VelUIBitmapUtils}, one formula for dark and light
     * layers alike. A channel becomes 0 where {@code c2} is 0, and where it is 255 too; a fully transparent layer pixel leaves
     * the base pixel as it is.
     *
     * @param base the bitmap that is written
     * @param layer the bitmap laid over it
     * @return the status
     */
    public static native int nativeBitmapHandle16(Bitmap base, Bitmap layer);

    /**
     * Linear light: adds twice the layer and takes full scale away. {@code c1 = mix(c1 + 2 * c2 * a1 * K - a1)}, see
     * {@link VelUIBitmapUtils}.
     *
     * @param base the bitmap that is written
     * @param layer the bitmap laid over it
     * @return the status
     */
    public static native int nativeBitmapHandle17(Bitmap base, Bitmap layer);

    /**
     * Pin light: holds the base between two bounds that the layer sets, {@code lo = (2 * c2 - 255) * a1 * K} and
     * {@code hi = 2 * c2 * a1 * K}. {@code c1 = clamp(lo >= c1 ? lo : min(c1, hi), a1)}. The layer's alpha is not read.
     *
     * @param base the bitmap that is written
     * @param layer the bitmap that bounds it
     * @return the status
     */
    public static native int nativeBitmapHandle18(Bitmap base, Bitmap layer);

    /**
     * Hard mix: makes each channel either nothing or full. {@code c1 = c1 + c2 * a1 * K >= a1 ? a1 : 0}. The layer's alpha is
     * not read.
     *
     * @param base the bitmap that is written
     * @param layer the bitmap added to it
     * @return the status
     */
    public static native int nativeBitmapHandle19(Bitmap base, Bitmap layer);

    // ---- Comparative blends ------------------------------------------------------------------------------------------------

    /**
     * Difference: the distance between both channels. {@code c1 = abs(c1 - c2 * a1 * K)}. The layer's alpha is not read. W3C
     * blending, with the layer scaled by the base's alpha.
     *
     * @param base the bitmap that is written
     * @param layer the bitmap compared with it
     * @return the status
     */
    public static native int nativeBitmapHandle20(Bitmap base, Bitmap layer);

    /**
     * Exclusion: a difference of lower contrast. {@code c1 = c1 + c2 * a1 * K - c1 * c2 / 128}, not clamped. Under a
     * translucent base the result can be negative: in the whole groups of eight pixels that a row begins with it is then 0, in
     * the pixels after them (in all pixels where the rows of base and layer overlap in memory) it wraps modulo 256. The layer's
     * alpha is not read. W3C blending, with the layer scaled by the base's alpha.
     *
     * @param base the bitmap that is written
     * @param layer the bitmap compared with it
     * @return the status
     */
    public static native int nativeBitmapHandle21(Bitmap base, Bitmap layer);

    /**
     * Subtract: takes the layer away from the base. {@code c1 = max(c1 - c2 * a1 * K, 0)}. The layer's alpha is not read.
     *
     * @param base the bitmap that is written
     * @param layer the bitmap taken away
     * @return the status
     */
    public static native int nativeBitmapHandle22(Bitmap base, Bitmap layer);

    /**
     * Divide: brightens the base by dividing it by the layer's straight colour. {@code c1 = mix(c1 * a1 / (c2 * 255 / a2))},
     * see {@link VelUIBitmapUtils}. Where {@code c2 = 0} and {@code c1} is not,
     * {@code c1 = clamp((255 - a2) * c1 * K + a2, a1)}; where both are 0 the channel stays 0.
     *
     * @param base the bitmap that is written
     * @param layer the bitmap it is divided by
     * @return the status
     */
    public static native int nativeBitmapHandle23(Bitmap base, Bitmap layer);

    /**
     * Hue: keeps the base's hue and value (HSV) and takes the saturation from the layer. Both pixels are converted from
     * straight whole numbers, a transparent one as (0, 0, 0); the result is premultiplied by the base's alpha:
     * {@code c1 = a1 * 255 * K * K * C}.
     *
     * <p>Every pixel leaves three arrays behind, 36 bytes of native memory, that are never released unless the library is built
     * with FENNIC_LEAK_FREE. Where memory runs out, the pixels concerned stay as they are and the status is -3.
     *
     * @param base the bitmap that is written
     * @param layer the bitmap that gives the saturation
     * @return the status
     */
    public static native int nativeBitmapHandle24(Bitmap base, Bitmap layer);

    // ---- Blends by number --------------------------------------------------------------------------------------------------

    /**
     * Blends the layer into the base by a mode's number, on straight colour, and composites with both alphas.
     *
     * <p>Where the layer's pixel is transparent the base's stays; where only the base's is, it becomes the layer's, bytes and
     * all. For two visible pixels, with the straight {@code A = c1 * 255 / a1} and {@code B = c2 * 255 / a2} and the mode's
     * {@code f}:
     * <pre>{@code
     * O  = clamp((65025 - (255 - a1) * (255 - a2)) * K, 255)              the new alpha
     * T  = a1 * a2 + (255 - a2) * a1 + (255 - a1) * a2
     * r  = (A * (255 - a2) * a1 + B * (255 - a1) * a2 + clamp(f, 255) * a1 * a2) / T
     * c1 = clamp(clamp(r, 255) * O * K, O)
     *
     *  3 darken         min(A, B)
     *  4 multiply       A * B * K
     *  5 colour burn    A - (255 - A) * (255 - B) / B;  0 where B = 0
     *  6 linear burn    A + B - 255
     *  7 darker colour  the darker pixel's straight channel
     *  8 lighten        max(A, B)
     *  9 screen         255 - (255 - A) * (255 - B) * K
     * 10 colour dodge   A + A * B / (255 - B);  255 where B = 255
     * 11 linear dodge   A + B
     * 12 lighter colour the lighter pixel's straight channel
     * 13 overlay        A <= 128 ? 2 * A * B * K : 255 - 2 * (255 - A) * (255 - B) * K
     * 14 soft light     B <= 128 ? 2 * A * B * K + (A * K) * (A * K) * (255 - 2 * B)
     *                            : 2 * A * (255 - B) * K + sqrt(A * K) * (2 * B - 255)
     * 15 hard light     B <= 128 ? 2 * A * B * K : 255 - 2 * (255 - A) * (255 - B) * K
     * 16 vivid light    B <= 128 ? A - (255 - A) * (255 - 2 * B) / (2 * B) : A + A * (2 * B - 255) / (2 * (255 - B));
     *                   0 where B = 0, 255 where B >= 255
     * 17 linear light   A + 2 * B - 255
     * 18 pin light      A <= 2 * B - 255 ? 2 * B - 255 : min(A, 2 * B)
     * 19 hard mix       A + B >= 255 ? 255 : 0
     * 20 difference     abs(A - B)
     * 21 exclusion      A + B - 2 * A * B * K
     * 22 subtract       A - B
     * 23 divide         A * 255 / B;  255 where B = 0
     * }</pre>
     * Any other number blends with {@code f = 0}. Modes 7 and 12 judge a pixel by {@code 0.3 r + 0.6 g + 0.1 b} of its
     * premultiplied channels and keep the base's colour where both are equal. The composition, and the modes that the W3C's
     * text has by name, are W3C blending, see {@link VelUIBitmapUtils}; soft light takes the square root for every base.
     *
     * <p>In modes 7 and 12 every pixel that both bitmaps show leaves an array behind, 12 bytes of native memory, that is never
     * released unless the library is built with FENNIC_LEAK_FREE. Where memory runs out the status is -3.
     *
     * @param base the bitmap that is written, alpha included
     * @param layer the bitmap laid over it
     * @param mode the number of the mode, 3 to 23
     * @return the status
     */
    public static native int nativeTkPSBlendingMode(Bitmap base, Bitmap layer, int mode);

    // ---- Effects on one bitmap, and on two or three ------------------------------------------------------------------------

    /**
     * Ends the process on any bitmap that has a pixel: never call this. It converts the first pixel to HSV and aborts. No pixel
     * is ever written.
     *
     * @param bitmap the bitmap; only one without pixels, of another format, or one that cannot be locked lets the call return
     * @return the status, if it returns
     */
    public static native int nativeBitmapGetHSV(Bitmap bitmap);

    /**
     * Maps the colours to greys between two levels: black becomes {@code low}, white {@code high}. With
     * {@code gray = 0.2125 r + 0.7154 g + 0.0721 b} every channel becomes {@code gray * (high - low) / 255 + low * a * K}
     * ({@code K} in double precision), not clamped: levels outside 0 to 255 wrap. The weights are close to the luma weights of
     * Rec. 709.
     *
     * @param bitmap the bitmap that is written
     * @param low the level for black, 0 to 255
     * @param high the level for white, 0 to 255
     * @return the status
     */
    public static native int nativeBitmapGrapMapping(Bitmap bitmap, int low, int high);

    /**
     * Draws a relief: the difference of two bitmaps around a middle grey, typically of an image and a shifted copy of it. With
     * channels {@code c2} of the minuend and {@code c3} of the subtrahend, the destination's channel becomes
     * {@code max(-128, min(c2 - c3, 127)) + 128}. Its own colour is not read.
     *
     * <p>All three are walked with the destination's bytes per row, so they must agree in width, height and row padding; only a
     * bitmap whose memory is too small is refused.
     *
     * @param destination the bitmap that is written, but for its alpha
     * @param minuend the bitmap the other is taken from
     * @param subtrahend the bitmap that is taken away
     * @return the status
     */
    public static native int nativeToEmboss(Bitmap destination, Bitmap minuend, Bitmap subtrahend);

    /**
     * Inverts the colours within their alpha, as a negative: {@code c = a - c}. For an opaque pixel that is {@code 255 - c}; a
     * channel above its alpha, which a premultiplied pixel does not have, wraps.
     *
     * @param bitmap the bitmap that is written
     * @return the status
     */
    public static native int nativeToBitReverse(Bitmap bitmap);

    /**
     * Fades the image by the mask's red: white keeps a pixel, black clears it. {@code c1 = c1 * (r2 * K)}, and
     * {@code a1 = a1 * (r2 * K)} likewise.
     *
     * @param image the bitmap that is written, alpha included
     * @param mask the bitmap whose red is read, at least as large
     * @return the status
     */
    public static native int nativeChannelThrough(Bitmap image, Bitmap mask);

    /**
     * Fades the image by the mask's inverted red: opaque black keeps a pixel, white clears it, and so does transparency.
     * {@code c1 = c1 * ((a2 - r2) * K)}, and {@code a1 = a1 * ((a2 - r2) * K)} likewise. A mask pixel whose red exceeds its
     * alpha (none that is premultiplied) clears.
     *
     * @param image the bitmap that is written, alpha included
     * @param mask the bitmap whose red and alpha are read, at least as large
     * @return the status
     */
    public static native int nativeChannelThrough2(Bitmap image, Bitmap mask);

    /**
     * Makes pure white transparent: where {@code r = g = b = a} and {@code a} is not 0, all four bytes become 0. Every other
     * pixel stays as it is.
     *
     * @param bitmap the bitmap that is written, alpha included
     * @return the status
     */
    public static native int nativeChannelThrough3(Bitmap bitmap);

    /**
     * Shows one channel as grey: red, green and blue all become the byte of the chosen channel, premultiplied as it stands.
     *
     * @param bitmap the bitmap that is written
     * @param channel 0 red, 1 green, 2 blue, 3 alpha; any other number is refused
     * @return the status
     */
    public static native int nativePickUpChannel(Bitmap bitmap, int channel);

    /**
     * Tints an image in the manner of an old comic strip. With {@code s1 = r - b + 2 * g} and {@code s2 = r - g + 2 * b} it is
     * {@code r = min(s1 * K * r, 255)}, {@code g = min(s2 * K * r, 255)}, {@code b = min(s2 * K * g, 255)}, all from the
     * channels before the call. A negative sum counts as a huge one (unsigned): it gives 255, or 0 where its factor {@code r}
     * or {@code g} is 0.
     *
     * @param bitmap the bitmap that is written
     * @return the status
     */
    public static native int nativeToComicGray(Bitmap bitmap);

    /**
     * Takes the colour away and maps what is left between two levels: black becomes {@code low}, white {@code high}. With
     * {@code L = (max(r, g, b) + min(r, g, b)) / 2}, the lightness of HSL, every channel becomes
     * {@code low * a * K + (high - low) * L / 255}, not clamped: levels outside 0 to 255 wrap.
     *
     * @param bitmap the bitmap that is written
     * @param low the level for black, 0 to 255
     * @param high the level for white, 0 to 255
     * @return the status
     */
    public static native int nativeBitmapPSDesaturate(Bitmap bitmap, int low, int high);

    /**
     * Scales the opacity: all four channels become {@code min(c * factor, 255)}.
     *
     * @param bitmap the bitmap that is written, alpha included
     * @param factor a multiplier, not a percentage: 0.5 halves, 1 keeps, 2 doubles; 0, a negative one and NaN clear
     * @return the status
     */
    public static native int nativeBitmapSetAlphaPercentage(Bitmap bitmap, float factor);

    /**
     * Measures the median brightness of the pixels with any alpha, where brightness is
     * {@code (0.299 r + 0.587 g + 0.114 b) * 255 / a}, by the luma weights of Rec. 601. For an even number of pixels it is the
     * upper one of the two in the middle.
     *
     * @param bitmap the bitmap to measure
     * @return the median, 0 to 255; 0 on failure and where every pixel is transparent
     */
    public static native float nativeBitmapGetMedian(Bitmap bitmap);

    /**
     * Turns every pixel white or black by its brightness {@code (0.299 r + 0.587 g + 0.114 b) * 255 / a}, by the luma weights
     * of Rec. 601: {@code c = brightness >= threshold ? a : 0}. Transparent pixels stay as they are.
     *
     * @param bitmap the bitmap that is written
     * @param threshold the least brightness that becomes white, 0 to 255
     * @return the status
     */
    public static native int nativeBitmapSetBlackAndWhite(Bitmap bitmap, float threshold);

    /**
     * Redraws an image as a crosshatch of ink lines, denser where it is darker. A pixel's luminance
     * {@code (0.2125 r + 0.7154 g + 0.0721 b) * 255 / a}, truncated, decides which families of lines reach it: one always, a
     * second at right angles below 192, the first again below 128 and the second again up to 76, each shifted by half a
     * spacing.
     *
     * <p>With {@code t = tan(angle)} for the first family and {@code t = -1 / tan(angle)} for the second,
     * {@code S = height * sqrt(0.5) * spacing / atan(1 / t)}, {@code W = abs(S * width / spacing)} and
     * {@code u = height - y - t * x} ({@code u - S / 2} for a shifted family), a line passes where
     * {@code abs(fmod(u, S)) <= W}, but never where {@code -W <= u <= 0}. At an angle of exactly 0 the second family is
     * missing. Inked pixels take the colour premultiplied by their alpha; transparent ones stay as they are.
     *
     * @param bitmap the bitmap that is written
     * @param spacing the scale of the distance between lines, relative to the bitmap's height
     * @param width half the thickness of a line, on the scale of {@code spacing}
     * @param color the ink as 0xRRGGBB; the upper eight bits are ignored
     * @param clearBackground whether pixels without ink become transparent black, alpha included; else they become white under
     *     their alpha
     * @param angle the direction of the lines in radians
     * @return the status
     */
    public static native int nativeBitmapCrosshatch(
        Bitmap bitmap, double spacing, double width, int color, boolean clearBackground, double angle);

    /**
     * Turns an image grey and drops its dark noise. With {@code L = 0.2125 r + 0.7154 g + 0.0721 b} of the premultiplied
     * channels, every channel becomes {@code L <= threshold ? 0 : (L - threshold) * a / (255 - threshold)}; where that is 0
     * after truncation alpha becomes 0 too. Transparent pixels stay as they are.
     *
     * @param bitmap the bitmap that is written, alpha included
     * @param threshold the largest luminance that is dropped, 0 to 255
     * @return the status
     */
    public static native int nativeBitmapDenoise(Bitmap bitmap, int threshold);

    /**
     * Turns an image grey by its brightest channel: {@code c = max(r, g, b)}. Transparent pixels stay as they are.
     *
     * @param bitmap the bitmap that is written
     * @param ignored not read
     * @return the status
     */
    public static native int nativeBitmapAdd(Bitmap bitmap, float ignored);

    /**
     * Adds the layer to the base on straight colour and composites with both alphas.
     *
     * <p>With {@code C1 = trunc(c1 * 255 / a1)}, {@code C2 = trunc(c2 * 255 / a1)} (the base's alpha serves the layer too),
     * {@code W = a1 * a2 + (255 - a1) * a2 + (255 - a2) * a1} and
     * {@code A = trunc(clamp((65025 - (255 - a1) * (255 - a2)) * K, 255))} it is
     * {@code v = (a1 * a2 * min(C1 + C2, 255) + (255 - a2) * a1 * C1 + (255 - a1) * a2 * C2) / W},
     * {@code c1 = clamp(clamp(v, 255) * A * K, A)} and {@code a1 = A}. Over a transparent base pixel every layer channel above
     * 0 is therefore raised to the new alpha; two transparent pixels give (0, 0, 0, 0).
     *
     * @param base the bitmap that is written, alpha included
     * @param layer the bitmap added to it
     * @return the status
     */
    public static native int nativeBitmapAdd2(Bitmap base, Bitmap layer);

    /**
     * Reduces an image to round dots on a transparent ground, one per square cell, each in the colour of its cell's centre.
     * With {@code h = size / 2} in whole numbers the centre is {@code (x - x % size + h, y - y % size + h)}; a pixel no farther
     * from it than {@code size * 0.5 * radius} becomes the centre's pixel, all four bytes, and any other (0, 0, 0, 0). Where a
     * partial cell's centre lies outside the bitmap, the nearest pixel of the bitmap gives the colour; below the bitmap the
     * distance is taken to its bottom edge.
     *
     * @param bitmap the bitmap that is written, alpha included
     * @param size the side of a cell in pixels, 1 or more
     * @param ignored not read
     * @param radius the radius of a dot as a fraction of half the cell
     * @return the status; -3 where there is no memory for a copy of the bitmap
     */
    public static native int nativeBitmapPolkaDot(Bitmap bitmap, int size, float ignored, float radius);

    /**
     * Erases the middle greys of a grey image: dark tones become black and light tones white, each the more opaque the farther
     * from the middle. With {@code t} the threshold and {@code r} the red byte, nothing else being read:
     * <ul>
     * <li>{@code r >= 255 - t} becomes white with {@code a = (r - 255 + t) * 255 / t}, premultiplied;
     * <li>otherwise {@code r <= t} becomes black with {@code a = (t - r) * 255 / t};
     * <li>what lies between becomes (0, 0, 0, 0), and with a threshold of 0 every pixel does.
     * </ul>
     *
     * @param bitmap the bitmap that is written, alpha included
     * @param threshold the width of the dark and of the light band, 0 to 255; above 127 they overlap, and white wins
     * @param ignored1 not read, may be null
     * @param ignored2 not read, may be null
     * @return the status
     */
    public static native int nativeEraseGray(Bitmap bitmap, int threshold, Object ignored1, Object ignored2);

    /**
     * Inverts the colour bytes without regard to alpha: {@code c = 255 - c}. For translucent pixels use
     * {@link #nativeToBitReverse}, which stays within their alpha.
     *
     * @param bitmap the bitmap that is written
     * @param ignored not read
     * @return the status
     */
    public static native int nativeBitmapContort(Bitmap bitmap, int ignored);

    // ---- Image filters -----------------------------------------------------------------------------------------------------

    /**
     * Sums nine bitmaps by a 3 by 3 kernel into the fifth: a relief where they are shifted copies of one image and the kernel
     * is an emboss kernel. With {@code s1} to {@code s9} the straight channels of the taps and {@code k} the kernel, the
     * fifth's channel becomes {@code clamp(trunc(scale * S + k[4] * s5), 255)}, premultiplied by its alpha, where {@code S} is
     * {@code k[0] * s1 + ... + k[8] * s9} without the fifth product: the centre's weight is not scaled. A fully transparent
     * pixel of the fifth becomes (0, 0, 0, 0).
     *
     * <p>All nine are taken for bitmaps of the first one's size without row padding. The third one's size and format are never
     * looked at: it must be as large as the first. Where one cannot be locked, its error is the status and those before it stay
     * locked.
     *
     * @param topLeft the first tap, whose size counts
     * @param top the second tap
     * @param topRight the third tap
     * @param left the fourth tap
     * @param centre the fifth tap, which is written
     * @param right the sixth tap
     * @param bottomLeft the seventh tap
     * @param bottom the eighth tap
     * @param bottomRight the ninth tap
     * @param ignored1 not read
     * @param ignored2 not read
     * @param kernel nine weights in the order of the taps
     * @param scale the factor for the eight outer weights
     * @return the status
     */
    public static native int nativeImageFilter0(Bitmap topLeft, Bitmap top, Bitmap topRight, Bitmap left, Bitmap centre,
        Bitmap right, Bitmap bottomLeft, Bitmap bottom, Bitmap bottomRight, int ignored1, int ignored2, float[] kernel,
        float scale);

    /**
     * Sharpens the source into the destination by the four direct neighbours. Each channel becomes
     * {@code clamp(trunc((1 + 4 * s) * centre - s * (left + up + right + down)), 255)}, premultiplied by the source's alpha,
     * which is written too. The neighbours are straight and 0 outside the bitmap, so edges brighten; the centre is the stored
     * byte, so that a translucent pixel is premultiplied twice.
     *
     * <p>The source is taken for a bitmap without row padding, and the destination for one with the source's bytes per row.
     * Where the destination cannot be locked, its error is the status and the source stays locked. Given one bitmap for both,
     * the neighbours to the left and above are sharp already.
     *
     * @param source the bitmap that is read
     * @param destination the bitmap that is written, alpha included
     * @param sharpness the strength s; 0 copies opaque pixels
     * @return the status
     */
    public static native int nativeImageFilter1(Bitmap source, Bitmap destination, float sharpness);

    /**
     * Pixelates into blocks in the colour of their first pixel, the upper left one, straight and premultiplied again by each
     * pixel's own alpha.
     *
     * <p>A pixel {@code dy} rows below its block's top row reads that row {@code dy} columns right of the first pixel, the step
     * from row to row being one pixel short. What it finds has the block's colour by then, unless it is transparent. Where the
     * block is narrower than it is high, or cut off by the right edge, another block's colour enters. The bitmap is taken for
     * one without row padding.
     *
     * @param bitmap the bitmap that is written
     * @param blockWidth a block's width in units of {@code scale}
     * @param blockHeight a block's height in units of {@code scale}
     * @param scale the pixels in a unit; a block of 1 by 1 pixels leaves the bitmap as it is
     * @return the status
     */
    public static native int nativeImageFilter2(Bitmap bitmap, int blockWidth, int blockHeight, int scale);

    /**
     * Tones an image sepia. With straight channels, {@code i} the intensity and {@code R = 0.3588 r + 0.299 g + 0.2392 b},
     * {@code G = 0.7044 r + 0.587 g + 0.4696 b}, {@code B = 0.1368 r + 0.144 g + 0.0912 b}, each channel becomes
     * {@code clamp(C * i + c * (1 - i), 255)}, premultiplied again. Alpha is written as {@code a * i + a * (1 - i)}, which
     * rounding may lower.
     *
     * @param bitmap the bitmap that is written
     * @param intensity from 0 (unchanged) to 1 (sepia)
     * @return the status
     */
    public static native int nativeImageFilter3(Bitmap bitmap, float intensity);

    /**
     * Smooths an image in the manner of a Kuwahara filter: each pixel takes the mean colour, and the alpha, of the one of its
     * four quadrants whose colours vary least. A quadrant has {@code radius + 1} pixels a side and the pixel at its corner; its
     * alpha is that of the last sample read. Colours are straight and not truncated before the mean.
     *
     * <p>It departs from the textbook: the sums are never reset, so that each pixel starts from the means and variances of the
     * one before it; a sample {@code dy} rows below comes from {@code dy} columns too far left (above: right), the step from
     * row to row being one pixel short; and the pass reads what it has written. It takes the bitmap for one without row
     * padding.
     *
     * @param bitmap the bitmap that is written, alpha included
     * @param radius the reach of a quadrant in pixels, 0 or more
     * @return the status
     */
    public static native int nativeImageFilter4(Bitmap bitmap, int radius);

    /**
     * Changes the saturation. With straight channels, {@code Y = 0.2125 r + 0.7154 g + 0.0721 b} and {@code s} the saturation,
     * each channel becomes {@code clamp(trunc((1 - s) * Y + c * s), 255)}, premultiplied again. The weights are close to the
     * luma weights of Rec. 709.
     *
     * @param bitmap the bitmap that is written
     * @param saturation 0 grey, 1 unchanged, more for stronger colours
     * @return the status
     */
    public static native int nativeImageFilter5(Bitmap bitmap, float saturation);

    /**
     * Changes the exposure: each straight channel becomes {@code clamp(trunc(pow(2, exposure) * c), 255)}, premultiplied again.
     *
     * @param bitmap the bitmap that is written
     * @param exposure in stops: 1 doubles, 0 keeps, -1 halves
     * @return the status
     */
    public static native int nativeImageFilter6(Bitmap bitmap, float exposure);

    /**
     * Tints an image in one colour, its luminance overlaid with the tint. With {@code Y = 0.2125 r + 0.7154 g + 0.0721 b} of
     * the straight channels, {@code t} the tint's channel and {@code i} the intensity,
     * {@code m = clamp(trunc(Y < 127.5 ? 2 * Y * t * K : 255 - 2 * (255 - Y) * (255 - t) * K), 255)}, and the channel becomes
     * {@code (m * i + c * (1 - i)) * a * K} with the stored byte {@code c}: what is kept of a translucent pixel is
     * premultiplied twice.
     *
     * @param bitmap the bitmap that is written
     * @param color the tint's red, green and blue, 0 to 255
     * @param intensity from 0 (the pixel's own colour) to 1 (the tint)
     * @return the status
     */
    public static native int nativeImageFilter7(Bitmap bitmap, float[] color, float intensity);

    /**
     * Draws a vignette: fades the image towards a colour with the distance from a centre. With
     * {@code d = sqrt((x / W - centre[0])^2 + (y / H - centre[1])^2)}, W and H being the bitmap's width and height, {@code t}
     * is 0 for {@code d <= start}, else 1 for {@code d >= end}, else {@code (d - start) / (end - start)}; each straight channel
     * becomes {@code clamp(trunc(c * (1 - t) + k * t), 255)}, premultiplied again. The colour's blue {@code k} is always 0,
     * whatever the array holds: white turns the corners yellow.
     *
     * @param bitmap the bitmap that is written
     * @param centre the centre's x and y as fractions of the width and the height
     * @param color red and green, 0 to 255; a third element is not read
     * @param start the distance at which the fading begins, in the unit of d
     * @param end the distance from which only the colour is left, in the unit of d
     * @return the status
     */
    public static native int nativeImageFilter8(Bitmap bitmap, float[] centre, int[] color, float start, float end);

    /**
     * Takes white haze away, by a strength that changes from the top row to the bottom row. With
     * {@code t = y * slope / (height - 1) + distance}, each straight channel becomes
     * {@code clamp(trunc((c - 255 * t) / (1 - t)), 255)}, premultiplied again. A row with {@code t = 1}, and a bitmap of a
     * single row, turn black.
     *
     * @param bitmap the bitmap that is written
     * @param distance the strength in the top row; 0 takes nothing away, a negative number adds haze
     * @param slope what is added to the strength on the way to the bottom row
     * @return the status
     */
    public static native int nativeImageFilter9(Bitmap bitmap, float distance, float slope);

    /**
     * Swirls the source around a centre into the destination, clockwise for a positive angle, the more the nearer to the
     * centre. A pixel at a distance {@code d} below the radius turns by {@code theta = ((radius - d) / radius)^2 * angle * 8}
     * radians: with {@code dx = trunc(x - centreX)} and {@code dy = trunc(y - centreY)} its four bytes go to column
     * {@code trunc(dx * cos(theta) - dy * sin(theta) + centreX)} and row
     * {@code trunc(dx * sin(theta) + dy * cos(theta) + centreY)}. Any other pixel keeps its place.
     *
     * <p>Pixels are sent, not fetched: of two that meet the later one stays, and where none arrives the destination keeps what
     * it had. The destination is taken for a bitmap of the source's width without row padding. Where it cannot be locked, its
     * error is the status and the source stays locked.
     *
     * @param source the bitmap that is read
     * @param destination the bitmap that is written, alpha included
     * @param centreX the centre's column in pixels
     * @param centreY the centre's row in pixels
     * @param radius the radius of the swirl in pixels
     * @param angle the angle at the centre in units of 8 radians; 0 copies where the centre is whole
     * @return the status
     */
    public static native int nativeImageFilter10(
        Bitmap source, Bitmap destination, float centreX, float centreY, float radius, double angle);
}
