package com.velmora.display.fennic.cli;

import android.graphics.Bitmap;
import java.nio.IntBuffer;
import java.util.Arrays;

/** Times a blend on a large bitmap tiled from an icon. */
final class Stopwatch {
    private static final int SIDE = 1024;
    private static final int WARM_UP = 1;
    private static final int CALLS = 11;
    private static final int FEWEST_CALLS = 3;
    private static final long ENOUGH_NANOS = 100_000_000;

    private final int[] pristine;
    private final Bitmap base = Bitmap.createBitmap(SIDE, SIDE, Bitmap.Config.ARGB_8888);
    private final Bitmap layer = Bitmap.createBitmap(SIDE, SIDE, Bitmap.Config.ARGB_8888);

    Stopwatch(Bitmap icon, Bitmap texture) {
        pristine = tiled(icon);
        layer.copyPixelsFromBuffer(IntBuffer.wrap(tiled(texture)));
    }

    /** The median over repeated calls, each on the same pixels; restoring them is not timed. A slow blend gets fewer calls. */
    double nanosPerPixel(Operation blend) {
        Object[] arguments = blend.arguments(base, layer);
        long[] nanos = new long[CALLS];
        int calls = 0;
        long total = 0;
        for (int i = -WARM_UP; i < CALLS && (calls < FEWEST_CALLS || total < ENOUGH_NANOS); ++i) {
            base.copyPixelsFromBuffer(IntBuffer.wrap(pristine));
            long start = System.nanoTime();
            blend.apply(arguments);
            long taken = System.nanoTime() - start;
            if (i >= 0) {
                nanos[calls++] = taken;
                total += taken;
            }
        }
        Arrays.sort(nanos, 0, calls);
        return (double) nanos[calls / 2] / (SIDE * SIDE);
    }

    private static int[] tiled(Bitmap bitmap) {
        int width = bitmap.getWidth();
        int height = bitmap.getHeight();
        int stride = bitmap.getRowBytes() / Integer.BYTES;
        int[] tile = new int[stride * height];
        bitmap.copyPixelsToBuffer(IntBuffer.wrap(tile));
        int[] pixels = new int[SIDE * SIDE];
        for (int y = 0; y < SIDE; ++y) {
            for (int x = 0; x < SIDE; ++x) {
                pixels[y * SIDE + x] = tile[y % height * stride + x % width];
            }
        }
        return pixels;
    }
}
