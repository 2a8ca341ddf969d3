package com.velmora.display.fennic.cli;

import android.graphics.Bitmap;
import java.nio.ByteBuffer;
import java.util.Arrays;
import java.util.Map;

/** Times an operation on a large bitmap tiled from an icon. */
final class Stopwatch {
    private static final int SIDE = 1024;
    private static final int WARM_UP = 1;
    private static final int CALLS = 11;
    private static final int FEWEST_CALLS = 3;
    private static final long ENOUGH_NANOS = 100_000_000;

    private final Bitmap picture;
    private final Bitmap layer;
    private final Bitmap result = Bitmap.createBitmap(SIDE, SIDE, Bitmap.Config.ARGB_8888);
    private final ByteBuffer pristine = ByteBuffer.allocate(result.getByteCount());

    Stopwatch(Bitmap icon, Bitmap texture) {
        picture = tiled(icon);
        layer = tiled(texture);
        picture.copyPixelsToBuffer(pristine);
    }

    /** The median over repeated calls, each on the same pixels; restoring them is not timed. The slow get fewer calls. */
    double nanosPerPixel(Operation operation) {
        Object[] arguments = operation.arguments(result, picture, layer, Map.of());
        long[] nanos = new long[CALLS];
        int calls = 0;
        long total = 0;
        for (int i = -WARM_UP; i < CALLS && (calls < FEWEST_CALLS || total < ENOUGH_NANOS); ++i) {
            result.copyPixelsFromBuffer(pristine.rewind());
            long start = System.nanoTime();
            operation.apply(arguments);
            long taken = System.nanoTime() - start;
            if (i >= 0) {
                nanos[calls++] = taken;
                total += taken;
            }
        }
        Arrays.sort(nanos, 0, calls);
        return (double) nanos[calls / 2] / (SIDE * SIDE);
    }

    private static Bitmap tiled(Bitmap bitmap) {
        return Pngs.taken(bitmap, SIDE, SIDE, x -> x % bitmap.getWidth(), y -> y % bitmap.getHeight());
    }
}
