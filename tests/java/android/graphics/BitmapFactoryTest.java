package android.graphics;

import static android.graphics.BitmapTest.*;
import static org.junit.jupiter.api.Assertions.*;

import android.graphics.Bitmap.CompressFormat;
import android.graphics.Bitmap.Config;
import java.io.*;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.List;
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
    void compressReportsWhatItCannotDo() {
        var bitmap = Bitmap.createBitmap(1, 1, Config.ARGB_8888);
        var out = new ByteArrayOutputStream();
        assertFalse(bitmap.compress(CompressFormat.JPEG, 90, out));
        assertFalse(bitmap.copy(Config.ALPHA_8, false).compress(CompressFormat.PNG, 100, out));
        assertEquals(0, out.size());
        assertFalse(bitmap.compress(CompressFormat.PNG, 100, new PipedOutputStream()), "a stream that leads nowhere");
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
