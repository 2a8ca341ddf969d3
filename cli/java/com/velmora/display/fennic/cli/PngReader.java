package com.velmora.display.fennic.cli;

import static java.nio.charset.StandardCharsets.ISO_8859_1;

import android.graphics.Bitmap;
import java.io.ByteArrayInputStream;
import java.io.DataInputStream;
import java.io.IOException;
import java.io.InputStream;
import java.io.SequenceInputStream;
import java.nio.ByteBuffer;
import java.util.ArrayList;
import java.util.Collections;
import java.util.List;
import java.util.Set;
import java.util.zip.Inflater;
import java.util.zip.InflaterInputStream;

/**
 * Large PNGs of the plainest kind, 8 bits of RGB or RGBA, row by row into the bitmap: BitmapFactory has the whole picture in
 * memory twice. Whatever is not plain, small or not sound is left to it.
 */
final class PngReader {
    private static final int LARGE = 1 << 22;
    private static final int HEADER = 8;

    /** Chunks that change what the samples mean. */
    private static final Set<String> MEANING = Set.of("iCCP", "tRNS");

    private final int width;
    private final int height;
    private final int channels;

    private PngReader(int width, int height, int channels) {
        this.width = width;
        this.height = height;
        this.channels = channels;
    }

    /** The mutable bitmap, or null where BitmapFactory shall try. */
    static Bitmap read(byte[] bytes) {
        ByteBuffer png = ByteBuffer.wrap(bytes);
        if (!"PNG".equals(Pngs.format(bytes)) || bytes.length < 2 * HEADER + 13) {
            return null;
        }
        int width = png.getInt(HEADER + 8);
        int height = png.getInt(HEADER + 12);
        int type = png.get(HEADER + 17);
        boolean plain = png.get(HEADER + 16) == 8 && (type == 2 || type == 6) && png.get(HEADER + 20) == 0;
        long pixels = (long) width * height;
        if (!plain || width <= 0 || height <= 0 || pixels < LARGE || pixels > Integer.MAX_VALUE / 4) {
            return null;
        }
        try {
            InputStream data = data(bytes, png);
            return data == null ? null : new PngReader(width, height, type == 2 ? 3 : 4).read(data);
        } catch (IOException | IndexOutOfBoundsException e) {
            return null;
        }
    }

    /** What the data chunks hold in a row; null where another chunk says that it is not all. */
    private static InputStream data(byte[] bytes, ByteBuffer png) {
        List<InputStream> parts = new ArrayList<>();
        String name = "";
        for (int at = HEADER; !name.equals("IEND"); at += 12 + png.getInt(at)) {
            name = new String(bytes, at + 4, 4, ISO_8859_1);
            if (MEANING.contains(name) || png.getInt(at) < 0) {
                return null;
            }
            if (name.equals("IDAT")) {
                parts.add(new ByteArrayInputStream(bytes, at + 8, png.getInt(at)));
            }
        }
        return new SequenceInputStream(Collections.enumeration(parts));
    }

    private Bitmap read(InputStream data) throws IOException {
        Bitmap bitmap = Bitmap.createBitmap(width, height, Bitmap.Config.ARGB_8888);
        Inflater inflater = new Inflater();
        try {
            DataInputStream rows = new DataInputStream(new InflaterInputStream(data, inflater, 1 << 16));
            // Before each row stands a pixel of zeros, for what is left of it.
            byte[] above = new byte[channels * (width + 1)];
            byte[] row = new byte[channels * (width + 1)];
            int[] colors = new int[width];
            for (int y = 0; y < height; ++y) {
                int filter = rows.readUnsignedByte();
                rows.readFully(row, channels, channels * width);
                unfilter(filter, row, above);
                fill(colors, row);
                bitmap.setPixels(colors, 0, width, 0, y, width, 1);
                byte[] swapped = above;
                above = row;
                row = swapped;
            }
            return bitmap;
        } finally {
            inflater.end();
        }
    }

    /** A loop for each filter: it is decided once a row. */
    private void unfilter(int filter, byte[] row, byte[] above) throws IOException {
        int n = channels;
        switch (filter) {
            case 0 -> { }
            case 1 -> {
                for (int i = n; i < row.length; ++i) {
                    row[i] += row[i - n];
                }
            }
            case 2 -> {
                for (int i = n; i < row.length; ++i) {
                    row[i] += above[i];
                }
            }
            case 3 -> {
                for (int i = n; i < row.length; ++i) {
                    row[i] += (byte) (((row[i - n] & 255) + (above[i] & 255)) / 2);
                }
            }
            case 4 -> {
                for (int i = n; i < row.length; ++i) {
                    row[i] += (byte) nearest(row[i - n] & 255, above[i] & 255, above[i - n] & 255);
                }
            }
            default -> throw new IOException("no such filter");
        }
    }

    /** The one of left, above and corner that is nearest to left + above - corner. */
    private static int nearest(int a, int b, int c) {
        int toA = Math.abs(b - c);
        int toB = Math.abs(a - c);
        int toC = Math.abs(a + b - 2 * c);
        return toA <= toB && toA <= toC ? a : toB <= toC ? b : c;
    }

    private void fill(int[] colors, byte[] row) {
        for (int x = 0, at = channels; x < width; ++x, at += channels) {
            int alpha = channels == 4 ? row[at + 3] & 255 : 255;
            colors[x] = alpha << 24 | (row[at] & 255) << 16 | (row[at + 1] & 255) << 8 | row[at + 2] & 255;
        }
    }
}
