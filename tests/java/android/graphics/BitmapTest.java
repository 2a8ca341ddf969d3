package android.graphics;

import static org.junit.jupiter.api.Assertions.assertArrayEquals;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertNull;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;
import static org.junit.jupiter.params.provider.Arguments.arguments;

import android.graphics.Bitmap.CompressFormat;
import android.graphics.Bitmap.Config;
import java.io.ByteArrayInputStream;
import java.io.ByteArrayOutputStream;
import java.io.DataOutputStream;
import java.io.IOException;
import java.io.OutputStream;
import java.nio.Buffer;
import java.nio.ByteBuffer;
import java.nio.ByteOrder;
import java.nio.CharBuffer;
import java.nio.IntBuffer;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.HexFormat;
import java.util.stream.Stream;
import java.util.zip.CRC32;
import java.util.zip.DeflaterOutputStream;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.io.TempDir;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.Arguments;
import org.junit.jupiter.params.provider.CsvSource;
import org.junit.jupiter.params.provider.MethodSource;

class BitmapTest {
    @ParameterizedTest
    @CsvSource({
        "ARGB_8888, FF123456, 123456FF, FF123456, FF123456",
        "ARGB_8888, 80FF4001, 80200180, 80FF4002, 80FF4002",
        "ARGB_8888, 01FF807F, 01010001, 01FFFF00, 01FFFF00",
        "ARGB_8888, 00FFFFFF, 00000000, 00000000, 00000000",
        "RGB_565,   FF123456, AA11,     FF103452, FF103452",
        "RGB_565,   FF050301, 2008,     FF080400, FF080400",
        "RGB_565,   00FF0000, 00F8,     FFFF0000, FF000000",
        "RGB_565,   80FFFFFF, FFFF,     FFFFFFFF, FF848284",
        "ALPHA_8,   7F123456, 7F,       7F000000, 7F000000",
    })
    void colorsAreStoredReadAndErased(Config config, String color, String stored, String read, String erased) {
        var bitmap = Bitmap.createBitmap(2, 2, config);
        bitmap.setPixel(1, 0, argb(color));
        String clear = "0".repeat(stored.length());
        assertEquals(clear + stored + clear + clear, bytes(bitmap));
        assertEquals(read, hex(bitmap.getPixel(1, 0)));
        bitmap.eraseColor(argb(color));
        assertEquals(erased.repeat(4), hex(pixels(bitmap)));
    }

    @Test
    void everyChannelAndAlphaRoundsToTheNearest() {
        int[] colors = new int[65536];
        for (int i = 0; i < colors.length; ++i) {
            colors[i] = i >> 8 << 24 | (i & 255) * 0x10101;
        }
        var bitmap = Bitmap.createBitmap(256, 256, Config.ARGB_8888);
        bitmap.setPixels(colors, 0, 256, 0, 0, 256, 256);
        ByteBuffer stored = ByteBuffer.allocate(bitmap.getByteCount());
        bitmap.copyPixelsToBuffer(stored);
        int[] read = pixels(bitmap);
        // The same table taken as premultiplied memory, channels above their alpha included.
        ByteBuffer raw = ByteBuffer.allocate(stored.capacity()).order(ByteOrder.LITTLE_ENDIAN);
        raw.asIntBuffer().put(colors);
        bitmap.copyPixelsFromBuffer(raw);
        int[] unpremultiplied = pixels(bitmap);
        for (int i = 0; i < colors.length; ++i) {
            int a = i >> 8, c = i & 255;
            String at = "c " + c + " a " + a;
            int kept = (int) Math.round(c * a / 255.0);
            assertEquals(kept, stored.get(4 * i + 2) & 255, at);
            assertEquals(a, stored.get(4 * i + 3) & 255, at);
            assertEquals(a == 0 ? 0 : c, read[i] & 255, a == 0 ? 0 : 127.5 / a + 0.5, at);
            int back = a == 0 ? 0 : (int) Math.min(255, Math.round(c * 255.0 / a));
            assertEquals(a << 24 | back * 0x10101, unpremultiplied[i], at);
        }
        var again = bitmap.copy(Config.ARGB_8888, true);
        again.setPixels(read, 0, 256, 0, 0, 256, 256);
        bitmap.copyPixelsFromBuffer(stored.rewind());
        assertTrue(again.sameAs(bitmap), "what was read is stored as the same bytes again");
    }

