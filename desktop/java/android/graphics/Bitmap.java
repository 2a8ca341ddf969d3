package android.graphics;

import android.util.DisplayMetrics;
import java.io.OutputStream;
import java.lang.invoke.MethodHandles;
import java.lang.invoke.VarHandle;
import java.nio.Buffer;
import java.nio.ByteBuffer;
import java.nio.ByteOrder;
import java.nio.IntBuffer;
import java.nio.ShortBuffer;
import java.util.Arrays;
import java.util.Objects;
import java.util.concurrent.atomic.AtomicInteger;

/**
 * Android's bitmap for a desktop JVM: the same calls, the same exceptions and the same bytes in memory.
 *
 * <p>Colour ints are straight ARGB. ARGB_8888 keeps premultiplied bytes in the order R, G, B, A; both directions round to
 * the nearest value, unpremultiplying rounds a half up. RGB_565 keeps a colour set by {@link #setPixel} without regard to
 * its alpha, while {@link #copy} and {@link #eraseColor} lay a translucent colour over black.
 */
public final class Bitmap {
    /** How a pixel is kept. */
    public enum Config {
        ALPHA_8(1, 8),
        RGB_565(2, 4),
        /** Made as {@link #ARGB_8888}, as on Android since version 4.4. */
        ARGB_4444(0, 0),
        ARGB_8888(4, 1),
        /** Cannot be made here. */
        RGBA_F16(0, 0),
        /** Cannot be made here. */
        HARDWARE(0, 0),
        /** Cannot be made here. */
        RGBA_1010102(0, 0);

        final int bytesPerPixel;
        final int ndkFormat;

        Config(int bytesPerPixel, int ndkFormat) {
            this.bytesPerPixel = bytesPerPixel;
            this.ndkFormat = ndkFormat;
        }
    }

    /** What {@link #compress} is asked for; WebP cannot be written here. */
    public enum CompressFormat { JPEG, PNG, WEBP, WEBP_LOSSY, WEBP_LOSSLESS }

    /** The density of a bitmap that is never scaled for a screen. */
    public static final int DENSITY_NONE = 0;

    /** The word in {@link #locks}: the number of locks held by native code, the sign bit set once recycled. */
    private static final VarHandle LOCKS = MethodHandles.byteBufferViewVarHandle(int[].class, ByteOrder.nativeOrder());
    private static final int RECYCLED = Integer.MIN_VALUE;

    /** Whether this class lasts as long as the JVM, so that libjnigraphics, which knows the field by name, may hold it. */
    private static final boolean LASTS = Bitmap.class.getClassLoader() == ClassLoader.getSystemClassLoader();
    private static final AtomicInteger GENERATIONS = new AtomicInteger();

    // libjnigraphics knows these fields by name. It counts locks in a direct buffer, where native code and Java can both update
    // one word atomically, clears the pixels at the last unlock of a bitmap that was recycled while locked, keeps the
    // addresses of both buffers once it has asked for them, and clears the generation at each unlock.
    private int width;
    private int height;
    private int rowBytes;
    private int format;
    private final ByteBuffer locks = ByteBuffer.allocateDirect(Integer.BYTES);
    private ByteBuffer pixels;
    private long lockAddress;
    private long pixelAddress;
    private int generation;

    private Config config;
    private boolean mutable = true;
    private boolean hasAlpha;
    private boolean premultiplied = true;
    private int density = DisplayMetrics.DENSITY_DEFAULT;

    private Bitmap(int width, int height, Config config) {
        checkSize(width, height);
        long size = size(width, height, config);
        if (size > Integer.MAX_VALUE) {
            throw new IllegalArgumentException(
                    "a bitmap of " + width + " x " + height + " in " + config + " exceeds " + Integer.MAX_VALUE + " bytes");
        }
        shape(width, height, config);
        pixels = ByteBuffer.allocateDirect((int) size).order(ByteOrder.LITTLE_ENDIAN);
    }

