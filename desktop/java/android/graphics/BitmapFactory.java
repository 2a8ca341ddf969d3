package android.graphics;

import java.io.ByteArrayInputStream;
import java.io.FileDescriptor;
import java.io.FileInputStream;
import java.io.IOException;
import java.io.InputStream;
import java.io.OutputStream;
import java.util.logging.Logger;
import javax.imageio.stream.MemoryCacheImageInputStream;

/**
 * Android's image decoding: PNG, JPEG, GIF (its first frame) and BMP by the JDK's ImageIO, still WebP by Debian's libwebp7.
 * What is no image, or is cut short, decodes to null. Colours of an embedded RGB or grey profile become sRGB.
 *
 * <p>Where something could be done about an image that is not decoded, or not encoded, the logger "BitmapFactory" says what.
 */
public class BitmapFactory {
    /** What is wanted of an image, and what is said about it. */
    public static class Options {
        /** Nothing is decoded: the result is null, and the fields below say what it would be. */
        public boolean inJustDecodeBounds;
        /**
         * Of each square of so many pixels, a power of two to which the number is rounded down, the one right of and below the
         * square's centre is taken; what is left over at the right and the bottom is dropped. Up to 1 all are taken.
         */
        public int inSampleSize;
        /** RGB_565 is honoured for an image without alpha; everything else becomes ARGB_8888. */
        public Bitmap.Config inPreferredConfig = Bitmap.Config.ARGB_8888;
        /** False for straight colours in memory, which {@link Bitmap#isPremultiplied} tells. */
        public boolean inPremultiplied = true;
        public boolean inMutable;
        /** Whether the bitmap is scaled, bilinear, from inDensity to inTargetDensity where both are given. */
        public boolean inScaled = true;
        public int inDensity;
        public int inTargetDensity;
        /** An image of this density is not scaled. */
        public int inScreenDensity;
        /** Without effect, as on Android. */
        public boolean inDither;
        /** Without effect, as on Android. */
        public boolean inPurgeable;
        /** Without effect, as on Android. */
        public boolean inInputShareable;
        /** Without effect, as on Android. */
        public boolean inPreferQualityOverSpeed;
        /** Without effect. */
        public byte[] inTempStorage;

        /** The bitmap's width; the image's own for {@link #inJustDecodeBounds}; -1 if it cannot be decoded. */
        public int outWidth;
        /** As {@link #outWidth}. */
        public int outHeight;
        /** Such as image/png; null if the image cannot be decoded. */
        public String outMimeType;
        /** What the bitmap is or would be; null if the image cannot be decoded. */
        public Bitmap.Config outConfig;

        private void say(int width, int height, String mimeType, Bitmap.Config config) {
            outWidth = width;
            outHeight = height;
            outMimeType = mimeType;
            outConfig = config;
        }
    }

    public static Bitmap decodeFile(String pathName) {
        return decodeFile(pathName, null);
    }

    public static Bitmap decodeFile(String pathName, Options opts) {
        check(opts);
        if (pathName == null) {
            return null;
        }
        try (var file = new FileInputStream(pathName)) {
            return decode(file, null, opts);
        } catch (IOException e) {
            return decode(InputStream.nullInputStream(), null, opts); // which tells the options too
        }
    }

    public static Bitmap decodeStream(InputStream is) {
        return decodeStream(is, null, null);
    }

    /**
     * Reads on a little beyond the image, and leaves the stream open.
     *
     * @param outPadding becomes -1, -1, -1, -1 with a bitmap, for no image has a padding here; may be null
     */
    public static Bitmap decodeStream(InputStream is, Rect outPadding, Options opts) {
        check(opts);
        return is == null ? null : decode(is, outPadding, opts);
    }

    public static Bitmap decodeByteArray(byte[] data, int offset, int length) {
        return decodeByteArray(data, offset, length, null);
    }

    public static Bitmap decodeByteArray(byte[] data, int offset, int length, Options opts) {
        if ((offset | length) < 0 || data.length - offset < length) {
            throw new ArrayIndexOutOfBoundsException(length + " bytes at " + offset + " of " + data.length);
        }
        check(opts);
        return decode(new ByteArrayInputStream(data, offset, length), null, opts);
    }

    public static Bitmap decodeFileDescriptor(FileDescriptor fd) {
        return decodeFileDescriptor(fd, null, null);
    }