    @ParameterizedTest
    @CsvSource({
        "ARGB_8888, ARGB_8888, 804080FF, 804080FF",
        "ARGB_8888, RGB_565,   80FFFFFF, FF848284",
        "ARGB_8888, ALPHA_8,   804080FF, 80000000",
        "RGB_565,   ARGB_8888, FF103452, FF103452",
        "RGB_565,   ALPHA_8,   FF103452, FF000000",
        "ALPHA_8,   ARGB_8888, 7F000000, 7F000000",
        "ALPHA_8,   RGB_565,   7F000000, FF000000",
    })
    void copiesConvert(Config from, Config to, String color, String copied) {
        var bitmap = Bitmap.createBitmap(new int[] {argb(color), 0}, 1, 2, from);
        var copy = bitmap.copy(to, true);
        assertEquals(to, copy.getConfig());
        assertEquals(copied, hex(copy.getPixel(0, 0)));
        copy.eraseColor(0);
        assertEquals(hex(bitmap.getPixel(0, 0)), color, "the copy has pixels of its own");
        assertFalse(bitmap.copy(to, false).isMutable());
    }

    @Test
    void rectanglesHonourOffsetAndStrideOfEitherSign() {
        var bitmap = Bitmap.createBitmap(3, 3, Config.ARGB_8888);
        int base = 0xFF000000;
        int[] colors = {9, base + 1, base + 2, 9, base + 3, base + 4, 9};
        bitmap.setPixels(colors, 1, 3, 1, 1, 2, 2);
        assertArrayEquals(new int[] {0, 0, 0, 0, base + 1, base + 2, 0, base + 3, base + 4}, pixels(bitmap));
        int[] upsideDown = new int[4];
        bitmap.getPixels(upsideDown, 2, -2, 1, 1, 2, 2);
        assertArrayEquals(new int[] {base + 3, base + 4, base + 1, base + 2}, upsideDown);
    }

    private interface Use {
        void on(Bitmap bitmap) throws IOException;
    }

    private static final int[] SIX = {-1, -1, -1, -1, -1, -1};

    static Stream<Arguments> badArguments() {
        var bad = IllegalArgumentException.class;
        var out = ArrayIndexOutOfBoundsException.class;
        int[] six = SIX;
        int most = Integer.MAX_VALUE;
        return Stream.of(
                refused(bad, "width and height must be > 0", b -> Bitmap.createBitmap(0, 1, Config.ALPHA_8)),
                refused(bad, "width and height must be > 0", b -> Bitmap.createBitmap(six, 1, -1, Config.ALPHA_8)),
                refused(bad, "exceeds 2147483647 bytes", b -> Bitmap.createBitmap(1 << 15, 1 << 14, Config.ARGB_8888)),
                refused(bad, "exceeds 2147483647 bytes", b -> Bitmap.createBitmap(most, most, Config.ARGB_8888)),
                refused(out, "", b -> Bitmap.createBitmap(six, 7, 1, Config.ALPHA_8)),
                refused(NullPointerException.class, "", b -> Bitmap.createBitmap(1, 1, null)),
                refused(bad, "x must be >= 0", b -> b.getPixel(-1, 0)),
                refused(bad, "y must be >= 0", b -> b.setPixel(0, -1, 0)),
                refused(bad, "x must be < bitmap.width()", b -> b.setPixel(2, 0, 0)),
                refused(bad, "y must be < bitmap.height()", b -> b.getPixel(1, 3)),
                refused(bad, "x must be >= 0", b -> b.getPixels(six, 0, 2, -1, 0, 2, 3)),
                refused(bad, "height must be >= 0", b -> b.getPixels(six, 0, 2, 0, 0, 2, -3)),
                refused(bad, "x + width must be <=", b -> b.getPixels(six, 0, most, 1, 0, most, 1)),
                refused(bad, "y + height must be <=", b -> b.setPixels(six, 0, 2, 0, 1, 2, 3)),
                refused(bad, "abs(stride) must be >= width", b -> b.setPixels(six, 0, -1, 0, 0, 2, 3)),
                refused(out, "", b -> b.getPixels(six, 1, 2, 0, 0, 2, 3)),
                refused(out, "", b -> b.setPixels(six, 3, -2, 0, 0, 2, 3)),
                refused(out, "", b -> b.getPixels(six, 0, Integer.MIN_VALUE, 0, 0, 2, 3)),
                refused(RuntimeException.class, "not large enough", b -> b.copyPixelsToBuffer(IntBuffer.allocate(5))),
                refused(RuntimeException.class, "not large enough", b -> b.copyPixelsFromBuffer(ByteBuffer.allocate(23))),
                refused(RuntimeException.class, "unsupported", b -> b.copyPixelsToBuffer(CharBuffer.allocate(99))),
                refused(bad, "quality", b -> b.compress(CompressFormat.PNG, 101, OutputStream.nullOutputStream())),
                refused(NullPointerException.class, "", b -> b.compress(CompressFormat.PNG, 100, null)));
    }

