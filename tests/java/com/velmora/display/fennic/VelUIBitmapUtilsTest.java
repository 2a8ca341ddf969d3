package com.velmora.display.fennic;

import static com.velmora.display.fennic.Natives.*;
import static com.velmora.display.fennic.VelUIBitmapUtils.*;
import static org.junit.jupiter.api.Assertions.*;

import android.graphics.Bitmap;
import com.velmora.display.fennic.cli.Operation;
import com.velmora.display.fennic.cli.Operation.Parameter;
import java.lang.reflect.Array;
import java.lang.reflect.InvocationTargetException;
import java.nio.ByteBuffer;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.Arrays;
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
    private static final List<Operation> NATIVES = Natives.all();

    /** Arguments that every native takes without complaint, by their type; each bitmap is one of its own. */
    private static Object usual(Class<?> type) {
        return ofType(type, picture("1,2,3,4 5,6,7,8 | 9,10,11,12 13,14,15,255"), 2, 0.5, true, new int[] {0, 0, 9, 5},
            new float[] {9, 8, 7, 6, 5, 4, 3, 2, 1});
    }

    /** One call of a native, with usual arguments but for those that are set. */
    private static final class Call {
        final Operation operation;
        final Object[] arguments;
        private byte[][] before;

        Call(Operation operation) {
            this.operation = operation;
            arguments = Stream.of(operation.method().getParameterTypes()).map(VelUIBitmapUtilsTest::usual).toArray();
        }

        Call with(int parameter, Object value) {
            arguments[parameter] = value;
            return this;
        }

        Object run() throws Throwable {
            before = bitmaps();
            try {
                return operation.method().invoke(null, arguments);
            } catch (InvocationTargetException e) {
                throw e.getCause();
            }
        }

        boolean changedNoBitmap() {
            return Arrays.deepEquals(before, bitmaps());
        }

        private byte[][] bitmaps() {
            return Stream.of(arguments)
                .map(argument -> argument instanceof Bitmap bitmap && !bitmap.isRecycled() ? bytes(bitmap) : null)
                .toArray(byte[][]::new);
        }

        @Override
        public String toString() {
            return operation.nativeName() + Arrays.deepToString(arguments);
        }
    }

    /** What has no status. */
    private static boolean isMeasure(Operation operation) {
        return operation.kind().matches("MEASURE|GEOMETRY");
    }

    /** The parameters of these types. */
    private static int[] parameters(Operation operation, Class<?>... types) {
        var all = operation.method().getParameterTypes();
        return IntStream.range(0, all.length).filter(i -> List.of(types).contains(all[i])).toArray();
    }

    /** Of every type and bit for bit; what the operations make of them the library's own tests hold. */
    @Test
    void numbersArriveAndResultsComeBack() {
        Bitmap icon = Bitmap.createBitmap(5, 4, Bitmap.Config.ARGB_8888);
        for (int y = 1; y <= 2; y++) icon.setPixel(1, y, 0xFFFF0000);
        icon.setPixel(3, 1, 0x6500FF00);
        assertEquals(3, nativeGetBitmapVisiblePointNum(icon));
        assertEquals(17, nativeGetBitmapInvisiblePointNum(icon));
        assertEquals(0.8f, nativeGetBitmapInvisibleAreaPrecent(icon, Math.nextDown(101f)));
        assertEquals(0.9f, nativeGetBitmapInvisibleAreaPrecent(icon, 101));
        assertEquals(1, nativeGetBitmapInvisibleAreaPrecent(icon, Float.NaN));
        int[] color = new int[4], rect = {7, 7, 7, 7, 7}, box = {0, 0, 119, 99}, canvas = new int[4], size = {200, 100};
        nativeGetBitmapAverageColorInRect(icon, 2, 0, 3, 9, color, 101);
        assertArrayEquals(new int[] {0, 101, 0, 101}, color);
        nativeGetBitmapAverageColorInRect2(icon, 1, 0, 2, 2, color);
        assertArrayEquals(new int[] {255, 0, 0, 255}, color);
        nativeGetBitmapTransparentCutOffRect(icon, 100, rect);
        assertArrayEquals(new int[] {1, 1, 3, 2, 7}, rect);
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
        Bitmap recycled = picture("1 2 | 3 4"), small = picture("1 | 2");
        Bitmap other = Bitmap.createBitmap(4, 4, Bitmap.Config.RGB_565);
        recycled.recycle();
        assertEquals(65, NATIVES.size());
        for (Operation operation : NATIVES) {
            for (int i : parameters(operation, Bitmap.class)) {
                boolean isThirdOfNine = operation.frame().equals("nine") && i == 2;
                for (Bitmap bad : new Bitmap[] {null, recycled, small, other}) {
                    // A first bitmap may be smaller than the rest; the third of nine must not be.
                    if (bad == small && (i == 0 || isThirdOfNine)) continue;
                    Call call = new Call(operation).with(i, bad);
                    Object result = call.run();
                    int status = bad == other ? 0 : bad == recycled ? JNI_EXCEPTION : BAD_PARAMETER;
                    if (isMeasure(operation)) {
                        if (result != null) assertEquals(0, ((Number) result).floatValue(), call::toString);
                        boolean isWhole = operation.name().equals("cut-off") && bad == other;
                        int[] rect = isWhole ? new int[] {0, 0, 3, 3} : new int[4];
                        for (int out : parameters(operation, int[].class)) assertArrayEquals(rect, (int[]) call.arguments[out]);
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
        for (Operation operation : NATIVES)
            for (int i : parameters(operation, int[].class, float[].class)) {
                if (GOES_ON.contains(operation.nativeName() + " " + i) != goesOn) continue;
                Call call = new Call(operation);
                call.with(i, Array.newInstance(call.arguments[i].getClass().componentType(), 1));
                assertThrows(ArrayIndexOutOfBoundsException.class, call::run, call::toString);
                for (int b : parameters(operation, Bitmap.class)) assertEquals(0, locks(call.arguments[b]), call::toString);
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
        for (Operation operation : NATIVES)
            for (int i : parameters(operation, int[].class, float[].class)) {
                Call call = new Call(operation).with(i, null);
                Object result = call.run();
                if (!isMeasure(operation)) assertEquals(0, result, call::toString);
            }
        assertFalse(nativeGetIconBitmapInfo(null, null));
    }

    /** An extreme value, or an array of it; null for types that have none. */
    private static Object extreme(Class<?> type, int which) {
        int i = new int[] {Integer.MIN_VALUE, -1, 0, 65536, Integer.MAX_VALUE}[which];
        float f = new float[] {Float.NaN, Float.NEGATIVE_INFINITY, -0f, Float.MIN_VALUE, Float.MAX_VALUE}[which];
        return ofType(type, null, i, f, null, new int[] {i, i, i, i}, new float[] {f, f, f, f, f, f, f, f, f});
    }

    @Test
    void extremeNumbersAreNoReasonToFail() throws Throwable {
        for (Operation operation : NATIVES) {
            var types = operation.method().getParameterTypes();
            int channel = operation.parameters().stream().map(Parameter::name).toList().indexOf("channel");
            // Each parameter alone, then all of them.
            for (int alone = 0; alone <= types.length; alone++)
                for (int which = 0; which < 5; which++) {
                    Call call = new Call(operation);
                    for (int i = 0; i < types.length; i++)
                        if ((i == alone || alone == types.length) && extreme(types[i], which) != null)
                            call.with(i, extreme(types[i], which));
                    if (operation.traits().contains("costly") && (int) call.arguments[1] > 9) continue;
                    Object result = call.run();
                    boolean isRefused = channel >= 0 && ((int) call.arguments[channel] & ~3) != 0;
                    if (!isMeasure(operation)) assertEquals(isRefused ? BAD_PARAMETER : 0, result, call::toString);
                    if (isRefused || isMeasure(operation)) assertTrue(call.changedNoBitmap(), call::toString);
                }
        }
    }

    /** What needs a JVM of its own. */
    static final class Child {
        public static void main(String[] arguments) throws Exception {
            if (arguments[0].equals("short arrays")) callWithShortArrays(true);
            else nativeBitmapGetHSV(picture("0"));
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
}
