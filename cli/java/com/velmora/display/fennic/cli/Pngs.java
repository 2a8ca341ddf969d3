package com.velmora.display.fennic.cli;

import android.graphics.Bitmap;
import android.graphics.BitmapFactory;
import java.awt.AlphaComposite;
import java.awt.Graphics2D;
import java.awt.RenderingHints;
import java.awt.image.BufferedImage;
import java.awt.image.DataBufferInt;
import java.io.ByteArrayOutputStream;
import java.io.IOException;
import java.io.InputStream;
import java.nio.ByteBuffer;
import java.nio.ByteOrder;
import java.nio.IntBuffer;
import java.nio.file.FileSystemException;
import java.nio.file.Files;
import java.nio.file.Path;
import java.nio.file.StandardCopyOption;
import java.util.Arrays;
import java.util.function.IntUnaryOperator;

/** PNG files in and out, scaling and shifting, with every failure told in words. */
final class Pngs {
    private static final byte[] SIGNATURE = {(byte) 0x89, 'P', 'N', 'G', '\r', '\n', 0x1a, '\n'};

    private Pngs() {}

    static Bitmap read(Path file) {
        if (!Files.exists(file)) {
            throw new Failure(file, "no such file; check its name");
        }
        if (Files.isDirectory(file)) {
            throw new Failure(file, "a folder; name a PNG file");
        }
        if (!Files.isReadable(file)) {
            throw new Failure(file, "no permission to read it; mend with chmod +r");
        }
        try (InputStream in = Files.newInputStream(file)) {
            if (!Arrays.equals(in.readNBytes(SIGNATURE.length), SIGNATURE)) {
                throw new Failure(file, "not a PNG; convert it to PNG first");
            }
        } catch (IOException e) {
            throw new Failure(file, "cannot be read: " + reason(e));
        }
        BitmapFactory.Options options = new BitmapFactory.Options();
        options.inMutable = true;
        Bitmap bitmap = BitmapFactory.decodeFile(file.toString(), options);
        if (bitmap == null) {
            throw new Failure(file, "a damaged or oversized PNG; export it again");
        }
        return bitmap;
    }

    static byte[] encode(Bitmap bitmap) {
        ByteArrayOutputStream out = new ByteArrayOutputStream();
        if (!bitmap.compress(Bitmap.CompressFormat.PNG, 100, out)) {
            throw new Failure("the result could not be encoded as a PNG");
        }
        return out.toByteArray();
    }

    /** Says before any work is done what would keep the file from being written. */
    static void checkTarget(Path file) {
        Path parent = file.toAbsolutePath().getParent();
        if (parent == null || Files.isDirectory(file)) {
            throw new Failure(file, "a folder; name the file to write");
        }
        if (!Files.isDirectory(parent)) {
            boolean taken = Files.exists(parent);
            String why = taken ? parent + " is a file, no folder; choose another" : "its folder is missing; create it first";
            throw new Failure(file, why);
        }
        if (!Files.isWritable(parent) || Files.exists(file) && !Files.isWritable(file)) {
            throw new Failure(file, "no permission to write it; mend with chmod +w or choose another place");
        }
        if (Files.exists(file) && !Files.isRegularFile(file)) {
            throw new Failure(file, "not a plain file; choose another name");
        }
    }

    /** The file appears whole or not at all: the bytes go to a neighbour that then takes its name. */
    static void write(Path file, byte[] bytes) {
        checkTarget(file);
        Path neighbour = null;
        try {
            Path target = Files.exists(file) ? file.toRealPath() : file.toAbsolutePath();
            neighbour = target.resolveSibling("." + target.getFileName() + "." + ProcessHandle.current().pid() + ".tmp");
            neighbour.toFile().deleteOnExit();
            Files.write(neighbour, bytes);
            Files.move(neighbour, target, StandardCopyOption.ATOMIC_MOVE, StandardCopyOption.REPLACE_EXISTING);
        } catch (IOException e) {
            if (neighbour != null) {
                neighbour.toFile().delete();
            }
            throw new Failure(file, "cannot be written: " + reason(e));
        }
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

    private static String reason(IOException e) {
        String reason = e instanceof FileSystemException file ? file.getReason() : e.getMessage();
        return reason == null ? e.getClass().getSimpleName() : reason;
    }
}
