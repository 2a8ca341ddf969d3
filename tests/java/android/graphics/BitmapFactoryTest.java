package android.graphics;

import static android.graphics.BitmapTest.*;
import static org.junit.jupiter.api.Assertions.*;

import android.graphics.Bitmap.CompressFormat;
import android.graphics.Bitmap.Config;
import java.awt.color.ICC_Profile;
import java.io.*;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.Arrays;
import java.util.List;
import java.util.Random;
import java.util.logging.Logger;
import java.util.stream.IntStream;
import java.util.zip.CRC32;
import java.util.zip.DeflaterOutputStream;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.io.TempDir;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.CsvSource;

class BitmapFactoryTest {
    @Test
    void pngKeepsEveryPixel(@TempDir Path folder) throws IOException {
        var bitmap = Bitmap.createBitmap(256, 256, Config.ARGB_8888);
        int[] colors = IntStream.range(0, 65536).map(i -> i << 16 | ~i << 8 & 0xFF00 | i * 7 & 0xFF).toArray();
        bitmap.setPixels(colors, 0, 256, 0, 0, 256, 256);
        String file = folder.resolve("a.png").toString();
        var options = new BitmapFactory.Options();
        options.inMutable = true;
        options.inPreferredConfig = Config.RGB_565;
        for (var config : List.of(Config.ARGB_8888, Config.RGB_565)) {
            var written = bitmap.copy(config, false);
            try (var out = new FileOutputStream(file)) {
                assertTrue(written.compress(CompressFormat.PNG, 100, out));
                out.write(0);  // the stream is the caller's and still open
            }
            var read = BitmapFactory.decodeFile(file, options);
            assertTrue(read.isMutable());
            assertTrue(read.sameAs(written), config + " came back as " + read.getConfig());
            assertTrue(BitmapFactory.decodeFile(file).sameAs(written.copy(Config.ARGB_8888, false)));
        }
    }

    @Test
    void jpegLiesOverBlackAndGrowsWithQuality() {
        var flat = Bitmap.createBitmap(16, 16, Config.ARGB_8888);
        flat.eraseColor(0x80FF8000);
        byte[] jpeg = compressed(flat, CompressFormat.JPEG, 95);
        var read = BitmapFactory.decodeByteArray(jpeg, 0, jpeg.length);
        assertFalse(read.hasAlpha());
        for (int shift = 0; shift < 24; shift += 8)
            assertEquals(0x804000 >> shift & 255, read.getPixel(9, 9) >> shift & 255, 3);
        var noise = Bitmap.createBitmap(new Random(1).ints(256).toArray(), 16, 16, Config.ARGB_8888);
        int[] sizes = IntStream.of(0, 50, 90, 100).map(q -> compressed(noise, CompressFormat.JPEG, q).length).toArray();
        assertArrayEquals(IntStream.of(sizes).sorted().distinct().toArray(), sizes);
    }

    @Test
    void whatCannotBeDoneIsSaid() throws IOException {
        var bitmap = Bitmap.createBitmap(1, 1, Config.ARGB_8888);
        byte[] animated = HEX.parseHex(WEBP_ALPHA);
        animated[20] |= 2;
        assertTold("compress to PNG or JPEG", () -> assertEquals(0, compressed(bitmap, CompressFormat.WEBP, 90).length));
        assertTold("copy() the bitmap to ARGB_8888",
            () -> assertEquals(0, compressed(bitmap.extractAlpha(), CompressFormat.PNG, 9).length));
        assertTold("export one frame", () -> assertNull(BitmapFactory.decodeByteArray(animated, 0, animated.length)));
        assertFalse(bitmap.compress(CompressFormat.PNG, 100, new PipedOutputStream()), "a stream that leads nowhere");
        var hardware = new BitmapFactory.Options();
        hardware.inPreferredConfig = Config.HARDWARE;
        byte[] png = compressed(bitmap, CompressFormat.PNG, 0);
        assertEquals(Config.ARGB_8888, BitmapFactory.decodeByteArray(png, 0, png.length, hardware).getConfig());
        hardware.inMutable = true;
        assertThrows(IllegalArgumentException.class, () -> BitmapFactory.decodeFile("", hardware));
    }

