package com.velmora.display.fennic;

import android.graphics.Bitmap;

/**
 * The blends of a layer into a base by name: {@code Blend.MULTIPLY.apply(base, layer)}. Most work on premultiplied colour;
 * those of {@link StraightBlend} work on straight colour and composite with both alphas.
 */
public enum Blend {
    /** The darker channel, under the layer's alpha; {@link VelUIBitmapUtils#nativeBitmapHandle3 the formula}. */
    DARKEN,
    /** The product of both channels, under the layer's alpha; {@link VelUIBitmapUtils#nativeBitmapHandle4 the formula}. */
    MULTIPLY,
    /** Darkens by the layer's inverse; a clear layer pixel erases; {@link VelUIBitmapUtils#nativeBitmapHandle5 the formula}. */
    COLOR_BURN,
    /** Colour burn whose alphas are multiplied; {@link VelUIBitmapUtils#nativeBitmapHandle5B the formula}. */
    COLOR_BURN_B,
    /**
     * The sum of both channels less 255; {@link VelUIBitmapUtils#nativeBitmapHandle6 the formula}.
     *
     * @see #linearBurn
     */
    LINEAR_BURN,
    /** The darker of the two colours as a whole; {@link VelUIBitmapUtils#nativeBitmapHandle7 the formula}. */
    DARKER_COLOR,

    /** The lighter channel; {@link VelUIBitmapUtils#nativeBitmapHandle8 the formula}. */
    LIGHTEN,
    /** The inverse of the inverses' product, under its alpha; {@link VelUIBitmapUtils#nativeBitmapHandle9 the formula}. */
    SCREEN,
    /** Brightens by the layer, whose red drives blue too; {@link VelUIBitmapUtils#nativeBitmapHandle10 the formula}. */
    COLOR_DODGE,
    /** The sum of both channels; {@link VelUIBitmapUtils#nativeBitmapHandle11 the formula}. */
    LINEAR_DODGE,
    /** The lighter of the two colours as a whole; {@link VelUIBitmapUtils#nativeBitmapHandle12 the formula}. */
    LIGHTER_COLOR,

    /** Multiplies the dark half, screens the light one; logs; {@link VelUIBitmapUtils#nativeBitmapHandle13 the formula}. */
    OVERLAY,
    /** Overlay whose alphas are multiplied; logs; {@link VelUIBitmapUtils#nativeBitmapHandle13B the formula}. */
    OVERLAY_B,
    /** Overlay with the layer's straight colour; {@link VelUIBitmapUtils#nativeBitmapHandle13C the formula}. */
    OVERLAY_C,
    /** Darkens or lightens gently, under the layer's alpha; {@link VelUIBitmapUtils#nativeBitmapHandle14 the formula}. */
    SOFT_LIGHT,
    /** Multiplies where the layer is dark, else screens; {@link VelUIBitmapUtils#nativeBitmapHandle15 the formula}. */
    HARD_LIGHT,
    /** Hard light whose alphas are multiplied; {@link VelUIBitmapUtils#nativeBitmapHandle15B the formula}. */
    HARD_LIGHT_B,
    /** Burns the base by the layer, under the layer's alpha; {@link VelUIBitmapUtils#nativeBitmapHandle16 the formula}. */
    VIVID_LIGHT,
    /** Adds twice the layer less 255, under its alpha; {@link VelUIBitmapUtils#nativeBitmapHandle17 the formula}. */
    LINEAR_LIGHT,
    /** The base's channel between two bounds of the layer's; {@link VelUIBitmapUtils#nativeBitmapHandle18 the formula}. */
    PIN_LIGHT,
    /** Each channel either nothing or full; {@link VelUIBitmapUtils#nativeBitmapHandle19 the formula}. */
    HARD_MIX,

    /** The distance between both channels; {@link VelUIBitmapUtils#nativeBitmapHandle20 the formula}. */
    DIFFERENCE,
    /** The sum of both channels less twice their product; {@link VelUIBitmapUtils#nativeBitmapHandle21 the formula}. */
    EXCLUSION,
    /** The base's channel less the layer's; {@link VelUIBitmapUtils#nativeBitmapHandle22 the formula}. */
    SUBTRACT,
    /** The base's channel divided by the layer's; {@link VelUIBitmapUtils#nativeBitmapHandle23 the formula}. */
    DIVIDE,

