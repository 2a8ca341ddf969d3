package com.velmora.display.fennic.cli;

import static java.nio.charset.StandardCharsets.US_ASCII;

import android.graphics.Bitmap;
import java.io.ByteArrayOutputStream;
import java.io.DataOutputStream;
import java.io.IOException;
import java.io.OutputStream;
import java.nio.ByteBuffer;
import java.util.List;
import java.util.stream.IntStream;
import java.util.zip.Adler32;
import java.util.zip.CRC32;
import java.util.zip.Deflater;

/**
 * A bitmap as a PNG of straight RGBA. The rows are compressed in bands, on all cores, and leave as they are ready, so that no
 * second copy of a large picture is in memory.
 */
final class PngWriter {
    private static final long SIGNATURE = 0x89504e470d0a1a0aL;
    private static final int BAND = 1 << 18;

    /** Small pictures get the smaller file; with large ones somebody waits, and the third filter is a third of the time. */
    private static final int SMALL = 1 << 18;
    private static final int SAMPLE = 1 << 15;
    private static final int BYTES = 4;
    private static final int SUB = 1;
    private static final int UP = 2;
    private static final int PAETH = 4;

    private final Bitmap bitmap;
    private final int width;
    private final int height;
    private final int rows;
    private final int bands;
    private final boolean small;

    private record Packed(byte[] filtered, byte[] deflated) {}

    private PngWriter(Bitmap bitmap) {
        this.bitmap = bitmap;
        width = bitmap.getWidth();
        height = bitmap.getHeight();
        rows = Math.max(1, BAND / (BYTES * width + 1));
        bands = (height + rows - 1) / rows;
        small = (long) width * height <= SMALL;
    }

    static void write(Bitmap bitmap, OutputStream out) throws IOException {
        new PngWriter(bitmap).write(new DataOutputStream(out));
    }

    private void write(DataOutputStream out) throws IOException {
        out.writeLong(SIGNATURE);
        // 8 bits a channel, red, green, blue and alpha, deflated, filtered by rows, not interlaced.
        chunk(out, "IHDR", bytes(width), bytes(height), new byte[] {8, 6, 0, 0, 0});
        Adler32 sum = new Adler32();
        int together = 4 * Runtime.getRuntime().availableProcessors();
        for (int first = 0; first < bands; first += together) {
            List<Packed> ready =
                IntStream.range(first, Math.min(first + together, bands)).parallel().mapToObj(this::packed).toList();
            for (int i = 0; i < ready.size(); ++i) {
                sum.update(ready.get(i).filtered);
                byte[] header = first + i == 0 ? new byte[] {0x78, 0x01} : new byte[0];
                byte[] end = first + i == bands - 1 ? bytes((int) sum.getValue()) : new byte[0];
                chunk(out, "IDAT", header, ready.get(i).deflated, end);
            }
        }
        chunk(out, "IEND");
        out.flush();
    }

    private Packed packed(int band) {
        int top = band * rows;
        int bottom = Math.min(top + rows, height);
        byte[] filtered = new byte[(bottom - top) * (BYTES * width + 1)];
        int[] colors = new int[width];
        byte[] above = new byte[BYTES * (width + 1)];
        byte[] row = new byte[BYTES * (width + 1)];
        byte[] bySub = new byte[BYTES * width];
        byte[] byUp = new byte[BYTES * width];
        byte[] byPaeth = small ? new byte[BYTES * width] : null;
        if (top > 0) {
            fill(above, colors, top - 1);
        }
        for (int y = top, at = 0; y < bottom; ++y, at += BYTES * width) {
            fill(row, colors, y);
            byte[] best = byUp;
            int least = up(row, above, byUp);
            // Most rows of an icon's border are the row above.
            if (least > 0) {
                int size = sub(row, bySub);
                best = size < least ? bySub : byUp;
                least = Math.min(size, least);
                if (small && paeth(row, above, byPaeth) < least) {
                    best = byPaeth;
                }
            }
            filtered[at++] = (byte) (best == bySub ? SUB : best == byUp ? UP : PAETH);
            System.arraycopy(best, 0, filtered, at, BYTES * width);
            byte[] swapped = above;
            above = row;
            row = swapped;
        }
        return new Packed(filtered, deflated(filtered, bottom == height));
    }

