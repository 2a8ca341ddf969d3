package com.velmora.display.fennic;

import android.graphics.Bitmap;

/**
 * The blends of a layer into a base by name: {@code Blend.MULTIPLY.apply(base, layer)}. Most work on premultiplied colour;
 * those of {@link StraightBlend} work on straight colour and composite with both alphas.
 */
public enum Blend {
    /** The darker channel, under the layer's alpha; {@link VelUIBitmapUtils#nativeBitmapHandle3 the formula}. */
    DARKEN(VelUIBitmapUtils::nativeBitmapHandle3),
    /** The product of both channels, under the layer's alpha; {@link VelUIBitmapUtils#nativeBitmapHandle4 the formula}. */
    MULTIPLY(VelUIBitmapUtils::nativeBitmapHandle4),
    /** Darkens by the layer's inverse; a clear layer pixel erases; {@link VelUIBitmapUtils#nativeBitmapHandle5 the formula}. */
    COLOR_BURN(VelUIBitmapUtils::nativeBitmapHandle5),
    /** Colour burn whose alphas are multiplied; {@link VelUIBitmapUtils#nativeBitmapHandle5B the formula}. */
    COLOR_BURN_B(VelUIBitmapUtils::nativeBitmapHandle5B),
    /**
     * The sum of both channels less 255; {@link VelUIBitmapUtils#nativeBitmapHandle6 the formula}.
     *
     * @see #linearBurn
     */
    LINEAR_BURN((base, layer) -> VelUIBitmapUtils.nativeBitmapHandle6(base, layer, 255)),
    /** The darker of the two colours as a whole; {@link VelUIBitmapUtils#nativeBitmapHandle7 the formula}. */
    DARKER_COLOR(VelUIBitmapUtils::nativeBitmapHandle7),

    /** The lighter channel; {@link VelUIBitmapUtils#nativeBitmapHandle8 the formula}. */
    LIGHTEN(VelUIBitmapUtils::nativeBitmapHandle8),
    /** The inverse of the inverses' product, under its alpha; {@link VelUIBitmapUtils#nativeBitmapHandle9 the formula}. */
    SCREEN(VelUIBitmapUtils::nativeBitmapHandle9),
    /** Brightens by the layer, whose red drives blue too; {@link VelUIBitmapUtils#nativeBitmapHandle10 the formula}. */
    COLOR_DODGE(VelUIBitmapUtils::nativeBitmapHandle10),
    /** The sum of both channels; {@link VelUIBitmapUtils#nativeBitmapHandle11 the formula}. */
    LINEAR_DODGE(VelUIBitmapUtils::nativeBitmapHandle11),
    /** The lighter of the two colours as a whole; {@link VelUIBitmapUtils#nativeBitmapHandle12 the formula}. */
    LIGHTER_COLOR(VelUIBitmapUtils::nativeBitmapHandle12),

    /** Multiplies the dark half, screens the light one; logs; {@link VelUIBitmapUtils#nativeBitmapHandle13 the formula}. */
    OVERLAY(VelUIBitmapUtils::nativeBitmapHandle13),
    /** Overlay whose alphas are multiplied; logs; {@link VelUIBitmapUtils#nativeBitmapHandle13B the formula}. */
    OVERLAY_B(VelUIBitmapUtils::nativeBitmapHandle13B),
    /** Overlay with the layer's straight colour; {@link VelUIBitmapUtils#nativeBitmapHandle13C the formula}. */
    OVERLAY_C(VelUIBitmapUtils::nativeBitmapHandle13C),
    /** Darkens or lightens gently, under the layer's alpha; {@link VelUIBitmapUtils#nativeBitmapHandle14 the formula}. */
    SOFT_LIGHT(VelUIBitmapUtils::nativeBitmapHandle14),
    /** Multiplies where the layer is dark, else screens; {@link VelUIBitmapUtils#nativeBitmapHandle15 the formula}. */
    HARD_LIGHT(VelUIBitmapUtils::nativeBitmapHandle15),
    /** Hard light whose alphas are multiplied; {@link VelUIBitmapUtils#nativeBitmapHandle15B the formula}. */
    HARD_LIGHT_B(VelUIBitmapUtils::nativeBitmapHandle15B),
    /** Burns the base by the layer, under the layer's alpha; {@link VelUIBitmapUtils#nativeBitmapHandle16 the formula}. */
    VIVID_LIGHT(VelUIBitmapUtils::nativeBitmapHandle16),
    /** Adds twice the layer less 255, under its alpha; {@link VelUIBitmapUtils#nativeBitmapHandle17 the formula}. */
    LINEAR_LIGHT(VelUIBitmapUtils::nativeBitmapHandle17),
    /** The base's channel between two bounds of the layer's; {@link VelUIBitmapUtils#nativeBitmapHandle18 the formula}. */
    PIN_LIGHT(VelUIBitmapUtils::nativeBitmapHandle18),
    /** Each channel either nothing or full; {@link VelUIBitmapUtils#nativeBitmapHandle19 the formula}. */
    HARD_MIX(VelUIBitmapUtils::nativeBitmapHandle19),

