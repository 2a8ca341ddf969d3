package android.graphics;

import java.awt.color.ColorSpace;
import java.awt.color.ICC_Profile;
import java.awt.image.ColorConvertOp;
import java.awt.image.DataBuffer;
import java.awt.image.Raster;
import java.awt.image.WritableRaster;

/** From the colours of an ICC profile to sRGB, by the JDK's colour management. */
final class ToSrgb {
    private final ColorConvertOp op;
    private final int bands;
    private WritableRaster from;
    private WritableRaster to;

    private ToSrgb(ICC_Profile profile) {
        bands = profile.getNumComponents();
        op = new ColorConvertOp(new ICC_Profile[] {profile, ICC_Profile.getInstance(ColorSpace.CS_sRGB)}, null);
    }

    /** Null for a profile that is damaged, belongs to another kind of image, or is sRGB but for rounding. */
    static ToSrgb from(byte[] icc, boolean grey) {
        try {
            ICC_Profile profile = ICC_Profile.getInstance(icc);
            if (profile.getColorSpaceType() != (grey ? ColorSpace.TYPE_GRAY : ColorSpace.TYPE_RGB)) {
                return null;
            }
            var toSrgb = new ToSrgb(profile);
            return toSrgb.changesColors() ? toSrgb : null;
        } catch (RuntimeException e) {
            return null;
        }
    }

    /** Whether a step of 17 along the channels, or along grey, moves any by more than two of 255. */
    private boolean changesColors() {
        int[] before = new int[bands == 1 ? 16 : 16 * 16 * 16];
        for (int i = 0; i < before.length; ++i) {
            before[i] = bands == 1 ? Color.rgb(i * 17, i * 17, i * 17) : Color.rgb(i / 256 * 17, i / 16 % 16 * 17, i % 16 * 17);
        }
        int[] after = before.clone();
        convert(after);
        for (int i = 0; i < before.length; ++i) {
            for (int shift = 0; shift < 24; shift += 8) {
                if (Math.abs((before[i] >> shift & 255) - (after[i] >> shift & 255)) > 2) {
                    return true;
                }
            }
        }
        return false;
    }

    /** Straight ARGB; alpha stays. */
    void convert(int[] argb) {
        if (from == null || from.getWidth() != argb.length) {
            from = Raster.createInterleavedRaster(DataBuffer.TYPE_BYTE, argb.length, 1, bands, null);
            to = Raster.createInterleavedRaster(DataBuffer.TYPE_BYTE, argb.length, 1, 3, null);
        }
        byte[] samples = new byte[argb.length * bands];
        for (int x = 0, at = 0; x < argb.length; ++x) {
            for (int band = bands - 1; band >= 0; --band) {
                samples[at++] = (byte) (argb[x] >> 8 * band);
            }
        }
        from.setDataElements(0, 0, argb.length, 1, samples);
        op.filter(from, to);
        byte[] colors = (byte[]) to.getDataElements(0, 0, argb.length, 1, null);
        for (int x = 0; x < argb.length; ++x) {
            argb[x] = Color.argb(argb[x] >>> 24, colors[3 * x] & 255, colors[3 * x + 1] & 255, colors[3 * x + 2] & 255);
        }
    }
}