    /** Mutable and transparent, or black where there is no alpha. */
    public static Bitmap createBitmap(int width, int height, Config config) {
        return new Bitmap(width, height, made(config));
    }

    /** Without alpha an ARGB_8888 bitmap begins opaque and black. */
    public static Bitmap createBitmap(int width, int height, Config config, boolean hasAlpha) {
        Bitmap bitmap = createBitmap(width, height, config);
        bitmap.setHasAlpha(hasAlpha);
        if (!hasAlpha && bitmap.config == Config.ARGB_8888) {
            bitmap.eraseColor(Color.BLACK);
        }
        return bitmap;
    }

    /** The result is immutable, as on Android. */
    public static Bitmap createBitmap(int[] colors, int width, int height, Config config) {
        return createBitmap(colors, 0, width, width, height, config);
    }

    /** Rows begin at offset and lie stride colours apart. The result is immutable, as on Android. */
    public static Bitmap createBitmap(int[] colors, int offset, int stride, int width, int height, Config config) {
        checkSize(width, height);
        checkArray(colors, offset, stride, width, height);
        Bitmap bitmap = createBitmap(width, height, config);
        bitmap.setPixels(colors, offset, stride, 0, 0, width, height);
        return bitmap.freeze();
    }

    /** The source itself if it is immutable, else a mutable copy. */
    public static Bitmap createBitmap(Bitmap src) {
        return createBitmap(src, 0, 0, src.width, src.height);
    }

    /** A mutable copy of a rectangle; the source itself if it is immutable and all of it is asked for. */
    public static Bitmap createBitmap(Bitmap source, int x, int y, int width, int height) {
        require(x >= 0, "x must be >= 0");
        require(y >= 0, "y must be >= 0");
        require(width > 0, "width must be > 0");
        require(height > 0, "height must be > 0");
        require((long) x + width <= source.width, "x + width must be <= bitmap.width()");
        require((long) y + height <= source.height, "y + height must be <= bitmap.height()");
        ByteBuffer from = source.sourcePixels();
        if (!source.mutable && width == source.width && height == source.height) {
            return source;
        }
        source.checkDrawable();
        Bitmap bitmap = source.like(width, height, source.config);
        for (int row = 0; row < height; ++row) {
            bitmap.pixels.put(row * bitmap.rowBytes, from, source.at(x, y + row), bitmap.rowBytes);
        }
        return bitmap;
    }

    /**
     * A mutable bitmap of another size; at the same size it is as {@link #createBitmap(Bitmap)}.
     *
     * <p>The centre of the target's pixel x lies at (x + 1/2) * width / dstWidth of the source, and likewise for y. Without
     * the filter the source's pixel there is taken as it is. With it, bilinear: the four pixels whose centres are around, each
     * by its nearness along both axes, on premultiplied channels of 8 bits. What would lie outside is the nearest pixel
     * inside. The sum is exact and rounded once, a half up. Nothing is averaged beyond these four, however small the target.
     */
    public static Bitmap createScaledBitmap(Bitmap src, int dstWidth, int dstHeight, boolean filter) {
        checkSize(dstWidth, dstHeight);
        if (dstWidth == src.width && dstHeight == src.height) {
            return createBitmap(src);
        }
        src.sourcePixels();
        src.checkDrawable();
        return src.scaled(dstWidth, dstHeight, filter);
    }

    /** The channels are taken as they are kept. */
    Bitmap scaled(int dstWidth, int dstHeight, boolean filter) {
        ByteBuffer from = sourcePixels();
        Bitmap to = like(dstWidth, dstHeight, config);
        int[] upper = new int[width], lower = new int[width], row = new int[dstWidth];
        var columns = new Axis(width, dstWidth, filter);
        var rows = new Axis(height, dstHeight, filter);
        for (int y = 0; y < dstHeight; ++y) {
            load(from, at(0, rows.first[y]), upper, 0, width);
            if (filter) {
                load(from, at(0, rows.second[y]), lower, 0, width);
            }
            for (int x = 0; x < dstWidth; ++x) {
                row[x] = filter ? Axis.mixed(upper, lower, columns, x, rows, y) : upper[columns.first[x]];
            }
            to.store(to.pixels, to.at(0, y), row);
        }
        return to;
    }