    private static void assertTold(String words, Runnable call) {
        var told = new StringBuilder();
        var log = Logger.getLogger("BitmapFactory");
        log.setFilter(entry -> told.append(entry.getLevel()).append(": ").append(entry.getMessage()) == null);
        call.run();
        log.setFilter(null);
        assertTrue(told.indexOf("WARNING: ") == 0 && told.indexOf(words) > 0, told.toString());
    }

    private static final String WEBP_ALPHA = "524946464400000057454250565038580A0000001000000001000001"
        + "0000414C50480500000000404040400056503820180000005001009D012A0200020001402625A40004740000E4400000";

    /** A GIF whose first frame lies at 1, 0; a BMP; WebP lossless with alpha and without, lossy without and with. */
    @ParameterizedTest
    @CsvSource({
        "image/gif, 3, true, 474946383961030002008100 00000000FF000000FF000000FF 2C0100000002000100 00 02028C0A 00 3B, "
            + "00000000FFFF0000FF00FF00000000000000000000000000",
        "image/bmp, 2, false, 424D3E0000000000000036000000 2800000002000000010000000100180000000000080000000000000000000000 "
            + "0000000000000000 563412BADCFE0000, FF123456FFFEDCBA",
        "image/webp, 3, true, 5249464646000000574542505650384C3A0000002F024000102F40986D34B5D90EF0FEA741906D5387F91BDEE1049236"
            + "631DD7E0FD2B5C4042C871D30500FC5FD9AA3620202153F2C12211FD8F49, 80FF4002FF12345600000000FFFEDCBAFF00000001FFFFFF",
        "image/webp, 3, false, 524946464A000000574542505650384C3D0000002F024000002FA0260001C6E825AF807E3508246DC62ABC7FC367F8"
            + "15B46DC3F4512C83F287B0CD7F00FC9F8DEC2CD50E14A46DC0E2EE295B44FFE39E0000, "
            + "FFFF4001FF123456FF010203FFFEDCBAFF000000FFFFFFFF",
        "image/webp, 1, false, 524946463A00000057454250565038202E000000D001009D012A0100010002C04C25A00274BA01F80003B000FEDA26FF"
            + "E52A8B54DBE4FFEA0CF9067C833F63800000, FFFD4200",
        "image/webp, 2, true, " + WEBP_ALPHA + ", 40808080408080804080808040808080",
    })
    void otherFormatsDecode(String type, int width, boolean alpha, String hex, String colors) throws IOException {
        byte[] file = HEX.parseHex(hex.replace(" ", ""));
        var options = new BitmapFactory.Options();
        options.inJustDecodeBounds = true;
        options.inPreferredConfig = Config.RGB_565;
        assertNull(BitmapFactory.decodeByteArray(file, 0, file.length, options));
        String said = type + " " + width + "x" + colors.length() / 8 / width;
        assertEquals(said + (alpha ? " ARGB_8888" : " RGB_565"), said(options));
        options = new BitmapFactory.Options();
        var in = new ByteArrayInputStream(Arrays.copyOf(file, file.length + 9000));
        var padding = new Rect();
        var bitmap = BitmapFactory.decodeStream(in, padding, options);
        assertTrue(in.available() > 0, "the stream is open, and not read to its end");
        assertEquals(colors + " " + alpha, hex(pixels(bitmap)) + " " + bitmap.hasAlpha());
        assertEquals(new Rect(-1, -1, -1, -1), padding);
        assertEquals(said + " ARGB_8888", said(options));
        assertNull(BitmapFactory.decodeByteArray(file, 0, file.length * 2 / 3, options));
        assertEquals("null -1x-1 null", said(options));
    }

    private static String said(BitmapFactory.Options o) {
        return o.outMimeType + " " + o.outWidth + "x" + o.outHeight + " " + o.outConfig;
    }

