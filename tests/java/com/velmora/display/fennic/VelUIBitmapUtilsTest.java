package com.velmora.display.fennic;

import static com.velmora.display.fennic.VelUIBitmapUtils.*;
import static org.junit.jupiter.api.Assertions.assertArrayEquals;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import android.graphics.Bitmap;
import java.lang.reflect.Method;
import java.nio.ByteBuffer;
import java.util.List;
import java.util.Map;
import java.util.function.BinaryOperator;
import java.util.function.ToIntBiFunction;
import java.util.stream.Stream;
import org.junit.jupiter.api.Test;

/** The path of an application: Java class, native, bitmap lock, pixels. */
class VelUIBitmapUtilsTest {
    private static final int BAD_PARAMETER = -1, JNI_EXCEPTION = -2;

    /** Calls a native that blends its second bitmap into its first; a number, where it takes one, is 4. */
    private record Blend(Method method) {
        int apply(Bitmap base, Bitmap layer) {
            try {
                return (int) (method.getParameterCount() == 2 ? method.invoke(null, base, layer) : method.invoke(null, base, layer, 4));
            } catch (ReflectiveOperationException e) {
                throw new AssertionError(method.getName(), e);
            }
        }
    }

    private static List<Blend> blends() {
        return Stream.of(VelUIBitmapUtils.class.getDeclaredMethods())
            .filter(method -> method.getName().matches("nativeBitmapHandle.*|nativeTkPSBlendingMode"))
            .map(Blend::new)
            .toList();
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
    void blendsTheBaseInPlace() {
        int[] layerBytes = {100, 200, 50, 255, 9, 9, 9, 0};
        Map<ToIntBiFunction<Bitmap, Bitmap>, int[]> expected = Map.of(
            VelUIBitmapUtils::nativeBitmapHandle3, new int[] {100, 100, 50, 255, 10, 20, 30, 40},
            VelUIBitmapUtils::nativeBitmapHandle4, new int[] {78, 78, 9, 255, 10, 20, 30, 40},
            VelUIBitmapUtils::nativeBitmapHandle5, new int[] {114, 57, 0, 255, 0, 0, 0, 0},
            (base, layer) -> nativeBitmapHandle6(base, layer, 0), new int[] {44, 44, 100, 255, 11, 21, 31, 40},
            (base, layer) -> nativeTkPSBlendingMode(base, layer, 4), new int[] {78, 78, 9, 255, 10, 20, 30, 40});
        expected.forEach((blend, bytes) -> {
            Bitmap base = bitmap(2, 1, 200, 100, 50, 255, 10, 20, 30, 40), layer = bitmap(2, 1, layerBytes);
            assertEquals(0, blend.applyAsInt(base, layer));
            assertArrayEquals(bytes, bytes(base));
            assertArrayEquals(layerBytes, bytes(layer));
        });
    }

    @Test
    void badBitmapsGetTheirStatusAndChangeNothing() {
        Bitmap recycled = bitmap(2, 2), small = bitmap(1, 2), other = Bitmap.createBitmap(2, 2, Bitmap.Config.RGB_565);
        recycled.recycle();
        assertEquals(27, blends().size());
        for (Blend blend : blends()) {
            String name = blend.method().getName();
            Bitmap base = bitmap(2, 2, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16);
            int[] before = bytes(base);
            assertEquals(BAD_PARAMETER, blend.apply(null, base), name);
            assertEquals(BAD_PARAMETER, blend.apply(base, null), name);
            assertEquals(JNI_EXCEPTION, blend.apply(recycled, base), name);
            assertEquals(JNI_EXCEPTION, blend.apply(base, recycled), name);
            assertEquals(BAD_PARAMETER, blend.apply(base, small), name);
            assertEquals(0, blend.apply(base, other), name);
            assertEquals(0, blend.apply(other, base), name);
            assertArrayEquals(before, bytes(base), name);
        }
        for (Bitmap bad : new Bitmap[] {null, recycled, other}) {
            int[] out = {7, 7, 7, 7};
            assertEquals(0, nativeGetBitmapVisiblePointNum(bad));
            assertEquals(0, nativeGetBitmapInvisiblePointNum(bad));
            assertEquals(0, nativeGetBitmapInvisibleAreaPrecent(bad, 0));
            nativeGetBitmapAverageColorInRect2(bad, 0, 0, 2, 2, out);
            assertArrayEquals(new int[4], out);
        }
    }

    @Test
    void shortArraysThrowAndNullArraysAreDropped() {
        Bitmap bitmap = bitmap(2, 2);
        assertThrows(ArrayIndexOutOfBoundsException.class, () -> nativeGetBitmapTransparentCutOffRect(bitmap, 0, new int[3]));
        assertThrows(ArrayIndexOutOfBoundsException.class, () -> nativeGetBitmapAverageColorInRect(bitmap, 0, 0, 0, 0, new int[0], 0));
        assertThrows(ArrayIndexOutOfBoundsException.class, () -> nativeGetIconBitmapInfo(new int[] {0, 0, 9, 5}, new int[3]));
        nativeGetBitmapTransparentCutOffRect(bitmap, 0, null);
        nativeGetBitmapAverageColorInRect2(null, 0, 0, 1, 1, null);
        nativeGetSourceSize(true, 1, 1, null, 1, 1);
        assertFalse(nativeGetIconBitmapInfo(null, null));
    }

    /** A float, a boolean and an int that reach the method bit for bit give results that no default would give. */
    @Test
    void argumentsArriveUnchanged() {
        Bitmap faint = bitmap(2, 1, 0, 0, 0, 100, 0, 0, 0, 101);
        assertEquals(1, nativeGetBitmapInvisibleAreaPrecent(faint, Float.NaN));
        assertEquals(0.5f, nativeGetBitmapInvisibleAreaPrecent(faint, 100));
        assertEquals(0, nativeGetBitmapInvisibleAreaPrecent(faint, Math.nextDown(100f)));
        BinaryOperator<Integer> burn = (value, offset) -> {
            Bitmap base = bitmap(1, 1, value, value, value, 255);
            nativeBitmapHandle6(base, bitmap(1, 1), offset);
            return bytes(base)[0];
        };
        assertEquals(200 + 17, burn.apply(200, -17));
        assertEquals(200 - 17, burn.apply(200, 17));
    }
}
