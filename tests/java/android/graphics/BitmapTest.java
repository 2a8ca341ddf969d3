package android.graphics;

import static java.util.stream.Collectors.joining;
import static org.junit.jupiter.api.Assertions.*;

import android.graphics.Bitmap.CompressFormat;
import android.graphics.Bitmap.Config;
import java.io.OutputStream;
import java.nio.*;
import java.util.HexFormat;
import java.util.List;
import java.util.function.Consumer;
import java.util.stream.IntStream;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.CsvSource;

class BitmapTest {
    static final HexFormat HEX = HexFormat.of().withUpperCase();

    /** A colour as it is stored, read, erased with, and read from a copy in RGB_565; other copies keep what they can hold. */
    @ParameterizedTest
    @CsvSource({
        "ARGB_8888, FF123456, 123456FF, FF123456, FF123456, FF103452",
        "ARGB_8888, 80FF4001, 80200180, 80FF4002, 80FF4002, FF842000",
        "ARGB_8888, 01FF807F, 01010001, 01FFFF00, 01FFFF00, FF000000",
        "ARGB_8888, 80FFFFFF, 80808080, 80FFFFFF, 80FFFFFF, FF848284",
        "ARGB_8888, 00FFFFFF, 00000000, 00000000, 00000000, FF000000",
        "RGB_565,   FF123456, AA11,     FF103452, FF103452, FF103452",
        "RGB_565,   FF050301, 2008,     FF080400, FF080400, FF080400",
        "RGB_565,   00FF0000, 00F8,     FFFF0000, FF000000, FFFF0000",
        "RGB_565,   80FFFFFF, FFFF,     FFFFFFFF, FF848284, FFFFFFFF",
        "ALPHA_8,   7F123456, 7F,       7F000000, 7F000000, FF000000",
    })
    void colorsAreKept(Config config, String written, String stored, String read, String erased, String in565) {
        var bitmap = Bitmap.createBitmap(2, 2, config);
        assertTrue(bitmap.sameAs(Bitmap.createBitmap(2, 2, config)));
        assertFalse(bitmap.sameAs(Bitmap.createBitmap(4, 1, config)));
        int color = Integer.parseUnsignedInt(written, 16);
        bitmap.setPixel(1, 0, color);
        String clear = "0".repeat(stored.length());
        assertEquals(clear + stored + clear + clear, HEX.formatHex(bytes(bitmap)));
        for (Config to : Config.values()) {
            var copy = bitmap.copy(to, true);
            String copied = to == Config.RGB_565 ? in565 : to == Config.ALPHA_8 ? read.substring(0, 2) + "000000" : read;
            assertEquals(to + copied, copy.getConfig() + hex(copy.getPixel(1, 0)));
            assertEquals(to == config, bitmap.sameAs(copy));
            copy.eraseColor(~color);
            assertFalse(bitmap.sameAs(copy), "a copy has pixels of its own");
            assertFalse(bitmap.copy(to, false).isMutable());
        }
        assertEquals(read, hex(bitmap.getPixel(1, 0)));
        bitmap.eraseColor(color);
        assertEquals(erased.repeat(4), hex(pixels(bitmap)));
    }

    @Test
    void everyChannelAndAlphaRoundsToTheNearest() {
        int[] colors = IntStream.range(0, 65536).map(i -> i >> 8 << 24 | (i & 255) * 0x10101).toArray();
        var bitmap = Bitmap.createBitmap(256, 256, Config.ARGB_8888);
        bitmap.setPixels(colors, 0, 256, 0, 0, 256, 256);
        byte[] stored = bytes(bitmap);
        // The same table taken as premultiplied memory, channels above their alpha included.
        bitmap.copyPixelsFromBuffer(IntBuffer.wrap(colors));
        int[] read = pixels(bitmap);
        for (int i = 0; i < colors.length; ++i) {
            int a = i >> 8, c = i & 255, back = a == 0 ? 0 : (int) Math.min(255, Math.round(c * 255.0 / a));
            String at = "c " + c + " a " + a;
            assertEquals(Math.round(c * a / 255.0), stored[4 * i + 2] & 255, at);
            assertEquals(a, stored[4 * i + 3] & 255, at);
            assertEquals(a << 24 | back * 0x10101, read[i], at);
        }
    }