    /** Of 7 x 3 pixels, numbered row by row. */
    @ParameterizedTest
    @CsvSource({"0, 7x3, 0", "1, 7x3, 0", "2, 3x1, 8", "3, 3x1, 8", "4, 1x1, 9", "16, 1x1, 10"})
    void samplesAreTakenNearTheCentres(int sample, String size, int first) {
        var bitmap = Bitmap.createBitmap(IntStream.range(0, 21).map(i -> i | 0xFF000000).toArray(), 7, 3, Config.ARGB_8888);
        byte[] png = compressed(bitmap, CompressFormat.PNG, 100);
        var options = new BitmapFactory.Options();
        options.inSampleSize = sample;
        var read = BitmapFactory.decodeByteArray(png, 0, png.length, options);
        assertEquals("image/png " + size + " ARGB_8888", said(options));
        assertEquals(first | 0xFF000000, read.getPixel(0, 0));
    }

    @Test
    void optionsShapeTheBitmap() {
        var bitmap = Bitmap.createBitmap(colors("80FF400100FFFFFF"), 2, 1, Config.ARGB_8888);
        byte[] png = compressed(bitmap, CompressFormat.PNG, 100);
        var options = new BitmapFactory.Options();
        options.inPremultiplied = false;
        var straight = BitmapFactory.decodeByteArray(png, 0, png.length, options);
        assertEquals("80FF400200000000 false", hex(pixels(straight)) + " " + straight.isPremultiplied());
        options = new BitmapFactory.Options();
        options.inDensity = 160;
        options.inTargetDensity = 320;
        var scaled = BitmapFactory.decodeByteArray(png, 0, png.length, options);
        assertTrue(scaled.sameAs(Bitmap.createScaledBitmap(bitmap, 4, 2, true)));
        assertEquals("image/png 4x2 ARGB_8888 320", said(options) + " " + scaled.getDensity());
        options.inScaled = false;
        assertEquals(160, BitmapFactory.decodeByteArray(png, 0, png.length, options).getDensity());
    }

    /** The JDK's linear profiles: half the light is 188. Its own sRGB, one of another kind and a damaged one change nothing. */
    @ParameterizedTest
    @CsvSource({"1004, 2, 808080, BC", "1003, 0, 80, BC", "1000, 2, 808080, 80", "1004, 0, 80, 80", "1003, 2, 808080, 80",
        "0, 2, 808080, 80"})
    void profilesBecomeSrgb(int space, int type, String samples, String channel) throws IOException {
        byte[] icc = space == 0 ? new byte[200] : ICC_Profile.getInstance(space).getData();
        var packed = new ByteArrayOutputStream();
        try (var zip = new DeflaterOutputStream(packed)) {
            zip.write(icc);
        }
        String png = HEX.formatHex(png(1, type, 8, "", samples));
        png = png.substring(0, 66) + chunk("iCCP", "780000" + HEX.formatHex(packed.toByteArray())) + png.substring(66);
        var read = BitmapFactory.decodeStream(new ByteArrayInputStream(HEX.parseHex(png)));
        assertEquals("FF" + channel.repeat(3), hex(pixels(read)));
    }

    @Test
    void arraysAndDescriptorsAreRead(@TempDir Path folder) throws IOException {
        byte[] png = png(2, 2, 8, "", "123456FEDCBA"), within = new byte[png.length + 9];
        System.arraycopy(png, 0, within, 4, png.length);
        assertEquals("FF123456FFFEDCBA", hex(pixels(BitmapFactory.decodeByteArray(within, 4, png.length))));
        for (int[] range : new int[][] {{-1, 5}, {5, -1}, {within.length - 4, 5}, {1, Integer.MAX_VALUE}})
            assertThrows(ArrayIndexOutOfBoundsException.class, () -> BitmapFactory.decodeByteArray(within, range[0], range[1]));
        try (var file = new RandomAccessFile(folder.resolve("a").toFile(), "rw")) {
            file.write(within);
            file.seek(4);
            for (int twice = 0; twice < 2; ++twice)
                assertEquals("FF123456FFFEDCBA", hex(pixels(BitmapFactory.decodeFileDescriptor(file.getFD()))));
            assertEquals(4, file.getFilePointer());
        }
        assertNull(BitmapFactory.decodeFileDescriptor(null));
    }

