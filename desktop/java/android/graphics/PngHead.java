package android.graphics;

import java.io.ByteArrayInputStream;
import java.io.EOFException;
import java.io.IOException;
import java.util.zip.CRC32;
import java.util.zip.InflaterInputStream;
import javax.imageio.IIOException;
import javax.imageio.stream.ImageInputStream;

/** What ImageIO's PNG reader passes over: the header's checksum, and the colour profile. */
final class PngHead {
    private static final int SIGNATURE = 8, PLTE = 0x504C5445, IDAT = 0x49444154, ICCP = 0x69434350;
    private static final int MOST = 1 << 24; // bytes of a profile

    private PngHead() {}

    /** The way from the image's colours to sRGB, null if there is none to go; the stream stays where it is. */
    static ToSrgb read(ImageInputStream in) throws IOException {
        in.mark();
        in.skipBytes(SIGNATURE);
        try {
            byte[] header = chunk(in, in.readInt(), in.readInt());
            if (header == null) {
                throw new IIOException("the header's checksum is another");
            }
            boolean grey = (header[9] & 2) == 0;
            while (true) {
                int length = in.readInt(), type = in.readInt();
                if (length < 0 || type == PLTE || type == IDAT) {
                    return null;
                }
                if (type == ICCP) {
                    byte[] profile = length > MOST ? null : chunk(in, length, type);
                    return profile == null ? null : ToSrgb.from(inflated(profile), grey);
                }
                in.seek(in.getStreamPosition() + length + Integer.BYTES);
            }
        } catch (EOFException e) {
            return null; // the reader will meet it
        } finally {
            in.reset();
        }
    }

    /** Null if the checksum is another. */
    private static byte[] chunk(ImageInputStream in, int length, int type) throws IOException {
        if (length < 0 || length > MOST) {
            return null;
        }
        byte[] data = new byte[length];
        in.readFully(data);
        var sum = new CRC32();
        for (int shift = 24; shift >= 0; shift -= 8) {
            sum.update(type >> shift);
        }
        sum.update(data);
        return in.readInt() == (int) sum.getValue() ? data : null;
    }

    /** After a name, which a zero ends, and the method of compression. */
    private static byte[] inflated(byte[] data) {
        int begin = 0;
        while (begin < data.length && data[begin] != 0) {
            ++begin;
        }
        int rest = Math.max(0, data.length - begin - 2);
        try (var zip = new InflaterInputStream(new ByteArrayInputStream(data, data.length - rest, rest))) {
            return zip.readNBytes(MOST);
        } catch (IOException e) {
            return new byte[0];
        }
    }
}