    /** Another format keeps what it can hold; where it has no alpha, translucent colours lie over black. */
    public Bitmap copy(Config config, boolean isMutable) {
        ByteBuffer from = pixels("Can't copy a recycled bitmap");
        require(config != Config.HARDWARE || !isMutable, "Hardware bitmaps are always immutable");
        Bitmap copy = like(width, height, made(config));
        if (copy.config == this.config) {
            copy.pixels.put(0, from, 0, rowBytes * height);
        } else {
            int[] row = new int[width];
            for (int y = 0; y < height; ++y) {
                read(from, at(0, y), row, 0, width);
                for (int x = 0; copy.config == Config.RGB_565 && x < width; ++x) {
                    row[x] = premultiply(row[x]);
                }
                copy.write(copy.pixels, copy.at(0, y), row, 0, width);
            }
        }
        return isMutable ? copy : copy.freeze();
    }

    /** A mutable ALPHA_8 bitmap of the alphas, 255 where there is no alpha. */
    public Bitmap extractAlpha() {
        ByteBuffer from = pixels("Can't extractAlpha on a recycled bitmap");
        Bitmap alpha = new Bitmap(width, height, Config.ALPHA_8);
        alpha.density = density;
        int[] row = new int[width];
        for (int y = 0; y < height; ++y) {
            load(from, at(0, y), row, 0, width);
            if (!hasAlpha) {
                Arrays.fill(row, Color.BLACK);
            }
            alpha.store(alpha.pixels, alpha.at(0, y), row);
        }
        return alpha;
    }

    /**
     * Gives the memory another size and format; what the pixels are then is not said. ARGB_8888 and ALPHA_8 have alpha again.
     *
     * @throws IllegalStateException if the bitmap is recycled, immutable, or locked by native code
     * @throws IllegalArgumentException if the memory is too small
     */
    public void reconfigure(int width, int height, Config config) {
        ByteBuffer current = pixels("Can't call reconfigure() on a recycled bitmap");
        checkSize(width, height);
        checkMutable("only mutable bitmaps may be reconfigured");
        Config made = made(config);
        require(size(width, height, made) <= current.capacity(), "Bitmap not large enough to support new configuration");
        if ((int) LOCKS.getVolatile(locks, 0) != 0) {
            throw new IllegalStateException("Can't call reconfigure() on a bitmap that native code has locked");
        }
        shape(width, height, made);
    }

    public void setWidth(int width) {
        reconfigure(width, height, config);
    }

    public void setHeight(int height) {
        reconfigure(width, height, config);
    }

    public void setConfig(Config config) {
        reconfigure(width, height, config);
    }

    public int getWidth() {
        return width;
    }

    public int getHeight() {
        return height;
    }

    public int getRowBytes() {
        return rowBytes;
    }

    /** A recycled bitmap has no bytes. */
    public int getByteCount() {
        return isRecycled() ? 0 : rowBytes * height;
    }

    /** More than {@link #getByteCount} once {@link #reconfigure} has made the bitmap smaller. */
    public int getAllocationByteCount() {
        ByteBuffer current = pixels;
        return isRecycled() ? 0 : current.capacity();
    }

    public Config getConfig() {
        return config;
    }

    public boolean isMutable() {
        return mutable;
    }

    /** False for RGB_565. */
    public boolean hasAlpha() {
        return hasAlpha;
    }

    /** A hint that changes no byte and no colour. RGB_565 keeps its answer. */
    public void setHasAlpha(boolean hasAlpha) {
        pixels("setHasAlpha called on a recycled bitmap");
        this.hasAlpha = hasAlpha && config != Config.RGB_565;
    }