    /** Two pixels of every colour type and depth; of the palette's three colours, one is translucent and one transparent. */
    @ParameterizedTest
    @CsvSource({
        "0,  1, '',   40,       FF000000FFFFFFFF", "0,  2, '',   60,             FF555555FFAAAAAA",
        "0,  4, '',   5A,       FF555555FFAAAAAA", "0,  8, '',   8001,           FF808080FF010101",
        "0,  1, 0001, 40,       FF00000000000000", "0,  4, 0005, 5A,             00000000FFAAAAAA",
        "0,  8, 0080, 8001,     00000000FF010101", "0, 16, 8080, 80808081,       00000000FF808080",
        "0, 16, '',   80800081, FF808080FF010101", "2,  8, '',   123456FEDCBA,   FF123456FFFEDCBA",
        "2,  8, 001200340056, 123456123457, 00000000FF123457", "2, 16, '', 123400810080FFFFFF7F0000, FF120100FFFFFF00",
        "3,  1, 8000, 40,       80FF000000000000", "3,  2, 8000, 80,             FF0102FF80FF0000",
        "3,  4, 8000, 21,       FF0102FF00000000", "3,  8, 8000, 0002,           80FF0000FF0102FF",
        "4,  8, '',   8040FF00, 4080808000000000", "4, 16, '', 80804040FFFFFFFF, 40808080FFFFFFFF",
        "6,  8, '', FF40018012345600, 80FF400200000000", "6, 16, '', FFFF404001018080FFFF567800800081, 80FF400201FF0000",
    })
    void everyKindOfPngDecodes(int type, int depth, String transparent, String samples, String colors) throws IOException {
        var bitmap = BitmapFactory.decodeStream(new ByteArrayInputStream(png(2, type, depth, transparent, samples)));
        assertEquals(colors, hex(pixels(bitmap)));
        assertFalse(bitmap.isMutable());
    }

    @Test
    void whatIsNoImageIsNull(@TempDir Path folder) throws IOException {
        Path text = Files.writeString(folder.resolve("text.png"), "no image");
        for (Path path : List.of(folder.resolve("missing.png"), folder, text))
            assertNull(BitmapFactory.decodeFile(path.toString()), path.toString());
        assertNull(BitmapFactory.decodeFile(null));
        assertNull(BitmapFactory.decodeStream(null));
        assertNull(BitmapFactory.decodeStream(new ByteArrayInputStream(png(Integer.MAX_VALUE, 2, 8, "", "123456"))));
        byte[] png = png(2, 2, 8, "", "123456FEDCBA");
        for (int length = 0; length <= 8 + 25 + 8; ++length)  // signature, header, start of the data
            assertNull(BitmapFactory.decodeStream(new ByteArrayInputStream(png, 0, length)), "cut to " + length);
        for (int at = 16; at < 33; ++at) {
            byte[] damaged = png.clone();
            damaged[at] ^= 1;
            assertNull(BitmapFactory.decodeByteArray(damaged, 0, png.length), "a header with another byte at " + at);
        }
    }

    private static byte[] compressed(Bitmap bitmap, CompressFormat format, int quality) {
        var out = new ByteArrayOutputStream();
        assertEquals(bitmap.compress(format, quality, out), out.size() > 0);
        return out.toByteArray();
    }

    private static byte[] png(int width, int type, int depth, String transparent, String row) throws IOException {
        var packed = new ByteArrayOutputStream();
        try (var zip = new DeflaterOutputStream(packed)) {
            zip.write(HEX.parseHex("00" + row));
        }
        return HEX.parseHex("89504E470D0A1A0A" + chunk("IHDR", "%08X00000001%02X%02X000000".formatted(width, depth, type))
            + (type == 3 ? chunk("PLTE", "FF000000FF000102FF") : "") + (transparent.isEmpty() ? "" : chunk("tRNS", transparent))
            + chunk("IDAT", HEX.formatHex(packed.toByteArray())) + chunk("IEND", ""));
    }

    private static String chunk(String name, String data) {
        String body = HEX.formatHex(name.getBytes()) + data;
        var crc = new CRC32();
        crc.update(HEX.parseHex(body));
        return "%08X%s%08X".formatted(data.length() / 2, body, crc.getValue());
    }
}