    private static Arguments refused(Class<? extends Exception> by, String message, Use use) {
        return arguments(by, message, use);
    }

    @ParameterizedTest
    @MethodSource
    void badArguments(Class<? extends Exception> by, String message, Use use) {
        var bitmap = Bitmap.createBitmap(2, 3, Config.ARGB_8888);
        var refusal = assertThrows(by, () -> use.on(bitmap));
        assertTrue(message.isEmpty() || refusal.getMessage().contains(message), refusal.toString());
        assertArrayEquals(new int[6], pixels(bitmap), "nothing may be written before the refusal");
        assertArrayEquals(new int[] {-1, -1, -1, -1, -1, -1}, SIX);
    }

    static Stream<Arguments> uses() {
        int[] one = new int[1];
        return Stream.of(
                arguments("setPixel", true, (Use) b -> b.setPixel(0, 0, 0)),
                arguments("setPixels", true, (Use) b -> b.setPixels(one, 0, 1, 0, 0, 1, 1)),
                arguments("eraseColor", true, (Use) b -> b.eraseColor(0)),
                arguments("copyPixelsFromBuffer", true, (Use) b -> b.copyPixelsFromBuffer(IntBuffer.allocate(1))),
                arguments("copyPixelsToBuffer", false, (Use) b -> b.copyPixelsToBuffer(IntBuffer.allocate(1))),
                arguments("getPixel", false, (Use) b -> b.getPixel(0, 0)),
                arguments("getPixels", false, (Use) b -> b.getPixels(one, 0, 1, 0, 0, 1, 1)),
                arguments("copy", false, (Use) b -> b.copy(Config.RGB_565, true)),
                arguments("sameAs", false, (Use) b -> b.sameAs(b)),
                arguments("compress", false, (Use) b -> b.compress(CompressFormat.PNG, 0, OutputStream.nullOutputStream())));
    }

    @ParameterizedTest(name = "{0}")
    @MethodSource("uses")
    void recycledRefusesAllAndImmutableRefusesWrites(String name, boolean writes, Use use) throws IOException {
        var immutable = Bitmap.createBitmap(new int[] {-1}, 1, 1, Config.ARGB_8888);
        if (writes) {
            assertThrows(IllegalStateException.class, () -> use.on(immutable));
            use.on(immutable.copy(Config.ARGB_8888, true));
        } else {
            use.on(immutable);
        }
        assertEquals(-1, immutable.getPixel(0, 0));
        var recycled = Bitmap.createBitmap(1, 1, Config.ARGB_8888);
        recycled.recycle();
        recycled.recycle();
        assertTrue(recycled.isRecycled());
        assertEquals(0, recycled.getByteCount());
        assertThrows(IllegalStateException.class, () -> use.on(recycled));
        assertThrows(IllegalArgumentException.class, () -> immutable.sameAs(recycled));
    }

    static Stream<Arguments> buffers() {
        return Stream.of(ByteOrder.LITTLE_ENDIAN, ByteOrder.BIG_ENDIAN).flatMap(order -> {
            var heap = ByteBuffer.allocate(8).order(order);
            var direct = ByteBuffer.allocateDirect(8).order(order);
            return Stream.of(
                    arguments(heap, heap.duplicate(), 5),
                    arguments(direct, direct.duplicate(), 5),
                    arguments(heap, heap.asShortBuffer().limit(3), 2),
                    arguments(direct, direct.asShortBuffer().limit(3), 2),
                    arguments(heap, heap.asIntBuffer(), 1));
        });
    }

