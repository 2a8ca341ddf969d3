package com.velmora.display.fennic;

import static com.velmora.display.fennic.VelUIBitmapUtils.*;
import static org.junit.jupiter.api.Assertions.assertArrayEquals;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import android.graphics.Bitmap;
import java.lang.reflect.Array;
import java.lang.reflect.InvocationTargetException;
import java.lang.reflect.Method;
import java.lang.reflect.Modifier;
import java.nio.ByteBuffer;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.Comparator;
import java.util.List;
import java.util.stream.IntStream;
import java.util.stream.Stream;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.io.TempDir;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.CsvSource;

/** The path of an application: Java class, native, bitmap lock, pixels. */
class VelUIBitmapUtilsTest {
    private static final int BAD_PARAMETER = -1, JNI_EXCEPTION = -2;

    /** Every native but the one that ends the process. */
    private static final List<Method> NATIVES = Stream.of(VelUIBitmapUtils.class.getDeclaredMethods())
        .filter(method -> Modifier.isNative(method.getModifiers()) && !method.getName().equals("nativeBitmapGetHSV"))
        .sorted(Comparator.comparing(Method::getName))
        .toList();

    /** Arguments that every native takes without complaint, by their type; each bitmap is one of its own. */
    private static Object usual(Class<?> type) {
        return type == Bitmap.class ? bitmap(2, 2, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 255)
            : type == int.class ? (Object) 2
            : type == float.class ? (Object) 0.5f
            : type == double.class ? (Object) 0.5
            : type == boolean.class ? (Object) true
            : type == int[].class ? new int[] {0, 0, 9, 5}
            : type == float[].class ? new float[] {9, 8, 7, 6, 5, 4, 3, 2, 1} : null;
    }

    /** One call of a native, with usual arguments but for those that are set. */
    private record Call(Method method, Object[] arguments, List<int[]> before) {
        Call(Method method) {
            this(method, Stream.of(method.getParameterTypes()).map(VelUIBitmapUtilsTest::usual).toArray(), new ArrayList<>());
        }

        Call with(int parameter, Object value) {
            arguments[parameter] = value;
            return this;
        }

        Object run() throws Throwable {
            for (Object argument : arguments) before.add(bytesOf(argument));
            try {
                return method.invoke(null, arguments);
            } catch (InvocationTargetException e) {
                throw e.getCause();
            }
        }

        boolean changedNoBitmap() {
            return IntStream.range(0, arguments.length).allMatch(i -> Arrays.equals(before.get(i), bytesOf(arguments[i])));
        }

        private static int[] bytesOf(Object argument) {
            return argument instanceof Bitmap bitmap && !bitmap.isRecycled() ? bytes(bitmap) : null;
        }

        @Override
        public String toString() {
            return method.getName() + Arrays.deepToString(arguments);
        }
    }

    private static boolean isMeasure(Method method) {
        return method.getName().matches("nativeGet.*|nativeBitmapGetMedian");
    }

    /** The parameters of one type. */
    private static int[] parameters(Method method, Class<?> type) {
        var types = method.getParameterTypes();
        return IntStream.range(0, types.length).filter(i -> types[i] == type).toArray();
    }

    private static Bitmap bitmap(int width, int height, int... bytes) {
        Bitmap bitmap = Bitmap.createBitmap(width, height, Bitmap.Config.ARGB_8888);
        ByteBuffer pixels = ByteBuffer.allocate(4 * width * height);
        for (int b : bytes) pixels.put((byte) b);
        bitmap.copyPixelsFromBuffer(pixels.rewind());
        return bitmap;
    }

    private static int[] bytes(Bitmap bitmap) {
        ByteBuffer pixels = ByteBuffer.allocate(bitmap.getByteCount());
        bitmap.copyPixelsToBuffer(pixels);
        int[] bytes = new int[pixels.capacity()];
        for (int i = 0; i < bytes.length; i++) bytes[i] = pixels.get(i) & 255;
        return bytes;
    }

