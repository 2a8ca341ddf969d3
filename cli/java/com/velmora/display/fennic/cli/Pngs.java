package com.velmora.display.fennic.cli;

import static java.nio.charset.StandardCharsets.ISO_8859_1;
import static java.nio.charset.StandardCharsets.UTF_8;

import android.graphics.Bitmap;
import android.graphics.BitmapFactory;
import java.awt.AlphaComposite;
import java.awt.Graphics2D;
import java.awt.RenderingHints;
import java.awt.image.BufferedImage;
import java.awt.image.DataBufferInt;
import java.io.ByteArrayOutputStream;
import java.io.IOException;
import java.io.UncheckedIOException;
import java.nio.ByteBuffer;
import java.nio.ByteOrder;
import java.nio.IntBuffer;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.function.IntUnaryOperator;

/** Picture files in, PNG files out, scaling and shifting, with every failure told in words. */
final class Pngs {
    private Pngs() {}

    static Bitmap read(Path file) {
        return decode(Input.of(file), bytes(Input.of(file)));
    }

    /** All of the file at once, for a pipe can be read only once. */
    static byte[] bytes(Input input) {
        if (!input.isStandard() && !Files.exists(input.file())) {
            throw new Failure(input, input.isUnspeakable()
                ? "cannot be reached by this name, which is not UTF-8; rename it, or take its folder with --recursive"
                : "no such file; check its name");
        }
        if (!input.isStandard() && Files.isDirectory(input.file())) {
            throw new Failure(input, Files.isReadable(input.file())
                ? "a folder; name pictures, or take all that are in it with --recursive"
                : "no permission to read this folder; mend with chmod +rx");
        }
        if (!input.isStandard() && !Files.isReadable(input.file())) {
            throw new Failure(input, "no permission to read it; mend with chmod +r");
        }
        try {
            return input.isStandard() ? System.in.readAllBytes() : Files.readAllBytes(input.file());
        } catch (IOException e) {
            throw new Failure(input, "cannot be read: " + WholeFile.reason(e));
        }
    }

    static String text(Input input) {
        return new String(bytes(input), UTF_8);
    }

    static Bitmap decode(Input input, byte[] bytes) {
        if (bytes.length == 0) {
            throw new Failure(input, "empty; export it again");
        }
        Bitmap large = PngReader.read(bytes);
        Bitmap bitmap = large != null ? large : BitmapFactory.decodeByteArray(bytes, 0, bytes.length, mutable());
        if (bitmap == null) {
            String format = format(bytes);
            throw new Failure(input, format == null
                ? "not a picture that can be read (PNG, JPEG, GIF, BMP, WebP); convert it first"
                : "a damaged or oversized " + format + "; export it again");
        }
        return bitmap;
    }

    private static BitmapFactory.Options mutable() {
        BitmapFactory.Options options = new BitmapFactory.Options();
        options.inMutable = true;
        return options;
    }

    /** The format by the first bytes, or null. */
    static String format(byte[] bytes) {
        String start = new String(bytes, 0, Math.min(bytes.length, 12), ISO_8859_1);
        return start.startsWith("\u0089PNG\r\n\u001a\n") ? "PNG"
            : start.startsWith("\u00ff\u00d8\u00ff") ? "JPEG"
            : start.startsWith("GIF8") ? "GIF"
            : start.startsWith("BM") ? "BMP"
            : start.startsWith("RIFF") && start.endsWith("WEBP") ? "WebP" : null;
    }

    static byte[] encode(Bitmap bitmap) {
        ByteArrayOutputStream out = new ByteArrayOutputStream();
        try {
            PngWriter.write(bitmap, out);
        } catch (IOException e) {
            throw new UncheckedIOException(e);
        }
        return out.toByteArray();
    }

    static void write(Path file, byte[] bytes) {
        WholeFile.write(file, out -> out.write(bytes));
    }

    /** The bitmap, made smaller if need be to fit into a square. */
    static Bitmap within(Bitmap bitmap, int side) {
        double scale = Math.min(1, (double) side / Math.max(bitmap.getWidth(), bitmap.getHeight()));
        int width = (int) Math.max(1, Math.round(scale * bitmap.getWidth()));
        int height = (int) Math.max(1, Math.round(scale * bitmap.getHeight()));
        return scaled(bitmap, width, height);
    }

