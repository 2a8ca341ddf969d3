package com.velmora.display.fennic;

import android.graphics.Bitmap;

/**
 * The blends by number under the names of the {@link Blend}s like them: on straight colour, composited with both alphas.
 * {@link VelUIBitmapUtils#nativeTkPSBlendingMode The formulas} stand in one table there.
 *
 * <p>{@link #DARKER_COLOR} and {@link #LIGHTER_COLOR} leave 12 bytes of native memory behind for every pixel that both bitmaps
 * show, as said there.
 */
public enum StraightBlend {
    DARKEN(3), MULTIPLY(4), COLOR_BURN(5), LINEAR_BURN(6), DARKER_COLOR(7),
    LIGHTEN(8), SCREEN(9), COLOR_DODGE(10), LINEAR_DODGE(11), LIGHTER_COLOR(12),
    OVERLAY(13), SOFT_LIGHT(14), HARD_LIGHT(15), VIVID_LIGHT(16), LINEAR_LIGHT(17), PIN_LIGHT(18), HARD_MIX(19),
    DIFFERENCE(20), EXCLUSION(21), SUBTRACT(22), DIVIDE(23);

    private final int number;

    StraightBlend(int number) {
        this.number = number;
    }

    /**
     * The number that {@link VelUIBitmapUtils#nativeTkPSBlendingMode} knows the blend by.
     *
     * @return 3 to 23
     */
    public int number() {
        return number;
    }

    /**
     * Blends a layer into a base, at once and in place. It asks the same of bitmaps and throws the same as {@link Blend#apply}.
     *
     * @param base the bitmap that is written, alpha included
     * @param layer the bitmap that is read
     */
    public void apply(Bitmap base, Bitmap layer) {
        Arguments.pair(base, layer);
        Arguments.check(VelUIBitmapUtils.nativeTkPSBlendingMode(base, layer, number));
    }
}