    /** Whether the channels are kept multiplied by alpha; false for a bitmap without alpha. */
    public boolean isPremultiplied() {
        return hasAlpha && (premultiplied || config != Config.ARGB_8888);
    }

    /**
     * Whether the bytes of ARGB_8888 are taken as premultiplied, as they are at first, or as straight. No byte changes, so the
     * colours may.
     */
    public void setPremultiplied(boolean premultiplied) {
        pixels("setPremultiplied called on a recycled bitmap");
        this.premultiplied = premultiplied;
    }

    /** That of the medium screen unless it is set. */
    public int getDensity() {
        return density;
    }

    public void setDensity(int density) {
        this.density = density;
    }

    /** The width on a screen of another density, rounded; unchanged if either density is {@link #DENSITY_NONE}. */
    public int getScaledWidth(int targetDensity) {
        return scaledTo(targetDensity, width);
    }

    /** As {@link #getScaledWidth}. */
    public int getScaledHeight(int targetDensity) {
        return scaledTo(targetDensity, height);
    }

    /** Another number than before if pixels have been written, by a call on this class or by native code that unlocked them. */
    public int getGenerationId() {
        if (generation == 0) {
            generation = GENERATIONS.incrementAndGet();
        }
        return generation;
    }

    /** Does nothing: pixels are always in memory. */
    public void prepareToDraw() {}

    public boolean isRecycled() {
        return (int) LOCKS.getVolatile(locks, 0) < 0;
    }

    /** Pixels that native code has locked stay in memory until their last unlock. */
    public void recycle() {
        int before = (int) LOCKS.getAndBitwiseOr(locks, 0, RECYCLED);
        if ((before & ~RECYCLED) == 0) {
            pixels = null;
        }
    }

    public int getPixel(int x, int y) {
        ByteBuffer from = pixels("Can't call getPixel() on a recycled bitmap");
        checkPixel(x, y);
        return straight(get(from, at(x, y)));
    }

    public void setPixel(int x, int y, int color) {
        ByteBuffer to = pixels("Can't call setPixel() on a recycled bitmap");
        checkMutable("Can't call setPixel() on an immutable bitmap");
        checkPixel(x, y);
        put(to, at(x, y), kept(color));
    }

    /** Rows begin at offset and lie stride colours apart; a negative stride walks backwards. */
    public void getPixels(int[] colors, int offset, int stride, int x, int y, int width, int height) {
        ByteBuffer from = pixels("Can't call getPixels() on a recycled bitmap");
        if (width == 0 || height == 0) {
            return;
        }
        checkPixels(colors, offset, stride, x, y, width, height);
        for (int row = 0; row < height; ++row) {
            read(from, at(x, y + row), colors, offset + row * stride, width);
        }
    }

    /** As {@link #getPixels}. */
    public void setPixels(int[] colors, int offset, int stride, int x, int y, int width, int height) {
        ByteBuffer to = pixels("Can't call setPixels() on a recycled bitmap");
        checkMutable("Can't call setPixels() on an immutable bitmap");
        if (width == 0 || height == 0) {
            return;
        }
        checkPixels(colors, offset, stride, x, y, width, height);
        for (int row = 0; row < height; ++row) {
            write(to, at(x, y + row), colors, offset + row * stride, width);
        }
    }

    public void eraseColor(int color) {
        ByteBuffer to = pixels("Can't erase a recycled bitmap");
        checkMutable("cannot erase immutable bitmaps");
        int[] row = new int[width];
        Arrays.fill(row, config == Config.RGB_565 ? premultiply(color) : color);
        write(to, 0, row, 0, width);
        for (int y = 1; y < height; ++y) {
            to.put(y * rowBytes, to, 0, rowBytes);
        }
    }