    /** Halved by area average while more than twice the size, then bicubic; on premultiplied pixels, or edges would darken. */
    static Bitmap scaled(Bitmap bitmap, int width, int height) {
        if (bitmap.getWidth() == width && bitmap.getHeight() == height) {
            return bitmap;
        }
        BufferedImage image = image(bitmap);
        while (image.getWidth() >= 2 * width || image.getHeight() >= 2 * height) {
            int w = image.getWidth() >= 2 * width ? image.getWidth() / 2 : image.getWidth();
            int h = image.getHeight() >= 2 * height ? image.getHeight() / 2 : image.getHeight();
            image = drawn(image, w, h, RenderingHints.VALUE_INTERPOLATION_BILINEAR);
        }
        return bitmap(drawn(image, width, height, RenderingHints.VALUE_INTERPOLATION_BICUBIC));
    }

    /** Moved to the right and down; what comes in from outside is the nearest pixel. */
    static Bitmap shifted(Bitmap bitmap, int x, int y) {
        int right = bitmap.getWidth() - 1;
        int bottom = bitmap.getHeight() - 1;
        return taken(bitmap, right + 1, bottom + 1,
            column -> Math.max(0, Math.min(column - x, right)), row -> Math.max(0, Math.min(row - y, bottom)));
    }

    /** A bitmap of some size whose pixels come from these columns and rows of another. */
    static Bitmap taken(Bitmap from, int width, int height, IntUnaryOperator column, IntUnaryOperator row) {
        int stride = from.getRowBytes() / Integer.BYTES;
        int[] source = new int[stride * from.getHeight()];
        from.copyPixelsToBuffer(IntBuffer.wrap(source));
        Bitmap bitmap = Bitmap.createBitmap(width, height, Bitmap.Config.ARGB_8888);
        int[] pixels = new int[bitmap.getByteCount() / Integer.BYTES];
        for (int i = 0; i < width * height; ++i) {
            int x = i % width;
            int y = i / width;
            pixels[y * (bitmap.getRowBytes() / Integer.BYTES) + x] = source[row.applyAsInt(y) * stride + column.applyAsInt(x)];
        }
        bitmap.copyPixelsFromBuffer(IntBuffer.wrap(pixels));
        return bitmap;
    }

    private static BufferedImage drawn(BufferedImage image, int width, int height, Object interpolation) {
        BufferedImage result = new BufferedImage(width, height, BufferedImage.TYPE_INT_ARGB_PRE);
        Graphics2D graphics = result.createGraphics();
        graphics.setComposite(AlphaComposite.Src);
        graphics.setRenderingHint(RenderingHints.KEY_INTERPOLATION, interpolation);
        graphics.drawImage(image, 0, 0, width, height, null);
        graphics.dispose();
        return result;
    }

    // A bitmap's bytes are R, G, B, A; AWT's premultiplied words are 0xAARRGGBB. Neither conversion loses a bit.
    private static BufferedImage image(Bitmap bitmap) {
        ByteBuffer bytes = ByteBuffer.allocate(bitmap.getByteCount()).order(ByteOrder.BIG_ENDIAN);
        bitmap.copyPixelsToBuffer(bytes);
        IntBuffer rgba = bytes.rewind().asIntBuffer();
        BufferedImage image = new BufferedImage(bitmap.getWidth(), bitmap.getHeight(), BufferedImage.TYPE_INT_ARGB_PRE);
        int[] argb = ((DataBufferInt) image.getRaster().getDataBuffer()).getData();
        int stride = bitmap.getRowBytes() / 4;
        for (int i = 0; i < argb.length; ++i) {
            argb[i] = Integer.rotateRight(rgba.get(i / bitmap.getWidth() * stride + i % bitmap.getWidth()), 8);
        }
        return image;
    }

    private static Bitmap bitmap(BufferedImage image) {
        Bitmap bitmap = Bitmap.createBitmap(image.getWidth(), image.getHeight(), Bitmap.Config.ARGB_8888);
        ByteBuffer bytes = ByteBuffer.allocate(bitmap.getByteCount()).order(ByteOrder.BIG_ENDIAN);
        int[] argb = ((DataBufferInt) image.getRaster().getDataBuffer()).getData();
        int stride = bitmap.getRowBytes() / 4;
        for (int i = 0; i < argb.length; ++i) {
            bytes.putInt(4 * (i / image.getWidth() * stride + i % image.getWidth()), Integer.rotateLeft(argb[i], 8));
        }
        bitmap.copyPixelsFromBuffer(bytes.rewind());
        return bitmap;
    }
}
