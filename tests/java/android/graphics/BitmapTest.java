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
        for (Config to : List.of(Config.ALPHA_8, Config.RGB_565, Config.ARGB_8888)) {
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
        refused(bad, "width must be > 0", bitmap, b -> Bitmap.createBitmap(b, 0, 0, 0, 1));
        refused(bad, "height must be > 0", bitmap, b -> Bitmap.createBitmap(b, 0, 0, 1, -1));
        refused(bad, "y must be >= 0", bitmap, b -> Bitmap.createBitmap(b, 0, -1, 1, 1));
        refused(bad, "x + width must be <= bitmap.width()", bitmap, b -> Bitmap.createBitmap(b, 1, 0, most, 1));
        refused(bad, "y + height must be <= bitmap.height()", bitmap, b -> Bitmap.createBitmap(b, 0, 1, 2, 3));
        refused(bad, "width and height must be > 0", bitmap, b -> Bitmap.createScaledBitmap(b, 0, 1, true),
            b -> b.setWidth(0), b -> b.reconfigure(1, -1, Config.ALPHA_8));
        refused(bad, "Bitmap not large enough", bitmap, b -> b.setHeight(4), b -> b.reconfigure(most, most, Config.ALPHA_8));
        refused(bad, "Hardware bitmaps are always immutable", bitmap, b -> b.copy(Config.HARDWARE, true));
        for (Config config : List.of(Config.RGBA_F16, Config.HARDWARE, Config.RGBA_1010102))
            refused(bad, config + " cannot be made on a desktop JVM; ask for ARGB_8888", bitmap, b -> b.setConfig(config),
                b -> Bitmap.createBitmap(1, 1, config), b -> b.copy(config, false));
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
        assertEquals(0, recycled.getByteCount() + recycled.getAllocationByteCount());
        for (var bitmap : List.of(immutable, recycled))
            refused(IllegalStateException.class, (bitmap == recycled ? "recycled" : "immutable") + " bitmap", bitmap,
                b -> b.setPixel(0, 0, 0), b -> b.setPixels(new int[1], 0, 1, 0, 0, 1, 1), b -> b.eraseColor(0),
                b -> b.copyPixelsFromBuffer(IntBuffer.allocate(1)));
        refused(IllegalStateException.class, "only mutable bitmaps", immutable, b -> b.setConfig(Config.ALPHA_8));
        refused(IllegalStateException.class, "recycled bitmap", recycled, b -> b.getPixel(0, 0), b -> b.sameAs(b),
            b -> b.getPixels(new int[1], 0, 1, 0, 0, 1, 1), b -> b.copyPixelsToBuffer(IntBuffer.allocate(1)),
            b -> b.copy(Config.RGB_565, true), b -> b.compress(CompressFormat.PNG, 0, OutputStream.nullOutputStream()),
            b -> b.setHasAlpha(true), b -> b.setPremultiplied(true), b -> b.extractAlpha(), b -> b.setWidth(1));
        refused(IllegalArgumentException.class, "recycled bitmap", recycled, immutable::sameAs);
        refused(IllegalArgumentException.class, "recycled source", recycled,
            Bitmap::createBitmap, b -> Bitmap.createScaledBitmap(b, 2, 2, true));
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

    /** Between centres, beyond them, over two rows, of premultiplied channels, and in the other formats. */
    @ParameterizedTest
    @CsvSource({
        "ARGB_8888, 2, FF000000FFFFFFFF, 4, 1, true,  FF000000FF404040FFBFBFBFFFFFFFFF",
        "ARGB_8888, 2, FF000000FFFFFFFF, 4, 1, false, FF000000FF000000FFFFFFFFFFFFFFFF",
        "ARGB_8888, 4, FF000000FF010101FF000000FF000000, 2, 1, true, FF010101FF000000",
        "ARGB_8888, 3, FF010101FF020202FF030303, 2, 1, false, FF010101FF030303",
        "ARGB_8888, 3, FF010101FF020202FF030303, 1, 2, false, FF020202FF020202",
        "ARGB_8888, 2, 80FF000000000000, 1, 1, true, 40FF0000",
        "ARGB_8888, 2, FF000000FFFF0000FF00FF00FF0000FF, 1, 1, true, FF404040",
        "ARGB_8888, 2, FF000000FFFF0000FF00FF00FF0000FF, 1, 4, true, FF800000FF602020FF206060FF008080",
        "RGB_565,   2, FF000000FFFFFFFF, 4, 1, true,  FF000000FF424142FFBDBEBDFFFFFFFF",
        "ALPHA_8,   2, 00000000FF000000, 3, 1, true,  0000000080000000FF000000",
    })
    void scalingSamplesAroundTheCentres(Config config, int width, String from, int dstWidth, int dstHeight, boolean filter,
            String to) {
        int[] colors = colors(from);
        var bitmap = Bitmap.createBitmap(colors, width, colors.length / width, config);
        var scaled = Bitmap.createScaledBitmap(bitmap, dstWidth, dstHeight, filter);
        assertEquals(to, hex(pixels(scaled)));
        assertEquals(config + " true", scaled.getConfig() + " " + scaled.isMutable());
        assertSame(bitmap, Bitmap.createScaledBitmap(bitmap, width, colors.length / width, filter));
    }

    @Test
    void bitmapsAreMadeOfOthers() {
        var upwards = Bitmap.createBitmap(colors("010000000200000003000000"), 2, -1, 1, 3, Config.ALPHA_8);
        assertEquals("030000000200000001000000 false", hex(pixels(upwards)) + " " + upwards.isMutable());
        var bitmap = Bitmap.createBitmap(IntStream.rangeClosed(-12, -1).toArray(), 1, 4, 3, 3, Config.ARGB_8888);
        bitmap.setDensity(240);
        assertSame(bitmap, Bitmap.createBitmap(bitmap));
        var part = Bitmap.createBitmap(bitmap, 1, 1, 2, 2);
        assertEquals("FFFFFFFAFFFFFFFBFFFFFFFEFFFFFFFF", hex(pixels(part)));
        var whole = Bitmap.createBitmap(part);
        assertNotSame(part, whole);
        assertTrue(part.isMutable() && whole.isMutable() && whole.sameAs(part));
        var opaque = Bitmap.createBitmap(1, 1, Config.ARGB_8888, false);
        assertEquals("FF000000 false", hex(pixels(opaque)) + " " + opaque.hasAlpha());
        assertEquals("00000000", hex(pixels(Bitmap.createBitmap(1, 1, Config.ARGB_4444, true))));
        var translucent = Bitmap.createBitmap(colors("7F12345600FFFFFF"), 2, 1, Config.ARGB_8888);
        translucent.setDensity(240);
        assertEquals("7F00000000000000", hex(pixels(translucent.extractAlpha())));
        assertEquals("FF000000", hex(pixels(Bitmap.createBitmap(1, 1, Config.RGB_565).extractAlpha())));
        for (var made : List.of(part, whole, translucent.extractAlpha(), bitmap.copy(Config.RGB_565, true),
                Bitmap.createScaledBitmap(bitmap, 9, 9, false)))
            assertEquals(240, made.getDensity());
    }

    /** What becomes of 80FF4001, stored premultiplied, as the bitmap's answers change; and what a canvas would take. */
    @Test
    void alphaAndPremultiplicationAreTold() {
        var bitmap = Bitmap.createBitmap(1, 1, Config.ARGB_8888);
        bitmap.setPixel(0, 0, 0x80FF4001);
        assertTrue(bitmap.hasAlpha() && bitmap.isPremultiplied());
        bitmap.setPremultiplied(false);
        assertFalse(bitmap.isPremultiplied());
        assertEquals("80802001", hex(bitmap.getPixel(0, 0)), "the same bytes, taken as they are");
        refused(RuntimeException.class, "trying to use a non-premultiplied bitmap", bitmap,
            Bitmap::createBitmap, b -> Bitmap.createScaledBitmap(b, 2, 2, true));
        bitmap.setPixels(new int[] {0x80FF4001}, 0, 1, 0, 0, 1, 1);
        assertEquals("FF400180", HEX.formatHex(bytes(bitmap)));
        var copy = bitmap.copy(Config.ARGB_8888, true);
        assertEquals("80FF4001 false", hex(copy.getPixel(0, 0)) + " " + copy.isPremultiplied());
        copy.eraseColor(0x01FFFFFF);
        assertEquals("FFFFFF01", HEX.formatHex(bytes(copy)));
        bitmap.setHasAlpha(false);
        bitmap.setPremultiplied(true);
        assertFalse(bitmap.hasAlpha() || bitmap.isPremultiplied(), "premultiplied by no alpha");
        bitmap.setHasAlpha(true);
        assertTrue(bitmap.isPremultiplied());
        var rgb = Bitmap.createBitmap(1, 1, Config.RGB_565);
        rgb.setHasAlpha(true);
        assertFalse(rgb.hasAlpha() || rgb.isPremultiplied() || rgb.copy(Config.ARGB_8888, true).hasAlpha());
    }

    @Test
    void memoryTakesAnotherShape() {
        var bitmap = Bitmap.createBitmap(4, 2, Config.ARGB_8888);
        bitmap.eraseColor(-1);
        bitmap.reconfigure(3, 5, Config.RGB_565);
        assertEquals("3 5 6 30 32 RGB_565 false", shape(bitmap));
        bitmap.eraseColor(0xFF123456);
        assertEquals("AA11".repeat(15), HEX.formatHex(bytes(bitmap)));
        assertTrue(bitmap.sameAs(bitmap.copy(Config.RGB_565, false)), "what lies behind the pixels does not count");
        bitmap.setConfig(Config.ALPHA_8);
        bitmap.setWidth(4);
        bitmap.setHeight(8);
        assertEquals("4 8 4 32 32 ALPHA_8 true", shape(bitmap));
    }

    private static String shape(Bitmap b) {
        return "%d %d %d %d %d %s %s".formatted(b.getWidth(), b.getHeight(), b.getRowBytes(), b.getByteCount(),
            b.getAllocationByteCount(), b.getConfig(), b.hasAlpha());
    }

    @Test
    void generationsChangeWithThePixels() {
        var bitmap = Bitmap.createBitmap(1, 1, Config.ARGB_8888);
        List<Consumer<Bitmap>> writes = List.of(b -> b.setPixel(0, 0, 1), b -> b.setPixels(new int[1], 0, 1, 0, 0, 1, 1),
            b -> b.eraseColor(0), b -> b.copyPixelsFromBuffer(IntBuffer.allocate(1)), b -> b.setConfig(Config.ALPHA_8));
        for (var write : writes) {
            int before = bitmap.getGenerationId();
            pixels(bitmap.copy(Config.RGB_565, true));
            assertEquals(before, bitmap.getGenerationId());
            write.accept(bitmap);
            assertNotEquals(before, bitmap.getGenerationId());
        }
        assertNotEquals(bitmap.getGenerationId(), Bitmap.createBitmap(1, 1, Config.ALPHA_8).getGenerationId());
    }

    @ParameterizedTest
    @CsvSource({"160, 240, 15, 8", "240, 160, 7, 3", "0, 240, 10, 5", "160, 0, 10, 5", "320, 320, 10, 5"})
    void sizesFollowTheDensity(int density, int target, int width, int height) {
        var bitmap = Bitmap.createBitmap(10, 5, Config.ALPHA_8);
        assertEquals(160, bitmap.getDensity());
        bitmap.setDensity(density);
        assertEquals(width + " " + height, bitmap.getScaledWidth(target) + " " + bitmap.getScaledHeight(target));
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

    static int[] colors(String hex) {
        int[] colors = new int[hex.length() / 8];
        ByteBuffer.wrap(HEX.parseHex(hex)).asIntBuffer().get(colors);
        return colors;
    }

    static String hex(int... colors) {
        return IntStream.of(colors).mapToObj("%08X"::formatted).collect(joining());
    }
}