    @Test
    void measuresAnIcon() {
        Bitmap row = bitmap(5, 1, 0, 0, 0, 0, 255, 0, 0, 255, 0, 0, 0, 0, 0, 255, 0, 255, 0, 0, 0, 0);
        assertEquals(2, nativeGetBitmapVisiblePointNum(row));
        assertEquals(3, nativeGetBitmapInvisiblePointNum(row));
        assertEquals(0.4f, nativeGetBitmapInvisibleAreaPrecent(row, 0));
        int[] color = new int[4];
        nativeGetBitmapAverageColorInRect(row, 0, 0, 5, 1, color, 0);
        assertArrayEquals(new int[] {51, 51, 0, 102}, color);
        nativeGetBitmapAverageColorInRect2(row, 0, 0, 5, 1, color);
        assertArrayEquals(new int[] {127, 127, 0, 255}, color);

        Bitmap square = Bitmap.createBitmap(10, 10, Bitmap.Config.ARGB_8888);
        for (int i = 0; i < 16; i++) square.setPixel(2 + i % 4, 3 + i / 4, 0xFF000000);
        int[] rect = {7, 7, 7, 7, 7};
        nativeGetBitmapTransparentCutOffRect(square, 0, rect);
        assertArrayEquals(new int[] {2, 3, 5, 6, 7}, rect);
        nativeGetBitmapTransparentCutOffRect(Bitmap.createBitmap(48, 32, Bitmap.Config.RGB_565), 0, rect);
        assertArrayEquals(new int[] {0, 0, 47, 31, 7}, rect);
    }

    @Test
    void fitsSizes() {
        int[] box = {0, 0, 119, 99}, canvas = new int[4], size = {200, 100};
        assertTrue(nativeGetIconBitmapInfo(box, canvas));
        assertArrayEquals(new int[] {0, 10, 120, 120}, canvas);
        assertArrayEquals(new int[] {0, 0, 120, 100}, box);
        assertFalse(nativeGetIconBitmapInfo(new int[] {0, 0, 99, 99}, canvas));
        nativeGetSourceSize(true, 1, 9, size, 100, 100);
        assertArrayEquals(new int[] {100, 50}, size);
        nativeGetSourceSize(false, 9, 0.5f, size, 100, 100);
        assertArrayEquals(new int[] {50, 25}, size);
    }

    @Test
    void badBitmapsGetTheirStatusAndChangeNothing() throws Throwable {
        Bitmap recycled = bitmap(2, 2), small = bitmap(1, 2), other = Bitmap.createBitmap(4, 4, Bitmap.Config.RGB_565);
        recycled.recycle();
        assertEquals(65, NATIVES.size());
        for (Method method : NATIVES) {
            int[] bitmaps = parameters(method, Bitmap.class);
            for (int i : bitmaps) {
                boolean isThirdOfNine = bitmaps.length == 9 && i == 2;
                for (Bitmap bad : new Bitmap[] {null, recycled, small, other}) {
                    // A first bitmap may be smaller than the rest; the third of nine must not be.
                    if (bad == small && (i == 0 || isThirdOfNine)) continue;
                    Call call = new Call(method).with(i, bad);
                    Object result = call.run();
                    int status = bad == other ? 0 : bad == recycled ? JNI_EXCEPTION : BAD_PARAMETER;
                    if (isMeasure(method)) {
                        if (result != null) assertEquals(0, ((Number) result).floatValue(), call::toString);
                        boolean isWhole = method.getName().endsWith("CutOffRect") && bad == other;
                        int[] rect = isWhole ? new int[] {0, 0, 3, 3} : new int[4];
                        for (int out : parameters(method, int[].class)) assertArrayEquals(rect, (int[]) call.arguments()[out]);
                    } else {
                        assertEquals(status, result, call::toString);
                    }
                    assertEquals(!(isThirdOfNine && bad == other), call.changedNoBitmap(), call::toString);
                }
            }
        }
        for (Bitmap bad : new Bitmap[] {null, recycled, other})
            assertEquals(bad == other ? 0 : bad == recycled ? JNI_EXCEPTION : BAD_PARAMETER, nativeBitmapGetHSV(bad));
    }

    /** Arrays with another copy after them: where they are too short, it has an exception pending, and -Xcheck:jni warns. */
    private static final List<String> GOES_ON =
        List.of("nativeGetIconBitmapInfo 0", "nativeGetSourceSize 3", "nativeImageFilter8 1");

    private static void callWithShortArrays(boolean goesOn) throws Exception {
        for (Method method : NATIVES)
            for (Class<?> type : List.of(int[].class, float[].class))
                for (int i : parameters(method, type)) {
                    if (GOES_ON.contains(method.getName() + " " + i) != goesOn) continue;
                    Call call = new Call(method).with(i, Array.newInstance(type.componentType(), 1));
                    assertThrows(ArrayIndexOutOfBoundsException.class, call::run, call::toString);
                    for (int b : parameters(method, Bitmap.class)) assertEquals(0, locks(call.arguments()[b]), call::toString);
                }
    }