    /** The distance between both channels; {@link VelUIBitmapUtils#nativeBitmapHandle20 the formula}. */
    DIFFERENCE(VelUIBitmapUtils::nativeBitmapHandle20),
    /** The sum of both channels less twice their product; {@link VelUIBitmapUtils#nativeBitmapHandle21 the formula}. */
    EXCLUSION(VelUIBitmapUtils::nativeBitmapHandle21),
    /** The base's channel less the layer's; {@link VelUIBitmapUtils#nativeBitmapHandle22 the formula}. */
    SUBTRACT(VelUIBitmapUtils::nativeBitmapHandle22),
    /** The base's channel divided by the layer's; {@link VelUIBitmapUtils#nativeBitmapHandle23 the formula}. */
    DIVIDE(VelUIBitmapUtils::nativeBitmapHandle23),

    /**
     * The base's hue and value with the layer's saturation; {@link VelUIBitmapUtils#nativeBitmapHandle24 the formula}. Every
     * pixel leaves 36 bytes of native memory behind, as said there.
     */
    HUE(VelUIBitmapUtils::nativeBitmapHandle24),

    /** Fades the base, alpha included, by the layer's red; {@link VelUIBitmapUtils#nativeChannelThrough the formula}. */
    CHANNEL_THROUGH(VelUIBitmapUtils::nativeChannelThrough),
    /** Fades the base by the layer's alpha less its red; {@link VelUIBitmapUtils#nativeChannelThrough2 the formula}. */
    CHANNEL_THROUGH_2(VelUIBitmapUtils::nativeChannelThrough2),
    /** The sum of both straight colours, composited; {@link VelUIBitmapUtils#nativeBitmapAdd2 the formula}. */
    ADD(VelUIBitmapUtils::nativeBitmapAdd2);

    private interface Native {
        int call(Bitmap base, Bitmap layer);
    }

    private final Native blend;

    Blend(Native blend) {
        this.blend = blend;
    }

    /**
     * Blends a layer into a base, at once and in place.
     *
     * @param base the bitmap that is written: mutable, ARGB_8888
     * @param layer the bitmap that is read: ARGB_8888, at least as wide and as high as the base
     * @throws NullPointerException if a bitmap is null
     * @throws IllegalArgumentException if a bitmap is recycled or of another format, the base immutable, or the layer too small
     * @throws IllegalStateException if a bitmap cannot be locked
     * @throws OutOfMemoryError if native memory runs out, which only {@link #HUE} needs
     */
    public void apply(Bitmap base, Bitmap layer) {
        Arguments.pair(base, layer);
        Arguments.check(blend.call(base, layer));
    }

    /**
     * {@link #LINEAR_BURN} with any offset.
     *
     * @param base the bitmap that is written, as in {@link #apply}
     * @param layer the bitmap that is read, as in {@link #apply}
     * @param offset what is taken away, 0 to 255; sums that then exceed 255 wrap
     */
    public static void linearBurn(Bitmap base, Bitmap layer, int offset) {
        Arguments.pair(base, layer);
        Arguments.check(VelUIBitmapUtils.nativeBitmapHandle6(base, layer, offset));
    }
}
