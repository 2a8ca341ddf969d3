package com.velmora.display.fennic;

import android.graphics.Bitmap;
import java.io.IOException;
import java.lang.reflect.InvocationTargetException;
import java.lang.reflect.Method;
import java.lang.reflect.Modifier;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.Arrays;
import java.util.Comparator;
import java.util.List;

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

    private final boolean leakFree;
    private final Bitmap[] bitmaps = new Bitmap[9];
    private final int[] ints = {3, 5, 40, 20};
    private final float[] floats = {0.1f, 0.2f, 0.3f, 0.4f, 0.5f, 0.4f, 0.3f, 0.2f, 0.1f};
    private long calls;
    private boolean failed;

    private Load(boolean leakFree) {
        this.leakFree = leakFree;
    }

    public static void main(String[] arguments) throws Exception {
        var given = List.of(arguments);
        var load = new Load(given.contains("--leak-free"));
        load.callEverything(given.stream().filter(argument -> !argument.startsWith("-")).mapToLong(Long::parseLong).findFirst()
                .orElse(1_000_000));
        load.leak("hue blend", 3, (base, layer) -> VelUIBitmapUtils.nativeBitmapHandle24(base, layer));
        load.leak("mode 7", 1, (base, layer) -> VelUIBitmapUtils.nativeTkPSBlendingMode(base, layer, 7));
        load.leak("mode 12", 1, (base, layer) -> VelUIBitmapUtils.nativeTkPSBlendingMode(base, layer, 12));
        System.exit(load.failed ? 1 : 0);
    }

    private void callEverything(long count) throws Exception {
        var natives = Arrays.stream(VelUIBitmapUtils.class.getDeclaredMethods())
                .filter(method -> Modifier.isNative(method.getModifiers()))
                .filter(method -> !method.getName().equals("nativeBitmapGetHSV"))  // ends the process
                .filter(method -> leakFree || !method.getName().equals("nativeBitmapHandle24"))
                .sorted(Comparator.comparing(Method::getName)).toList();
        Arrays.setAll(bitmaps, i -> picture(13, 11));
        for (calls = 0; calls < count / 10; ) callEach(natives);
        long before = resident(), most = before;
        for (calls = 0; calls < count; ) {
            long next = calls + count / 10;
            while (calls < Math.min(next, count)) callEach(natives);
            most = Math.max(most, resident());
        }
        long growth = most - before;
        System.out.printf("%d calls of %d natives: %d KB resident before, %d KB more at most%n", calls, natives.size(),
                before / 1024, growth / 1024);
        failed |= growth > NOISE;
    }

    private void callEach(List<Method> natives) throws IllegalAccessException, InvocationTargetException {
        int mode = 3 + (int) (calls / natives.size() % 21);
        if (!leakFree && (mode == 7 || mode == 12)) mode = 24;
        for (Method method : natives) {
            var types = method.getParameterTypes();
            var values = new Object[types.length];
            for (int i = 0; i < types.length; ++i) {
                values[i] = types[i] == Bitmap.class ? bitmaps[i]
                        : types[i] == int.class ? (Object) (method.getName().equals("nativeTkPSBlendingMode") ? mode : mode % 4)
                        : types[i] == float.class ? (Object) (mode / 8f)
                        : types[i] == double.class ? (Object) (mode / 16.0)
                        : types[i] == boolean.class ? (Object) (mode % 2 == 0)
                        : types[i] == int[].class ? ints
                        : types[i] == float[].class ? floats : null;
            }
            method.invoke(null, values);
            ++calls;
        }
    }

    private interface Blend {
        int run(Bitmap base, Bitmap layer);
    }

    private void leak(String name, int arraysPerPixel, Blend blend) throws IOException {
        int size = 64, runs = 200;
        var base = picture(size, size);
        var layer = picture(size, size);
        blend.run(base, layer);
        long before = resident();
        for (int i = 0; i < runs; ++i) blend.run(base, layer);
        long growth = resident() - before, pixels = (long) runs * size * size;
        long expected = leakFree ? 0 : pixels * arraysPerPixel * BYTES_PER_ARRAY;
        System.out.printf("%s: %d KB more after %d pixels, %d KB expected%n", name, growth / 1024, pixels,
                expected / 1024);
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