    @Test
    void rectanglesHonourOffsetAndStrideOfEitherSign() {
        var bitmap = Bitmap.createBitmap(3, 3, Config.ARGB_8888);
        bitmap.setPixels(new int[] {9, -1, -2, 9, -3, -4, 9}, 1, 3, 1, 1, 2, 2);
        assertArrayEquals(new int[] {0, 0, 0, 0, -1, -2, 0, -3, -4}, pixels(bitmap));
        int[] upsideDown = new int[4];
        bitmap.getPixels(upsideDown, 2, -2, 1, 1, 2, 2);
        bitmap.getPixels(upsideDown, 9, 9, 9, 9, 0, 9);
        assertArrayEquals(new int[] {-3, -4, -1, -2}, upsideDown, "an empty rectangle is none, wherever it is");
    }

    @SafeVarargs
    private static void refused(Class<? extends Exception> by, String message, Bitmap bitmap, Consumer<Bitmap>... uses) {
        for (var use : uses) {
            String told = "" + assertThrows(by, () -> use.accept(bitmap), message).getMessage();
            assertTrue(told.contains(message), told);
        }
    }

    @Test
    void badArgumentsAreRefused() {
        var bad = IllegalArgumentException.class;
        var bitmap = Bitmap.createBitmap(2, 3, Config.ARGB_8888);
        int[] six = {-1, -1, -1, -1, -1, -1};
        int most = Integer.MAX_VALUE;
        refused(bad, "width and height must be > 0", bitmap,
            b -> Bitmap.createBitmap(0, 1, Config.ALPHA_8), b -> Bitmap.createBitmap(six, 1, -1, Config.ALPHA_8));
        refused(bad, "exceeds 2147483647 bytes", bitmap,
            b -> Bitmap.createBitmap(1 << 15, 1 << 14, Config.ARGB_8888),
            b -> Bitmap.createBitmap(most, most, Config.ARGB_8888));
        refused(bad, "x must be >= 0", bitmap, b -> b.getPixel(-1, 0), b -> b.getPixels(six, 0, 2, -1, 0, 2, 3));
        refused(bad, "y must be >= 0", bitmap, b -> b.setPixel(0, -1, 0), b -> b.setPixels(six, 0, 2, 0, -1, 2, 3));
        refused(bad, "x must be < bitmap.width()", bitmap, b -> b.setPixel(2, 0, 0));
        refused(bad, "y must be < bitmap.height()", bitmap, b -> b.getPixel(1, 3));
        refused(bad, "width must be >= 0", bitmap, b -> b.getPixels(six, 0, 2, 0, 0, -2, 3));
        refused(bad, "height must be >= 0", bitmap, b -> b.getPixels(six, 0, 2, 0, 0, 2, -3));
        refused(bad, "x + width must be <=", bitmap, b -> b.getPixels(six, 0, most, 1, 0, most, 1));
        refused(bad, "y + height must be <=", bitmap, b -> b.setPixels(six, 0, 2, 0, 1, 2, 3));
        refused(bad, "abs(stride) must be >= width", bitmap, b -> b.setPixels(six, 0, -1, 0, 0, 2, 3));
        refused(ArrayIndexOutOfBoundsException.class, "colors", bitmap, b -> Bitmap.createBitmap(six, 7, 1, Config.ALPHA_8),
            b -> b.getPixels(six, 1, 2, 0, 0, 2, 3), b -> b.setPixels(six, 3, -2, 0, 0, 2, 3),
            b -> b.getPixels(six, 0, Integer.MIN_VALUE, 0, 0, 2, 3));
        refused(RuntimeException.class, "not large enough", bitmap,
            b -> b.copyPixelsToBuffer(IntBuffer.allocate(5)), b -> b.copyPixelsFromBuffer(ByteBuffer.allocate(23)));
        refused(RuntimeException.class, "unsupported", bitmap, b -> b.copyPixelsToBuffer(CharBuffer.allocate(99)));
        for (int quality : new int[] {-1, 101})
            refused(bad, "quality", bitmap, b -> b.compress(CompressFormat.PNG, quality, OutputStream.nullOutputStream()));
        refused(NullPointerException.class, "", bitmap,
            b -> Bitmap.createBitmap(1, 1, null), b -> b.compress(CompressFormat.PNG, 100, null));
        assertArrayEquals(new int[6], pixels(bitmap), "nothing is written before a refusal");
        assertArrayEquals(new int[] {-1, -1, -1, -1, -1, -1}, six);
    }