    private static int locks(Object bitmap) throws ReflectiveOperationException {
        var locks = Bitmap.class.getDeclaredField("locks");
        locks.setAccessible(true);
        return ((ByteBuffer) locks.get(bitmap)).getInt(0);
    }

    @Test
    void shortArraysThrowAndNullArraysAreDropped() throws Throwable {
        callWithShortArrays(false);
        for (Method method : NATIVES)
            for (Class<?> type : List.of(int[].class, float[].class))
                for (int i : parameters(method, type)) {
                    Call call = new Call(method).with(i, null);
                    Object result = call.run();
                    if (!isMeasure(method)) assertEquals(0, result, call::toString);
                }
        assertFalse(nativeGetIconBitmapInfo(null, null));
    }

    /** An extreme value, or an array of it; null for types that have none. */
    private static Object extreme(Class<?> type, int which) {
        int i = new int[] {Integer.MIN_VALUE, -1, 0, 65536, Integer.MAX_VALUE}[which];
        float f = new float[] {Float.NaN, Float.NEGATIVE_INFINITY, -0f, Float.MIN_VALUE, Float.MAX_VALUE}[which];
        return type == int.class ? (Object) i
            : type == float.class ? (Object) f
            : type == double.class ? (Object) (double) f
            : type == int[].class ? new int[] {i, i, i, i}
            : type == float[].class ? new float[] {f, f, f, f, f, f, f, f, f} : null;
    }

    @Test
    void extremeNumbersAreNoReasonToFail() throws Throwable {
        for (Method method : NATIVES) {
            var types = method.getParameterTypes();
            // Each parameter alone, then all of them.
            for (int alone = 0; alone <= types.length; alone++)
                for (int which = 0; which < 5; which++) {
                    Call call = new Call(method);
                    for (int i = 0; i < types.length; i++)
                        if ((i == alone || alone == types.length) && extreme(types[i], which) != null)
                            call.with(i, extreme(types[i], which));
                    // Kuwahara's time grows with the square of its radius.
                    if (method.getName().equals("nativeImageFilter4") && (int) call.arguments()[1] > 9) continue;
                    Object result = call.run();
                    boolean isRefused = method.getName().equals("nativePickUpChannel") && ((int) call.arguments()[1] & ~3) != 0;
                    if (!isMeasure(method)) assertEquals(isRefused ? BAD_PARAMETER : 0, result, call::toString);
                    if (isRefused || isMeasure(method)) assertTrue(call.changedNoBitmap(), call::toString);
                }
        }
    }

    /** What needs a JVM of its own. */
    static final class Child {
        public static void main(String[] arguments) throws Exception {
            if (arguments[0].equals("short arrays")) callWithShortArrays(true);
            else nativeBitmapGetHSV(bitmap(1, 1));
        }
    }

    @ParameterizedTest
    @CsvSource({"get HSV, 134", "short arrays, 0"})  // 128 + SIGABRT
    void endsTheProcessOrDoesNot(String what, int status, @TempDir Path folder) throws Exception {
        var child = new ProcessBuilder(Path.of(System.getProperty("java.home"), "bin", "java").toString(), "-Xmx32m",
            "-XX:-CreateCoredumpOnCrash", "-Djava.library.path=" + System.getProperty("java.library.path"), "-cp",
            System.getProperty("java.class.path"), Child.class.getName(), what);
        Path output = folder.resolve("output");
        child.directory(folder.toFile()).redirectErrorStream(true).redirectOutput(output.toFile());
        assertEquals(status, child.start().waitFor(), Files.readString(output));
    }

    @Test
    void aThresholdArrivesBitForBit() {
        Bitmap faint = bitmap(2, 1, 0, 0, 0, 100, 0, 0, 0, 101);
        assertEquals(1, nativeGetBitmapInvisibleAreaPrecent(faint, Float.NaN));
        assertEquals(0.5f, nativeGetBitmapInvisibleAreaPrecent(faint, 100));
        assertEquals(0, nativeGetBitmapInvisibleAreaPrecent(faint, Math.nextDown(100f)));
    }
}