    /** Copies the stored bytes, whatever the byte order of the buffer, and moves its position by the whole elements written. */
    public void copyPixelsToBuffer(Buffer dst) {
        ByteBuffer from = pixels("Can't call copyPixelsToBuffer() on a recycled bitmap");
        int size = rowBytes * height;
        int shift = checkBuffer(dst, size);
        if (dst instanceof ByteBuffer bytes) {
            bytes.put(from.slice(0, size));
            return;
        }
        // The last element may be covered in part; its other bytes are read first and so written back unchanged.
        ByteBuffer raw = elements(dst, size);
        raw.put(0, from, 0, size);
        if (dst instanceof ShortBuffer shorts) {
            shorts.duplicate().put(raw.asShortBuffer());
        } else if (dst instanceof IntBuffer ints) {
            ints.duplicate().put(raw.asIntBuffer());
        }
        dst.position(dst.position() + (size >> shift));
    }

    /** The opposite of {@link #copyPixelsToBuffer}. */
    public void copyPixelsFromBuffer(Buffer src) {
        ByteBuffer to = pixels("copyPixelsFromBuffer called on recycled bitmap");
        checkMutable("copyPixelsFromBuffer called on an immutable bitmap");
        int size = rowBytes * height;
        int shift = checkBuffer(src, size);
        if (src instanceof ByteBuffer bytes) {
            to.put(0, bytes, bytes.position(), size);
        } else {
            to.put(0, elements(src, size), 0, size);
        }
        src.position(src.position() + (size >> shift));
    }

    /** Whether size, format and stored bytes are the same; never the same as null. */
    public boolean sameAs(Bitmap other) {
        ByteBuffer mine = pixels("Can't call sameAs on a recycled bitmap!");
        if (other == null) {
            return false;
        }
        ByteBuffer theirs = other.pixels;
        if (other.isRecycled()) {
            throw new IllegalArgumentException("Can't compare to a recycled bitmap!");
        }
        int size = rowBytes * height;
        return width == other.width && height == other.height && config == other.config
                && mine.slice(0, size).equals(theirs.slice(0, size));
    }

    /**
     * PNG keeps every colour. JPEG takes a quality of 0 to 100 and lays translucent colours over black.
     *
     * @return false, with nothing written, for WebP and for ALPHA_8; false also when the stream fails
     */
    public boolean compress(CompressFormat format, int quality, OutputStream stream) {
        pixels("Can't compress a recycled bitmap");
        Objects.requireNonNull(format);
        Objects.requireNonNull(stream);
        if (quality < 0 || quality > 100) {
            throw new IllegalArgumentException("quality must be 0..100");
        }
        return BitmapFactory.encode(this, format, quality, stream);
    }

    Bitmap freeze() {
        mutable = false;
        return this;
    }

    /** A new bitmap with this one's density and way of keeping alpha. */
    private Bitmap like(int width, int height, Config config) {
        var bitmap = new Bitmap(width, height, config);
        bitmap.density = density;
        bitmap.premultiplied = premultiplied;
        bitmap.setHasAlpha(hasAlpha);
        return bitmap;
    }

    private void shape(int width, int height, Config config) {
        this.width = width;
        this.height = height;
        this.config = config;
        rowBytes = width * config.bytesPerPixel;
        format = config.ndkFormat;
        hasAlpha = config != Config.RGB_565;
        generation = 0;
    }

    private static long size(int width, int height, Config config) {
        long pixels = (long) width * height;
        return pixels > Integer.MAX_VALUE ? pixels : pixels * config.bytesPerPixel;
    }

    /** What a bitmap is made as when this is asked for. */
    private static Config made(Config config) {
        return switch (config) {
            case ALPHA_8, RGB_565, ARGB_8888 -> config;
            case ARGB_4444 -> Config.ARGB_8888;
            default -> throw new IllegalArgumentException(config + " cannot be made on a desktop JVM; ask for ARGB_8888");
        };
    }

    private int scaledTo(int targetDensity, int size) {
        boolean same = density == DENSITY_NONE || targetDensity == DENSITY_NONE || density == targetDensity;
        return same ? size : (int) (((long) size * targetDensity + (density >> 1)) / density);
    }