    /**
     * The base's hue and value with the layer's saturation; {@link VelUIBitmapUtils#nativeBitmapHandle24 the formula}. Every
     * pixel leaves 36 bytes of native memory behind, as said there.
     */
    HUE,

    /** Fades the base, alpha included, by the layer's red; {@link VelUIBitmapUtils#nativeChannelThrough the formula}. */
    CHANNEL_THROUGH,
    /** Fades the base by the layer's alpha less its red; {@link VelUIBitmapUtils#nativeChannelThrough2 the formula}. */
    CHANNEL_THROUGH_2,
    /** The sum of both straight colours, composited; {@link VelUIBitmapUtils#nativeBitmapAdd2 the formula}. */
    ADD;

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
        Arguments.check(status(base, layer));
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

    private int status(Bitmap base, Bitmap layer) {
        switch (this) {
            case DARKEN: return VelUIBitmapUtils.nativeBitmapHandle3(base, layer);
            case MULTIPLY: return VelUIBitmapUtils.nativeBitmapHandle4(base, layer);
            case COLOR_BURN: return VelUIBitmapUtils.nativeBitmapHandle5(base, layer);
            case COLOR_BURN_B: return VelUIBitmapUtils.nativeBitmapHandle5B(base, layer);
            case LINEAR_BURN: return VelUIBitmapUtils.nativeBitmapHandle6(base, layer, 255);
            case DARKER_COLOR: return VelUIBitmapUtils.nativeBitmapHandle7(base, layer);
            case LIGHTEN: return VelUIBitmapUtils.nativeBitmapHandle8(base, layer);
            case SCREEN: return VelUIBitmapUtils.nativeBitmapHandle9(base, layer);
            case COLOR_DODGE: return VelUIBitmapUtils.nativeBitmapHandle10(base, layer);
            case LINEAR_DODGE: return VelUIBitmapUtils.nativeBitmapHandle11(base, layer);
            case LIGHTER_COLOR: return VelUIBitmapUtils.nativeBitmapHandle12(base, layer);
            case OVERLAY: return VelUIBitmapUtils.nativeBitmapHandle13(base, layer);
            case OVERLAY_B: return VelUIBitmapUtils.nativeBitmapHandle13B(base, layer);
            case OVERLAY_C: return VelUIBitmapUtils.nativeBitmapHandle13C(base, layer);
            case SOFT_LIGHT: return VelUIBitmapUtils.nativeBitmapHandle14(base, layer);
            case HARD_LIGHT: return VelUIBitmapUtils.nativeBitmapHandle15(base, layer);
            case HARD_LIGHT_B: return VelUIBitmapUtils.nativeBitmapHandle15B(base, layer);
            case VIVID_LIGHT: return VelUIBitmapUtils.nativeBitmapHandle16(base, layer);
            case LINEAR_LIGHT: return VelUIBitmapUtils.nativeBitmapHandle17(base, layer);
            case PIN_LIGHT: return VelUIBitmapUtils.nativeBitmapHandle18(base, layer);
            case HARD_MIX: return VelUIBitmapUtils.nativeBitmapHandle19(base, layer);
            case DIFFERENCE: return VelUIBitmapUtils.nativeBitmapHandle20(base, layer);
            case EXCLUSION: return VelUIBitmapUtils.nativeBitmapHandle21(base, layer);
            case SUBTRACT: return VelUIBitmapUtils.nativeBitmapHandle22(base, layer);
            case DIVIDE: return VelUIBitmapUtils.nativeBitmapHandle23(base, layer);
            case HUE: return VelUIBitmapUtils.nativeBitmapHandle24(base, layer);
            case CHANNEL_THROUGH: return VelUIBitmapUtils.nativeChannelThrough(base, layer);
            case CHANNEL_THROUGH_2: return VelUIBitmapUtils.nativeChannelThrough2(base, layer);
            case ADD: return VelUIBitmapUtils.nativeBitmapAdd2(base, layer);
            default: throw new AssertionError(this);
        }
    }
}
