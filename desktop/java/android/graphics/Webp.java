package android.graphics;

import com.velmora.display.fennic.desktop.Libraries;
import java.io.ByteArrayOutputStream;
import java.io.IOException;
import java.nio.ByteBuffer;
import java.nio.ByteOrder;
import javax.imageio.IIOException;
import javax.imageio.stream.ImageInputStream;

/** Still WebP, by a libwebp that is looked for when the first one comes. */
final class Webp extends Picture {
    private static final int RIFF = 0x52494646, WEBP = 0x57454250;
    private static final int EXTENDED = 0x56503858, LOSSLESS = 0x5650384C, ICCP = 0x49434350;
    private static final int FLAGS = 20, ANIMATED = 2, ALPHA = 16; // of the extended form
    private static final int LOSSLESS_ALPHA = 24, FIRST_CHUNK = 30;

    /** Why nothing can be decoded; null where it can. */
    private static final String MISSING = load();

    private final ByteBuffer data;
    private final boolean alpha;
    private final ToSrgb toSrgb;
    private ByteBuffer pixels;
    private int stepX;
    private int stepY;

    private Webp(ByteBuffer data, long size, boolean alpha, ToSrgb toSrgb) {
        super("image/webp", (int) (size >> 32), (int) size);
        this.data = data;
        this.alpha = alpha;
        this.toSrgb = toSrgb;
    }

    private static String load() {
        try {
            Libraries.load("fennic-webp");
            return null;
        } catch (UnsatisfiedLinkError e) {
            boolean isOnlyLibwebp = e.getMessage().contains("libwebp.so.7");
            return isOnlyLibwebp ? "WebP needs libwebp.so.7: apt-get install libwebp7" : "WebP cannot be read: " + e.getMessage();
        }
    }

    /** The stream stays where it is. */
    static boolean begins(ImageInputStream in) throws IOException {
        byte[] head = new byte[12];
        in.mark();
        boolean whole = in.read(head) == head.length;
        in.reset();
        ByteBuffer words = ByteBuffer.wrap(head);
        return whole && words.getInt(0) == RIFF && words.getInt(8) == WEBP;
    }

    static Picture open(ImageInputStream in) throws IOException {
        ByteBuffer data = all(in);
        int form = data.getInt(12);
        int flags = form == EXTENDED ? data.get(FLAGS) : 0;
        if ((flags & ANIMATED) != 0) {
            return BitmapFactory.refuse("an animated WebP is not decoded; export one frame of it");
        }
        if (MISSING != null) {
            return BitmapFactory.refuse(MISSING);
        }
        long size = size(data);
        if (size == 0) {
            return null;
        }
        boolean alpha = form == EXTENDED ? (flags & ALPHA) != 0 : form == LOSSLESS && (data.get(LOSSLESS_ALPHA) & ALPHA) != 0;
        return new Webp(data, size, alpha, form == EXTENDED ? toSrgb(data) : null);
    }

    /** The file, as long as it says it is or as there is of it. */
    private static ByteBuffer all(ImageInputStream in) throws IOException {
        var bytes = new ByteArrayOutputStream();
        byte[] part = new byte[1 << 13];
        long left = part.length;
        for (int count; (count = in.read(part, 0, (int) Math.min(left, part.length))) > 0; left -= count) {
            if (bytes.size() == 0) {
                left = 8 + (Integer.toUnsignedLong(ByteBuffer.wrap(part).order(ByteOrder.LITTLE_ENDIAN).getInt(4)) + 1 & ~1L);
                count = (int) Math.min(left, count);
            }
            bytes.write(part, 0, count);
        }
        return ByteBuffer.allocateDirect(bytes.size()).put(bytes.toByteArray()).rewind();
    }

    /** A profile is the first chunk after the extended head. */
    private static ToSrgb toSrgb(ByteBuffer data) {
        if (data.capacity() < FIRST_CHUNK + 8 || data.getInt(FIRST_CHUNK) != ICCP) {
            return null;
        }
        int length = Integer.reverseBytes(data.getInt(FIRST_CHUNK + 4));
        if (length < 0 || length > data.capacity() - FIRST_CHUNK - 8) {
            return null;
        }
        byte[] profile = new byte[length];
        data.get(FIRST_CHUNK + 8, profile);
        return ToSrgb.from(profile, false);
    }

    @Override
    boolean hasAlpha() {
        return alpha;
    }

    @Override
    void read(int stepX, int stepY) throws IOException {
        this.stepX = stepX;
        this.stepY = stepY;
        pixels = ByteBuffer.allocateDirect(Math.multiplyExact(Math.multiplyExact(width, height), Integer.BYTES));
        if (!decode(data, pixels, width * Integer.BYTES)) {
            throw new IIOException("a damaged WebP");
        }
    }

    @Override
    void row(int y, int[] argb) {
        int first = (y * stepY + stepY / 2) * width + stepX / 2;
        for (int x = 0; x < argb.length; ++x) {
            argb[x] = Integer.rotateRight(pixels.getInt(Integer.BYTES * (first + x * stepX)), 8);
        }
        if (toSrgb != null) {
            toSrgb.convert(argb);
        }
    }

    /** The width in the upper half, the height in the lower; 0 for what is no WebP. */
    private static native long size(ByteBuffer data);

    /** Rows of R, G, B, A with straight colours. */
    private static native boolean decode(ByteBuffer data, ByteBuffer pixels, int rowBytes);
}
