package android.graphics;

import java.awt.color.ColorSpace;
import java.awt.image.BufferedImage;
import java.awt.image.ColorModel;
import java.awt.image.ComponentColorModel;
import java.awt.image.DataBuffer;
import java.awt.image.WritableRaster;
import java.io.FileInputStream;
import java.io.IOException;
import java.io.InputStream;
import java.io.OutputStream;
import javax.imageio.ImageIO;
import javax.imageio.ImageReader;
import javax.imageio.stream.MemoryCacheImageInputStream;
import javax.imageio.stream.MemoryCacheImageOutputStream;
import org.w3c.dom.Element;

/** Android's image decoding on the JDK's ImageIO. What is no image, or is cut short, decodes to null. */
public class BitmapFactory {
    public static class Options {
        /** RGB_565 is honoured for an image without alpha; everything else becomes ARGB_8888. */
        public Bitmap.Config inPreferredConfig = Bitmap.Config.ARGB_8888;
        public boolean inMutable;
    }

    static {
        // Images are only converted here; no window system has to be there, or woken up.
        if (System.getProperty("java.awt.headless") == null) {
            System.setProperty("java.awt.headless", "true");
        }
    }

    public static Bitmap decodeFile(String pathName) {
        return decodeFile(pathName, null);
    }

    public static Bitmap decodeFile(String pathName, Options opts) {
        if (pathName == null) {
            return null;
        }
        try (var file = new FileInputStream(pathName)) {
            return decode(file, opts);
        } catch (IOException e) {
            return null;
        }
    }

    public static Bitmap decodeStream(InputStream is) {
        return is == null ? null : decode(is, null);
    }

    private static Bitmap decode(InputStream in, Options opts) {
        try {
            BufferedImage image = read(in);
            return image == null ? null : convert(image, opts == null ? new Options() : opts);
        } catch (IOException | RuntimeException e) {
            return null; // unchecked: an image too large for a Bitmap, or damage that a reader did not foresee
        }
    }

    private static Bitmap convert(BufferedImage image, Options opts) {
        boolean small = opts.inPreferredConfig == Bitmap.Config.RGB_565 && !image.getColorModel().hasAlpha();
        int width = image.getWidth(), height = image.getHeight();
        var bitmap = Bitmap.createBitmap(width, height, small ? Bitmap.Config.RGB_565 : Bitmap.Config.ARGB_8888);
        int[] row = new int[width];
        for (int y = 0; y < height; ++y) {
            readRow(image, y, row);
            bitmap.setPixels(row, 0, width, 0, y, width, 1);
        }
        return opts.inMutable ? bitmap : bitmap.freeze();
    }

    private static BufferedImage read(InputStream in) throws IOException {
        // A memory cache, where ImageIO by itself puts every stream into a temporary file.
        var cached = new MemoryCacheImageInputStream(in);
        var readers = ImageIO.getImageReaders(cached);
        if (!readers.hasNext()) {
            return null;
        }
        ImageReader reader = readers.next();
        try {
            // Without metadata, so that a damaged text or profile beside the pixels does not cost the image.
            reader.setInput(cached, true, true);
            BufferedImage image = reader.read(0);
            if (reader.getFormatName().equals("png") && image.getRaster().getNumBands() == 2) {
                var png = (Element) reader.getImageMetadata(0).getAsTree("javax_imageio_png_1.0");
                clearTransparentGrey(image.getRaster(), png);
            }
            return image;
        } finally {
            reader.dispose();
        }
    }

    /** The JDK widens grey of less than 8 bits, but then looks for the transparent grey as it was before. */
    private static void clearTransparentGrey(WritableRaster raster, Element png) {
        int depth = Integer.parseInt(((Element) png.getElementsByTagName("IHDR").item(0)).getAttribute("bitDepth"));
        var transparent = (Element) png.getElementsByTagName("tRNS_Grayscale").item(0);
        if (depth >= 8 || transparent == null) {
            return;
        }
        int grey = Integer.parseInt(transparent.getAttribute("gray")) * 255 / ((1 << depth) - 1);
        for (int y = 0; y < raster.getHeight(); ++y) {
            for (int x = 0; x < raster.getWidth(); ++x) {
                raster.setSample(x, y, 1, raster.getSample(x, y, 0) == grey ? 0 : 255);
            }
        }
    }

    /** One row in straight ARGB. */
    private static void readRow(BufferedImage image, int y, int[] row) {
        if (!samplesAreColors(image.getColorModel())) {
            image.getRGB(0, y, row.length, 1, row, 0, row.length);
            return;
        }
        var raster = image.getRaster();
        int bands = raster.getNumBands();
        int[] samples = raster.getPixels(0, y, row.length, 1, (int[]) null);
        int top = (1 << image.getColorModel().getComponentSize(0)) - 1;
        for (int x = 0, at = 0; x < row.length; ++x, at += bands) {
            int r = to8(samples[at], top);
            int g = bands < 3 ? r : to8(samples[at + 1], top);
            int b = bands < 3 ? r : to8(samples[at + 2], top);
            int a = bands % 2 == 1 ? 255 : to8(samples[at + bands - 1], top);
            row[x] = a << 24 | r << 16 | g << 8 | b;
        }
    }

    private static int to8(int sample, int top) {
        return (sample * 255 + top / 2) / top;
    }

    /** Where the samples can be taken as they are: getRGB would take grey for linear light and brighten it. */
    private static boolean samplesAreColors(ColorModel model) {
        return model instanceof ComponentColorModel
                && !model.isAlphaPremultiplied()
                && (model.getTransferType() == DataBuffer.TYPE_BYTE || model.getTransferType() == DataBuffer.TYPE_USHORT)
                && (model.getColorSpace().getType() == ColorSpace.TYPE_GRAY || model.getColorSpace().isCS_sRGB());
    }

    /** Here and not in Bitmap, so that only coding and decoding load AWT. */
    static boolean encodePng(Bitmap bitmap, OutputStream stream) throws IOException {
        int width = bitmap.getWidth();
        int type = bitmap.getConfig() == Bitmap.Config.RGB_565 ? BufferedImage.TYPE_INT_RGB : BufferedImage.TYPE_INT_ARGB;
        var image = new BufferedImage(width, bitmap.getHeight(), type);
        int[] row = new int[width];
        for (int y = 0; y < bitmap.getHeight(); ++y) {
            bitmap.getPixels(row, 0, width, 0, y, width, 1);
            image.getRaster().setDataElements(0, y, width, 1, row);
        }
        try (var cached = new MemoryCacheImageOutputStream(stream)) {
            return ImageIO.write(image, "png", cached);
        }
    }
}