    private int at(int x, int y) {
        return y * rowBytes + x * config.bytesPerPixel;
    }

    // A pixel between memory and a colour is ARGB like a colour, its channels as they are kept.

    private int get(ByteBuffer from, int at) {
        switch (config) {
            case ALPHA_8:
                return from.get(at) << 24;
            case RGB_565:
                int v = from.getShort(at), r = v >> 11 & 31, g = v >> 5 & 63, b = v & 31;
                return Color.rgb(r << 3 | r >> 2, g << 2 | g >> 4, b << 3 | b >> 2);
            default:
                return swapped(from.getInt(at));
        }
    }

    private void put(ByteBuffer to, int at, int pixel) {
        switch (config) {
            case ALPHA_8:
                to.put(at, (byte) (pixel >>> 24));
                break;
            case RGB_565:
                int r = scale(pixel >> 16 & 255, 31), g = scale(pixel >> 8 & 255, 63), b = scale(pixel & 255, 31);
                to.putShort(at, (short) (r << 11 | g << 5 | b));
                break;
            default:
                to.putInt(at, swapped(pixel));
        }
    }

    private void load(ByteBuffer from, int at, int[] row, int first, int count) {
        if (config == Config.ARGB_8888) {
            from.asIntBuffer().get(at / Integer.BYTES, row, first, count);
            for (int i = first; i < first + count; ++i) {
                row[i] = swapped(row[i]);
            }
            return;
        }
        for (int i = 0; i < count; ++i) {
            row[first + i] = get(from, at + i * config.bytesPerPixel);
        }
    }

    /** The row is used up. */
    private void store(ByteBuffer to, int at, int[] row) {
        if (config == Config.ARGB_8888) {
            for (int i = 0; i < row.length; ++i) {
                row[i] = swapped(row[i]);
            }
            to.asIntBuffer().put(at / Integer.BYTES, row);
            return;
        }
        for (int i = 0; i < row.length; ++i) {
            put(to, at + i * config.bytesPerPixel, row[i]);
        }
    }

    private void read(ByteBuffer from, int at, int[] colors, int first, int count) {
        load(from, at, colors, first, count);
        if (config == Config.ARGB_8888) {
            for (int i = first; i < first + count; ++i) {
                colors[i] = straight(colors[i]);
            }
        }
    }

    private void write(ByteBuffer to, int at, int[] colors, int first, int count) {
        int[] row = Arrays.copyOfRange(colors, first, first + count);
        if (config == Config.ARGB_8888) {
            for (int i = 0; i < count; ++i) {
                row[i] = kept(row[i]);
            }
        }
        store(to, at, row);
    }

    private int straight(int pixel) {
        return premultiplied && config == Config.ARGB_8888 ? unpremultiply(pixel) : pixel;
    }

    private int kept(int color) {
        return premultiplied && config == Config.ARGB_8888 ? premultiply(color) : color;
    }

    /** ARGB to the word that is R, G, B, A in memory, and back: red and blue change places. */
    private static int swapped(int v) {
        return v & 0xFF00FF00 | v >> 16 & 255 | (v & 255) << 16;
    }

    /** c * top / 255, rounded; 255 is odd, so there is no half to decide on. */
    private static int scale(int c, int top) {
        return (c * top + 127) / 255;
    }

    /** c * 255 / a, rounded; a channel above its alpha, which no colour premultiplies to, stops at 255. */
    private static int unscale(int c, int a) {
        return Math.min(255, (c * 255 + a / 2) / a);
    }

    private static int unpremultiply(int pixel) {
        int a = pixel >>> 24;
        if (a == 255 || a == 0) {
            return a == 0 ? 0 : pixel;
        }
        return Color.argb(a, unscale(pixel >> 16 & 255, a), unscale(pixel >> 8 & 255, a), unscale(pixel & 255, a));
    }