    /** Five bytes, which end within a short or int: the memory is what counts, the position moves by whole elements. */
    @ParameterizedTest
    @MethodSource
    void buffers(ByteBuffer memory, Buffer view, int moved) {
        var bitmap = Bitmap.createBitmap(1, 5, Config.ALPHA_8);
        bitmap.copyPixelsFromBuffer(ByteBuffer.wrap(new byte[] {1, 2, 3, 4, 5}));
        memory.put(0, new byte[] {-1, -1, -1, -1, -1, -1, -1, -1});
        bitmap.copyPixelsToBuffer(view);
        byte[] now = new byte[8];
        memory.get(0, now);
        assertArrayEquals(new byte[] {1, 2, 3, 4, 5, -1, -1, -1}, now);
        assertEquals(moved, view.position());
        var back = Bitmap.createBitmap(1, 5, Config.ALPHA_8);
        back.copyPixelsFromBuffer(view.rewind());
        assertTrue(back.sameAs(bitmap));
        assertEquals(moved, view.position());
    }

    @Test
    void sameAsSeesSizeConfigAndPixels() {
        var bitmap = Bitmap.createBitmap(2, 3, Config.RGB_565);
        var other = bitmap.copy(Config.RGB_565, true);
        assertTrue(bitmap.sameAs(other));
        other.setPixel(1, 2, -1);
        assertFalse(bitmap.sameAs(other));
        assertFalse(bitmap.sameAs(Bitmap.createBitmap(3, 2, Config.RGB_565)));
        assertFalse(bitmap.sameAs(Bitmap.createBitmap(2, 3, Config.ARGB_8888)));
        assertFalse(bitmap.sameAs(null));
    }

    @Test
    void pngKeepsEveryPixel(@TempDir Path folder) throws IOException {
        var bitmap = Bitmap.createBitmap(256, 256, Config.ARGB_8888);
        for (int i = 0; i < 65536; ++i) {
            bitmap.setPixel(i & 255, i >> 8, i >> 8 << 24 | (i & 255) << 16 | (~i & 255) << 8 | i * 7 & 255);
        }
        Path file = folder.resolve("a.png");
        var options = new BitmapFactory.Options();
        options.inMutable = true;
        options.inPreferredConfig = Config.RGB_565;
        for (var config : new Config[] {Config.ARGB_8888, Config.RGB_565}) {
            var written = bitmap.copy(config, false);
            try (var out = Files.newOutputStream(file)) {
                assertTrue(written.compress(CompressFormat.PNG, 100, out));
                out.flush(); // the stream is the caller's and still open
            }
            var read = BitmapFactory.decodeFile(file.toString(), options);
            assertTrue(read.isMutable());
            assertTrue(read.sameAs(written), config + " came back as " + read.getConfig());
            var plain = BitmapFactory.decodeFile(file.toString());
            assertFalse(plain.isMutable());
            assertTrue(plain.sameAs(written.copy(Config.ARGB_8888, false)));
        }
    }

    @Test
    void compressReportsWhatItCannotDo() {
        var bitmap = Bitmap.createBitmap(1, 1, Config.ARGB_8888);
        var out = new ByteArrayOutputStream();
        assertFalse(bitmap.compress(CompressFormat.JPEG, 90, out));
        assertFalse(bitmap.copy(Config.ALPHA_8, false).compress(CompressFormat.PNG, 100, out));
        assertEquals(0, out.size());
        var closed = new OutputStream() {
            @Override
            public void write(int b) throws IOException {
                throw new IOException("disk full");
            }
        };
        assertFalse(bitmap.compress(CompressFormat.PNG, 100, closed));
    }

