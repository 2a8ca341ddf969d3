package com.velmora.display.fennic;

import android.graphics.Bitmap;
import com.velmora.display.fennic.cli.Operation;
import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.List;
import java.util.function.ToIntBiFunction;
import java.util.stream.Stream;

/**
 * A million calls over all natives, and what they leave behind in memory: nothing, or what the hue blend and the mode-indexed
 * modes 7 and 12 leave on purpose.
 *
 * <p>usage: Load [--leak-free] [calls]
 */
final class Load {
    /** What one array of three numbers takes from the C library's heap, its header included. */
    private static final int BYTES_PER_ARRAY = 32;
    private static final int NOISE = 1 << 20;
    private static final int PAGE = 4096;

    private static final Bitmap[] BITMAPS = Stream.generate(() -> picture(13, 11)).limit(9).toArray(Bitmap[]::new);
    private static final int[] INTS = {3, 5, 40, 20};
    private static final float[] FLOATS = {0.1f, 0.2f, 0.3f, 0.4f, 0.5f, 0.4f, 0.3f, 0.2f, 0.1f};

    private static boolean leakFree, failed;
    private static long calls;

    private Load() {}

    public static void main(String[] arguments) throws Exception {
        var given = List.of(arguments);
        leakFree = given.contains("--leak-free");
        callEverything(given.stream().filter(argument -> !argument.startsWith("-")).mapToLong(Long::parseLong).findFirst()
                .orElse(1_000_000));
        leak("hue blend", 3, VelUIBitmapUtils::nativeBitmapHandle24);
        leak("mode 7", 1, (base, layer) -> VelUIBitmapUtils.nativeTkPSBlendingMode(base, layer, 7));
        leak("mode 12", 1, (base, layer) -> VelUIBitmapUtils.nativeTkPSBlendingMode(base, layer, 12));
        System.exit(failed ? 1 : 0);
    }

    private static void callEverything(long count) throws Exception {
        // Which of the numbered modes leave arrays is for callEach to know.
        var called = Natives.all().stream().filter(operation -> leakFree || operation.isNumbered()
                || !operation.traits().contains("leaves-arrays")).toList();
        for (calls = 0; calls < count / 10; ) callEach(called);
        long before = resident(), most = before;
        for (calls = 0; calls < count; ) {
            long next = calls + count / 10;
            while (calls < Math.min(next, count)) callEach(called);
            most = Math.max(most, resident());
        }
        long growth = most - before;
        System.out.printf("%d calls of %d natives: %d KB resident before, %d KB more at most%n", calls, called.size(),
                before / 1024, growth / 1024);
        failed |= growth > NOISE;
    }

    private static void callEach(List<Operation> called) throws ReflectiveOperationException {
        int mode = 3 + (int) (calls / called.size() % 21);
        if (!leakFree && (mode == 7 || mode == 12)) mode = 24;
        for (Operation operation : called) {
            var types = operation.method().getParameterTypes();
            var values = new Object[types.length];
            for (int i = 0; i < types.length; ++i) {
                values[i] = Natives.ofType(types[i], BITMAPS[i % BITMAPS.length], operation.isNumbered() ? mode : mode % 4,
                        mode / 8.0, mode % 2 == 0, INTS, FLOATS);
            }
            operation.method().invoke(null, values);
            ++calls;
        }
    }

    private static void leak(String name, int arraysPerPixel, ToIntBiFunction<Bitmap, Bitmap> blend) throws IOException {
        int size = 64, runs = 200;
        var base = picture(size, size);
        var layer = picture(size, size);
        blend.applyAsInt(base, layer);
        long before = resident();
        for (int i = 0; i < runs; ++i) blend.applyAsInt(base, layer);
        long growth = resident() - before, pixels = (long) runs * size * size;
        long expected = leakFree ? 0 : pixels * arraysPerPixel * BYTES_PER_ARRAY;
        System.out.printf("%s: %d KB more after %d pixels, %d KB expected%n", name, growth / 1024, pixels, expected / 1024);
        failed |= Math.abs(growth - expected) > NOISE;
    }

    private static Bitmap picture(int width, int height) {
        var bitmap = Bitmap.createBitmap(width, height, Bitmap.Config.ARGB_8888);
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x) bitmap.setPixel(x, y, 0xFF000000 | (x * 37 + y * 101) * 2654435 >>> 8);
        return bitmap;
    }

    private static long resident() throws IOException {
        System.gc();
        return Long.parseLong(Files.readString(Path.of("/proc/self/statm")).split(" ")[1]) * PAGE;
    }
}
