package android.graphics;

import java.io.IOException;
import java.io.OutputStream;
import java.lang.invoke.MethodHandles;
import java.lang.invoke.VarHandle;
import java.nio.Buffer;
import java.nio.ByteBuffer;
import java.nio.ByteOrder;
import java.nio.IntBuffer;
import java.nio.ShortBuffer;
import java.util.Objects;

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
        ALPHA_8(1, 8) {
            @Override
            int get(ByteBuffer pixels, int at) {
                return pixels.get(at) << 24;
            }

            @Override
            void put(ByteBuffer pixels, int at, int color) {
                pixels.put(at, (byte) (color >>> 24));
            }
        },
        RGB_565(2, 4) {
            @Override
            int get(ByteBuffer pixels, int at) {
                int v = pixels.getShort(at);
                int r = v >> 11 & 31, g = v >> 5 & 63, b = v & 31;
                return argb(255, r << 3 | r >> 2, g << 2 | g >> 4, b << 3 | b >> 2);
            }

            @Override
            void put(ByteBuffer pixels, int at, int color) {
                int r = scale(color >> 16 & 255, 31), g = scale(color >> 8 & 255, 63), b = scale(color & 255, 31);
                pixels.putShort(at, (short) (r << 11 | g << 5 | b));
            }
        },
        ARGB_8888(4, 1) {
            @Override
            int get(ByteBuffer pixels, int at) {
                int v = pixels.getInt(at);
                int a = v >>> 24;
                return argb(a, unscale(v & 255, a), unscale(v >> 8 & 255, a), unscale(v >> 16 & 255, a));
            }

            @Override
            void put(ByteBuffer pixels, int at, int color) {
                pixels.putInt(at, Integer.rotateRight(Integer.reverseBytes(premultiply(color)), 8));
            }
        };

        final int bytesPerPixel;
        final int ndkFormat;

        Config(int bytesPerPixel, int ndkFormat) {
            this.bytesPerPixel = bytesPerPixel;
            this.ndkFormat = ndkFormat;
        }

        abstract int get(ByteBuffer pixels, int at);

        abstract void put(ByteBuffer pixels, int at, int color);
    }

    /** What {@link #compress} is asked for; only PNG can be written here. */
    public enum CompressFormat { JPEG, PNG, WEBP }

    /** The word in {@link #locks}: the number of locks held by native code, the sign bit set once recycled. */
    private static final VarHandle LOCKS = MethodHandles.byteBufferViewVarHandle(int[].class, ByteOrder.nativeOrder());
    private static final int RECYCLED = Integer.MIN_VALUE;

    /** Whether this class lasts as long as the JVM, so that libjnigraphics, which knows the field by name, may hold it. */
    private static final boolean LASTS = Bitmap.class.getClassLoader() == ClassLoader.getSystemClassLoader();

    // libjnigraphics knows these fields by name. It counts locks in a direct buffer, where native code and Java can both update
    // one word atomically, clears the pixels at the last unlock of a bitmap that was recycled while locked, and keeps the
    // addresses of both buffers once it has asked for them.
    private final int width;
    private final int height;
    private final int rowBytes;
    private final int format;
    private final ByteBuffer locks = ByteBuffer.allocateDirect(Integer.BYTES);
    private ByteBuffer pixels;
    private long lockAddress;
    private long pixelAddress;

    private final Config config;
    private boolean mutable = true;

    private Bitmap(int width, int height, Config config) {
        checkSize(width, height);
        long rowBytes = (long) width * config.bytesPerPixel;
        if (rowBytes > Integer.MAX_VALUE / height) {
            throw new IllegalArgumentException(
                    "a bitmap of " + width + " x " + height + " in " + config + " exceeds " + Integer.MAX_VALUE + " bytes");
        }
        this.width = width;
        this.height = height;
        this.config = config;
        this.rowBytes = (int) rowBytes;
        format = config.ndkFormat;
        pixels = ByteBuffer.allocateDirect(this.rowBytes * height).order(ByteOrder.LITTLE_ENDIAN);
    }

    public static Bitmap createBitmap(int width, int height, Config config) {
        return new Bitmap(width, height, config);
    }

    /** The result is immutable, as on Android. */
    public static Bitmap createBitmap(int[] colors, int width, int height, Config config) {
        checkSize(width, height);
        checkArray(colors, 0, width, width, height);
        var bitmap = new Bitmap(width, height, config);
        bitmap.setPixels(colors, 0, width, 0, 0, width, height);
        return bitmap.freeze();
    }

    public Bitmap copy(Config config, boolean isMutable) {
        ByteBuffer from = pixels("Can't copy a recycled bitmap");
        var copy = new Bitmap(width, height, config);
        if (config == this.config) {
            copy.pixels.put(0, from, 0, from.capacity());
        } else {
            for (int y = 0; y < height; ++y) {
                for (int x = 0; x < width; ++x) {
                    int color = this.config.get(from, at(x, y));
                    config.put(copy.pixels, copy.at(x, y), config == Config.RGB_565 ? premultiply(color) : color);
                }
            }
        }
        return isMutable ? copy : copy.freeze();
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

    public Config getConfig() {
        return config;
    }

    public boolean isMutable() {
        return mutable;
    }

    public boolean isPremultiplied() {
        return config != Config.RGB_565;
    }

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
        return config.get(from, at(x, y));
    }

    public void setPixel(int x, int y, int color) {
        ByteBuffer to = pixels("Can't call setPixel() on a recycled bitmap");
        checkMutable("Can't call setPixel() on an immutable bitmap");
        checkPixel(x, y);
        config.put(to, at(x, y), color);
    }

    public void getPixels(int[] colors, int offset, int stride, int x, int y, int width, int height) {
        ByteBuffer from = pixels("Can't call getPixels() on a recycled bitmap");
        if (width == 0 || height == 0) {
            return;
        }
        checkPixels(colors, offset, stride, x, y, width, height);
        for (int row = 0; row < height; ++row) {
            for (int column = 0; column < width; ++column) {
                colors[offset + row * stride + column] = config.get(from, at(x + column, y + row));
            }
        }
    }

    public void setPixels(int[] colors, int offset, int stride, int x, int y, int width, int height) {
        ByteBuffer to = pixels("Can't call setPixels() on a recycled bitmap");
        checkMutable("Can't call setPixels() on an immutable bitmap");
        if (width == 0 || height == 0) {
            return;
        }
        checkPixels(colors, offset, stride, x, y, width, height);
        for (int row = 0; row < height; ++row) {
            for (int column = 0; column < width; ++column) {
                config.put(to, at(x + column, y + row), colors[offset + row * stride + column]);
            }
        }
    }

    public void eraseColor(int color) {
        ByteBuffer to = pixels("Can't erase a recycled bitmap");
        checkMutable("cannot erase immutable bitmaps");
        int flat = config == Config.RGB_565 ? premultiply(color) : color;
        for (int at = 0; at < to.capacity(); at += config.bytesPerPixel) {
            config.put(to, at, flat);
        }
    }

    /** Copies the stored bytes, whatever the byte order of the buffer, and moves its position by the whole elements written. */
    public void copyPixelsToBuffer(Buffer dst) {
        ByteBuffer from = pixels("Can't call copyPixelsToBuffer() on a recycled bitmap");
        int size = from.capacity();
        int shift = checkBuffer(dst, size);
        if (dst instanceof ByteBuffer bytes) {
            bytes.put(from.duplicate());
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

    public void copyPixelsFromBuffer(Buffer src) {
        ByteBuffer to = pixels("copyPixelsFromBuffer called on recycled bitmap");
        checkMutable("copyPixelsFromBuffer called on an immutable bitmap");
        int size = to.capacity();
        int shift = checkBuffer(src, size);
        if (src instanceof ByteBuffer bytes) {
            to.put(0, bytes, bytes.position(), size);
        } else {
            to.put(0, elements(src, size), 0, size);
        }
        src.position(src.position() + (size >> shift));
    }

    public boolean sameAs(Bitmap other) {
        ByteBuffer mine = pixels("Can't call sameAs on a recycled bitmap!");
        if (other == null) {
            return false;
        }
        ByteBuffer theirs = other.pixels;
        if (other.isRecycled()) {
            throw new IllegalArgumentException("Can't compare to a recycled bitmap!");
        }
        return width == other.width && height == other.height && config == other.config && mine.equals(theirs);
    }

    /** False, with nothing written, for a format other than PNG and for ALPHA_8; false also when the stream fails. */
    public boolean compress(CompressFormat format, int quality, OutputStream stream) {
        pixels("Can't compress a recycled bitmap");
        Objects.requireNonNull(format);
        Objects.requireNonNull(stream);
        if (quality < 0 || quality > 100) {
            throw new IllegalArgumentException("quality must be 0..100");
        }
        if (format != CompressFormat.PNG || config == Config.ALPHA_8) {
            return false;
        }
        try {
            return BitmapFactory.encodePng(this, stream);
        } catch (IOException e) {
            return false;
        }
    }

    Bitmap freeze() {
        mutable = false;
        return this;
    }

    private int at(int x, int y) {
        return y * rowBytes + x * config.bytesPerPixel;
    }

    private static int argb(int a, int r, int g, int b) {
        return a << 24 | r << 16 | g << 8 | b;
    }

    /** c * top / 255, rounded; 255 is odd, so there is no half to decide on. */
    private static int scale(int c, int top) {
        return (c * top + 127) / 255;
    }

    /** c * 255 / a, rounded; a channel above its alpha, which no colour premultiplies to, stops at 255. */
    private static int unscale(int c, int a) {
        return a == 0 ? 0 : a == 255 ? c : Math.min(255, (c * 255 + a / 2) / a);
    }

    private static int premultiply(int color) {
        int a = color >>> 24;
        return a == 255 ? color : argb(a, scale(color >> 16 & 255, a), scale(color >> 8 & 255, a), scale(color & 255, a));
    }

    /** The pixels, read before the test so that a concurrent recycle() ends in its exception and never in a null. */
    private ByteBuffer pixels(String ifRecycled) {
        ByteBuffer current = pixels;
        if (isRecycled()) {
            throw new IllegalStateException(ifRecycled);
        }
        return current;
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

    private void checkMutable(String otherwise) {
        if (!mutable) {
            throw new IllegalStateException(otherwise);
        }
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