    @Test
    void recycledRefusesAllAndImmutableRefusesWrites() {
        var immutable = Bitmap.createBitmap(new int[] {-1}, 1, 1, Config.ARGB_8888);
        var recycled = immutable.copy(Config.ARGB_8888, true);
        recycled.recycle();
        recycled.recycle();
        assertTrue(recycled.isRecycled());
        assertEquals(0, recycled.getByteCount());
        for (var bitmap : List.of(immutable, recycled))
            refused(IllegalStateException.class, (bitmap == recycled ? "recycled" : "immutable") + " bitmap", bitmap,
                b -> b.setPixel(0, 0, 0), b -> b.setPixels(new int[1], 0, 1, 0, 0, 1, 1), b -> b.eraseColor(0),
                b -> b.copyPixelsFromBuffer(IntBuffer.allocate(1)));
        refused(IllegalStateException.class, "recycled bitmap", recycled, b -> b.getPixel(0, 0), b -> b.sameAs(b),
            b -> b.getPixels(new int[1], 0, 1, 0, 0, 1, 1), b -> b.copyPixelsToBuffer(IntBuffer.allocate(1)),
            b -> b.copy(Config.RGB_565, true), b -> b.compress(CompressFormat.PNG, 0, OutputStream.nullOutputStream()));
        refused(IllegalArgumentException.class, "recycled bitmap", recycled, immutable::sameAs);
        assertFalse(immutable.sameAs(null));
        assertEquals("FFFFFFFF", HEX.formatHex(bytes(immutable)));
    }

    /** Five bytes, which end within a short or int: the memory is what counts, the position moves by whole elements. */
    @Test
    void buffersOfEveryKindHoldTheBytesInMemory() {
        var bitmap = Bitmap.createBitmap(1, 5, Config.ALPHA_8);
        bitmap.copyPixelsFromBuffer(ByteBuffer.wrap(new byte[] {9, 1, 2, 3, 4, 5}, 1, 5));
        for (var order : List.of(ByteOrder.LITTLE_ENDIAN, ByteOrder.BIG_ENDIAN))
            for (var memory : List.of(ByteBuffer.allocate(8).order(order), ByteBuffer.allocateDirect(8).order(order)))
                for (var view : List.of(memory.duplicate(), memory.asShortBuffer().limit(3), memory.asIntBuffer())) {
                    int moved = view instanceof ByteBuffer ? 5 : view instanceof ShortBuffer ? 2 : 1;
                    memory.putLong(0, -1);
                    bitmap.copyPixelsToBuffer(view);
                    assertEquals(ByteBuffer.wrap(new byte[] {1, 2, 3, 4, 5, -1, -1, -1}), memory);
                    assertEquals(moved, view.position());
                    var back = Bitmap.createBitmap(1, 5, Config.ALPHA_8);
                    back.copyPixelsFromBuffer(view.rewind());
                    assertTrue(back.sameAs(bitmap));
                    assertEquals(moved, view.position());
                }
    }

    static int[] pixels(Bitmap bitmap) {
        int[] colors = new int[bitmap.getWidth() * bitmap.getHeight()];
        bitmap.getPixels(colors, 0, bitmap.getWidth(), 0, 0, bitmap.getWidth(), bitmap.getHeight());
        return colors;
    }

    private static byte[] bytes(Bitmap bitmap) {
        var bytes = ByteBuffer.allocate(bitmap.getByteCount());
        bitmap.copyPixelsToBuffer(bytes);
        return bytes.array();
    }

    static String hex(int... colors) {
        return IntStream.of(colors).mapToObj("%08X"::formatted).collect(joining());
    }
}