    /** Two pixels of every colour type and depth; of the palette's three colours, one is translucent and one transparent. */
    @ParameterizedTest
    @CsvSource({
        "0,  1, '',         40,                   FF000000FFFFFFFF",
        "0,  2, '',         60,                   FF555555FFAAAAAA",
        "0,  4, '',         5A,                   FF555555FFAAAAAA",
        "0,  8, '',         8001,                 FF808080FF010101",
        "0, 16, '',         80800081,             FF808080FF010101",
        "0,  1, 0001,       40,                   FF00000000000000",
        "0,  4, 0005,       5A,                   00000000FFAAAAAA",
        "0,  8, 0080,       8001,                 00000000FF010101",
        "0, 16, 8080,       80808081,             00000000FF808080",
        "2,  8, '',         123456FEDCBA,         FF123456FFFEDCBA",
        "2, 16, '',         123400810080FFFFFF7F0000, FF120100FFFFFF00",
        "2,  8, 001200340056, 123456123457,       00000000FF123457",
        "3,  1, 8000,       40,                   80FF000000000000",
        "3,  2, 8000,       80,                   FF0102FF80FF0000",
        "3,  4, 8000,       21,                   FF0102FF00000000",
        "3,  8, 8000,       0002,                 80FF0000FF0102FF",
        "4,  8, '',         8040FF00,             4080808000000000",
        "4, 16, '',         80804040FFFFFFFF,     40808080FFFFFFFF",
        "6,  8, '',         FF400180 12345600,    80FF400200000000",
        "6, 16, '',         FFFF404001018080FFFF567800800081, 80FF400201FF0000",
    })
    void everyKindOfPngDecodes(int type, int depth, String transparent, String samples, String colors) throws IOException {
        byte[] png = png(2, type, depth, transparent, samples.replace(" ", ""));
        assertEquals(colors, hex(pixels(BitmapFactory.decodeStream(new ByteArrayInputStream(png)))));
    }

    @Test
    void whatIsNoImageIsNull(@TempDir Path folder) throws IOException {
        Path text = Files.writeString(folder.resolve("text.png"), "no image");
        byte[] png = png(2, 2, 8, "", "123456FEDCBA");
        byte[] huge = png(Integer.MAX_VALUE, 2, 8, "", "123456");
        for (Path path : new Path[] {folder.resolve("missing.png"), folder, text}) {
            assertNull(BitmapFactory.decodeFile(path.toString()), path.toString());
        }
        assertNull(BitmapFactory.decodeFile(null));
        assertNull(BitmapFactory.decodeStream(null));
        assertNull(BitmapFactory.decodeStream(new ByteArrayInputStream(huge)));
        for (int length = 0; length <= 8 + 25 + 8; ++length) { // signature, header, start of the data
            assertNull(BitmapFactory.decodeStream(new ByteArrayInputStream(png, 0, length)), "cut to " + length);
        }
    }

    private static byte[] png(int width, int type, int depth, String transparent, String row) throws IOException {
        var file = new ByteArrayOutputStream();
        file.writeBytes(HexFormat.of().parseHex("89504E470D0A1A0A"));
        chunk(file, "IHDR", HexFormat.of().parseHex("%08X00000001%02X%02X000000".formatted(width, depth, type)));
        if (type == 3) {
            chunk(file, "PLTE", HexFormat.of().parseHex("FF000000FF000102FF"));
        }
        if (!transparent.isEmpty()) {
            chunk(file, "tRNS", HexFormat.of().parseHex(transparent));
        }
        var data = new ByteArrayOutputStream();
        try (var zip = new DeflaterOutputStream(data)) {
            zip.write(HexFormat.of().parseHex("00" + row));
        }
        chunk(file, "IDAT", data.toByteArray());
        chunk(file, "IEND", new byte[0]);
        return file.toByteArray();
    }

    private static void chunk(OutputStream file, String name, byte[] data) throws IOException {
        var body = ByteBuffer.allocate(4 + data.length).put(name.getBytes()).put(data).array();
        var crc = new CRC32();
        crc.update(body);
        var out = new DataOutputStream(file);
        out.writeInt(data.length);
        out.write(body);
        out.writeInt((int) crc.getValue());
    }

    private static int[] pixels(Bitmap bitmap) {
        int[] colors = new int[bitmap.getWidth() * bitmap.getHeight()];
        bitmap.getPixels(colors, 0, bitmap.getWidth(), 0, 0, bitmap.getWidth(), bitmap.getHeight());
        return colors;
    }

    private static String bytes(Bitmap bitmap) {
        var buffer = ByteBuffer.allocate(bitmap.getByteCount());
        bitmap.copyPixelsToBuffer(buffer);
        return HexFormat.of().withUpperCase().formatHex(buffer.array());
    }

    private static String hex(int... colors) {
        var bytes = ByteBuffer.allocate(4 * colors.length);
        bytes.asIntBuffer().put(colors);
        return HexFormat.of().withUpperCase().formatHex(bytes.array());
    }

    private static int argb(String hex) {
        return Integer.parseUnsignedInt(hex, 16);
    }
}