    static int premultiply(int color) {
        int a = color >>> 24;
        if (a == 255) {
            return color;
        }
        return Color.argb(a, scale(color >> 16 & 255, a), scale(color >> 8 & 255, a), scale(color & 255, a));
    }

    /** The pixels, read before the test so that a concurrent recycle() ends in its exception and never in a null. */
    private ByteBuffer pixels(String ifRecycled) {
        ByteBuffer current = pixels;
        if (isRecycled()) {
            throw new IllegalStateException(ifRecycled);
        }
        return current;
    }

    private ByteBuffer sourcePixels() {
        ByteBuffer current = pixels;
        require(!isRecycled(), "cannot use a recycled source in createBitmap");
        return current;
    }

    /** A canvas draws these copies on Android, and takes no straight colours. */
    private void checkDrawable() {
        if (config == Config.ARGB_8888 && hasAlpha && !premultiplied) {
            throw new RuntimeException("Canvas: trying to use a non-premultiplied bitmap " + this);
        }
    }

    /** The elements that hold the first size bytes from the buffer's position on, as the bytes they are in memory. */
    private static ByteBuffer elements(Buffer buffer, int size) {
        ByteBuffer raw = ByteBuffer.allocate(Math.addExact(size, 3) & ~3);
        if (buffer instanceof ShortBuffer shorts) {
            int count = size + 1 >> 1;
            raw.order(shorts.order()).asShortBuffer().put(0, shorts, shorts.position(), count);
            raw.limit(count << 1);
        } else if (buffer instanceof IntBuffer ints) {
            raw.order(ints.order()).asIntBuffer().put(0, ints, ints.position(), raw.capacity() >> 2);
        }
        return raw;
    }

    private static int checkBuffer(Buffer buffer, int size) {
        int shift;
        if (buffer instanceof ByteBuffer) {
            shift = 0;
        } else if (buffer instanceof ShortBuffer) {
            shift = 1;
        } else if (buffer instanceof IntBuffer) {
            shift = 2;
        } else {
            throw new RuntimeException("unsupported Buffer subclass");
        }
        if ((long) buffer.remaining() << shift < size) {
            throw new RuntimeException("Buffer not large enough for pixels");
        }
        return shift;
    }

    /** Whoever asks is about to write. */
    private void checkMutable(String otherwise) {
        if (!mutable) {
            throw new IllegalStateException(otherwise);
        }
        generation = 0;
    }

    private static void checkSize(int width, int height) {
        require(width > 0 && height > 0, "width and height must be > 0");
    }

    private void checkPixel(int x, int y) {
        require(x >= 0, "x must be >= 0");
        require(y >= 0, "y must be >= 0");
        require(x < width, "x must be < bitmap.width()");
        require(y < height, "y must be < bitmap.height()");
    }

    private void checkPixels(int[] colors, int offset, int stride, int x, int y, int width, int height) {
        require(x >= 0, "x must be >= 0");
        require(y >= 0, "y must be >= 0");
        require(width >= 0, "width must be >= 0");
        require(height >= 0, "height must be >= 0");
        require((long) x + width <= this.width, "x + width must be <= bitmap.width()");
        require((long) y + height <= this.height, "y + height must be <= bitmap.height()");
        checkArray(colors, offset, stride, width, height);
    }

    /** A negative stride walks the array backwards, so both the first and the last row have to lie inside it. */
    private static void checkArray(int[] colors, int offset, int stride, int width, int height) {
        require(Math.abs((long) stride) >= width, "abs(stride) must be >= width");
        long last = offset + (height - 1L) * stride;
        if (Math.min(offset, last) < 0 || Math.max(offset, last) + width > colors.length) {
            throw new ArrayIndexOutOfBoundsException("rows at " + offset + " to " + last + " of " + colors.length + " colors");
        }
    }

    private static void require(boolean holds, String message) {
        if (!holds) {
            throw new IllegalArgumentException(message);
        }
    }
}