    /** Begins at the descriptor's position and, in a file, leaves it there; the descriptor stays open. */
    public static Bitmap decodeFileDescriptor(FileDescriptor fd, Rect outPadding, Options opts) {
        check(opts);
        if (fd == null || !fd.valid()) {
            return null;
        }
        var file = new FileInputStream(fd); // closing it would close the descriptor
        long before = -1;
        try {
            before = file.getChannel().position();
        } catch (IOException e) {
            // a pipe, which is read as it comes
        }
        Bitmap bitmap = decode(file, outPadding, opts);
        try {
            if (before >= 0) {
                file.getChannel().position(before);
            }
        } catch (IOException e) {
            return null;
        }
        return bitmap;
    }

    private static void check(Options opts) {
        if (opts != null && opts.inMutable && opts.inPreferredConfig == Bitmap.Config.HARDWARE) {
            throw new IllegalArgumentException("Bitmaps with Config.HARDWARE are always immutable");
        }
    }

    private static Bitmap decode(InputStream in, Rect outPadding, Options opts) {
        Options options = opts == null ? new Options() : opts;
        options.say(-1, -1, null, null);
        // A memory cache, where ImageIO by itself puts every stream into a temporary file.
        try (var cached = new MemoryCacheImageInputStream(in); Picture picture = Picture.open(cached)) {
            Bitmap bitmap = picture == null ? null : decode(picture, options);
            if (bitmap != null && outPadding != null) {
                outPadding.set(-1, -1, -1, -1);
            }
            return bitmap;
        } catch (IOException | RuntimeException e) {
            return null; // unchecked: an image too large for a Bitmap, or damage that a reader did not foresee
        }
    }

    private static Bitmap decode(Picture picture, Options options) throws IOException {
        boolean small = options.inPreferredConfig == Bitmap.Config.RGB_565;
        if (options.inJustDecodeBounds) {
            options.say(picture.width, picture.height, picture.mimeType, config(small && !picture.hasAlpha()));
            return null;
        }
        int step = Integer.highestOneBit(Math.max(1, options.inSampleSize));
        int stepX = Math.min(step, picture.width), stepY = Math.min(step, picture.height);
        int width = picture.width / stepX, height = picture.height / stepY;
        picture.read(stepX, stepY);
        Bitmap bitmap = Bitmap.createBitmap(width, height, config(small && !picture.hasAlpha()));
        bitmap.setHasAlpha(picture.hasAlpha());
        bitmap.setPremultiplied(options.inPremultiplied);
        int[] row = new int[width];
        for (int y = 0; y < height; ++y) {
            picture.row(y, row);
            bitmap.setPixels(row, 0, width, 0, y, width, 1);
        }
        bitmap = forDensity(bitmap, options);
        options.say(bitmap.getWidth(), bitmap.getHeight(), picture.mimeType, bitmap.getConfig());
        return options.inMutable ? bitmap : bitmap.freeze();
    }

    private static Bitmap.Config config(boolean small) {
        return small ? Bitmap.Config.RGB_565 : Bitmap.Config.ARGB_8888;
    }

    private static Bitmap forDensity(Bitmap bitmap, Options options) {
        int from = options.inDensity, to = options.inTargetDensity;
        if (from == 0) {
            return bitmap;
        }
        bitmap.setDensity(from);
        if (!options.inScaled || to == 0 || to == from || from == options.inScreenDensity) {
            return bitmap;
        }
        float scale = (float) to / from;
        int width = (int) (bitmap.getWidth() * scale + 0.5f), height = (int) (bitmap.getHeight() * scale + 0.5f);
        Bitmap scaled = bitmap.scaled(width, height, true);
        scaled.setDensity(to);
        return scaled;
    }

    /** Here and not in Bitmap, so that only coding and decoding load AWT. */
    static boolean encode(Bitmap bitmap, Bitmap.CompressFormat format, int quality, OutputStream stream) {
        if (format != Bitmap.CompressFormat.PNG && format != Bitmap.CompressFormat.JPEG) {
            return refuse("WebP is not written on a desktop JVM; compress to PNG or JPEG") != null;
        }
        if (bitmap.getConfig() == Bitmap.Config.ALPHA_8) {
            return refuse("ALPHA_8 is not compressed; copy() the bitmap to ARGB_8888 first") != null;
        }
        try {
            return format == Bitmap.CompressFormat.PNG ? ImageIoPicture.png(bitmap, stream)
                    : ImageIoPicture.jpeg(bitmap, quality, stream);
        } catch (IOException e) {
            return false;
        }
    }

    /** Null, once the log has the reason. */
    static Picture refuse(String reason) {
        Logger.getLogger("BitmapFactory").warning(reason);
        return null;
    }
}