    /** A row's bytes behind one pixel of zeros, which stands for what is left of it. */
    private void fill(byte[] row, int[] colors, int y) {
        bitmap.getPixels(colors, 0, width, 0, y, width, 1);
        for (int x = 0, at = BYTES; x < width; ++x, at += BYTES) {
            int color = colors[x];
            row[at] = (byte) (color >> 16);
            row[at + 1] = (byte) (color >> 8);
            row[at + 2] = (byte) color;
            row[at + 3] = (byte) (color >> 24);
        }
    }

    // Each filter gives the sum of its distances, by which the best is guessed: small bytes compress well.

    private static int sub(byte[] row, byte[] to) {
        int sum = 0;
        for (int i = 0; i < to.length; ++i) {
            to[i] = (byte) (row[i + BYTES] - row[i]);
            sum += Math.abs(to[i]);
        }
        return sum;
    }

    private static int up(byte[] row, byte[] above, byte[] to) {
        int sum = 0;
        for (int i = 0; i < to.length; ++i) {
            to[i] = (byte) (row[i + BYTES] - above[i + BYTES]);
            sum += Math.abs(to[i]);
        }
        return sum;
    }

    /** Less the one of left, above and their corner that is nearest to left + above - corner. */
    private static int paeth(byte[] row, byte[] above, byte[] to) {
        int sum = 0;
        for (int i = 0; i < to.length; ++i) {
            int a = row[i] & 255;
            int b = above[i + BYTES] & 255;
            int c = above[i] & 255;
            int toA = Math.abs(b - c);
            int toB = Math.abs(a - c);
            int toC = Math.abs(a + b - 2 * c);
            to[i] = (byte) (row[i + BYTES] - (toA <= toB && toA <= toC ? a : toB <= toC ? b : c));
            sum += Math.abs(to[i]);
        }
        return sum;
    }

    /** Each band ends on a whole byte, and none looks back into the one before. */
    private byte[] deflated(byte[] bytes, boolean last) {
        if (small) {
            return deflated(bytes, bytes.length, 6, Deflater.DEFAULT_STRATEGY, last);
        }
        // What is noisy, as photographs are, has few repetitions; looking for them takes the most time and yields little.
        int sample = Math.min(bytes.length, SAMPLE);
        int repeated = deflated(bytes, sample, 1, Deflater.DEFAULT_STRATEGY, true).length;
        int coded = deflated(bytes, sample, 1, Deflater.HUFFMAN_ONLY, true).length;
        return deflated(bytes, bytes.length, 1, coded <= repeated ? Deflater.HUFFMAN_ONLY : Deflater.DEFAULT_STRATEGY, last);
    }

    private static byte[] deflated(byte[] bytes, int size, int level, int strategy, boolean last) {
        Deflater deflater = new Deflater(level, true);
        try {
            deflater.setStrategy(strategy);
            deflater.setInput(bytes, 0, size);
            if (last) {
                deflater.finish();
            }
            ByteArrayOutputStream out = new ByteArrayOutputStream(size / 2 + 64);
            byte[] buffer = new byte[1 << 14];
            int length;
            // A strategy takes a call of its own to be set, which may give nothing.
            do {
                length = deflater.deflate(buffer, 0, buffer.length, last ? Deflater.NO_FLUSH : Deflater.SYNC_FLUSH);
                out.write(buffer, 0, length);
            } while (last ? !deflater.finished() : length == buffer.length || !deflater.needsInput());
            return out.toByteArray();
        } finally {
            deflater.end();
        }
    }

    private static void chunk(DataOutputStream out, String type, byte[]... parts) throws IOException {
        CRC32 sum = new CRC32();
        int length = 0;
        byte[] name = type.getBytes(US_ASCII);
        sum.update(name);
        for (byte[] part : parts) {
            sum.update(part);
            length += part.length;
        }
        out.writeInt(length);
        out.write(name);
        for (byte[] part : parts) {
            out.write(part);
        }
        out.writeInt((int) sum.getValue());
    }

    private static byte[] bytes(int word) {
        return ByteBuffer.allocate(Integer.BYTES).putInt(word).array();
    }
}
