package android.graphics;

import java.awt.Rectangle;
import java.awt.color.ColorSpace;
import java.awt.image.BufferedImage;
import java.awt.image.ColorModel;
import java.awt.image.ComponentColorModel;
import java.awt.image.DataBuffer;
import java.awt.image.IndexColorModel;
import java.awt.image.WritableRaster;
import java.io.IOException;
import java.io.OutputStream;
import java.util.Arrays;
import javax.imageio.IIOImage;
import javax.imageio.ImageIO;
import javax.imageio.ImageReader;
import javax.imageio.ImageWriteParam;
import javax.imageio.ImageWriter;
import javax.imageio.metadata.IIOMetadata;
import javax.imageio.stream.ImageInputStream;
import javax.imageio.stream.MemoryCacheImageOutputStream;
import org.w3c.dom.Element;

/** What the JDK's ImageIO reads, and writes. */
final class ImageIoPicture extends Picture {
    static {
        // Images are only converted here; no window system has to be there, or woken up.
        if (System.getProperty("java.awt.headless") == null) {
            System.setProperty("java.awt.headless", "true");
        }
    }

    private final ImageReader reader;
    /** Where the image lies in the picture: a GIF's first frame may be smaller. */
    private final Rectangle frame;
    private final ToSrgb toSrgb;

    private BufferedImage image;
    private int stepX = 1;
    private int stepY = 1;
    private int[] palette;
    private boolean samplesAreColors;
    private byte[] samples;
    private int[] frameRow;

    private ImageIoPicture(ImageReader reader, int width, int height, Rectangle frame, ToSrgb toSrgb) {
        super(reader.getOriginatingProvider().getMIMETypes()[0], width, height);
        this.reader = reader;
        this.frame = frame;
        this.toSrgb = toSrgb;
    }

    static ImageIoPicture open(ImageInputStream in) throws IOException {
        var readers = ImageIO.getImageReaders(in);
        if (!readers.hasNext()) {
            return null;
        }
        ImageReader reader = readers.next();
        try {
            ToSrgb toSrgb = reader.getFormatName().equals("png") ? PngHead.read(in) : null;
            // Without metadata, so that a damaged text beside the pixels does not cost the image.
            reader.setInput(in, true, true);
            var frame = new Rectangle(reader.getWidth(0), reader.getHeight(0));
            int width = frame.width, height = frame.height;
            if (reader.getFormatName().equals("gif")) {
                var screen = element(reader.getStreamMetadata(), "LogicalScreenDescriptor");
                var place = element(reader.getImageMetadata(0), "ImageDescriptor");
                frame.setLocation(number(place, "imageLeftPosition"), number(place, "imageTopPosition"));
                width = Math.max(number(screen, "logicalScreenWidth"), frame.x + frame.width);
                height = Math.max(number(screen, "logicalScreenHeight"), frame.y + frame.height);
            }
            return new ImageIoPicture(reader, width, height, frame, toSrgb);
        } catch (IOException | RuntimeException e) {
            reader.dispose();
            throw e;
        }
    }

    @Override
    public void close() {
        reader.dispose();
    }

    private boolean fills() {
        return frame.width == width && frame.height == height;
    }

    @Override
    boolean hasAlpha() throws IOException {
        ColorModel model = image == null ? reader.getImageTypes(0).next().getColorModel() : image.getColorModel();
        return !fills() || model.hasAlpha();
    }

    @Override
    void read(int stepX, int stepY) throws IOException {
        var param = reader.getDefaultReadParam();
        if (fills() && (stepX > 1 || stepY > 1)) {
            param.setSourceSubsampling(stepX, stepY, stepX / 2, stepY / 2);
        } else {
            this.stepX = stepX;
            this.stepY = stepY;
        }
        image = reader.read(0, param);
        if (reader.getFormatName().equals("png") && image.getRaster().getNumBands() == 2) {
            clearTransparentGrey();
        }
        samplesAreColors = samplesAreColors(image.getColorModel());
        if (image.getColorModel() instanceof IndexColorModel model) {
            palette = new int[1 << model.getPixelSize()];
            model.getRGBs(palette);
        }
    }

    /** The JDK widens grey of less than 8 bits, but then looks for the transparent grey as it was before. */
    private void clearTransparentGrey() throws IOException {
        var png = (Element) reader.getImageMetadata(0).getAsTree("javax_imageio_png_1.0");
        int depth = number((Element) png.getElementsByTagName("IHDR").item(0), "bitDepth");
        var transparent = (Element) png.getElementsByTagName("tRNS_Grayscale").item(0);
        if (depth >= 8 || transparent == null) {
            return;
        }
        WritableRaster raster = image.getRaster();
        int grey = number(transparent, "gray") * 255 / ((1 << depth) - 1);
        for (int y = 0; y < raster.getHeight(); ++y) {
            for (int x = 0; x < raster.getWidth(); ++x) {
                raster.setSample(x, y, 1, raster.getSample(x, y, 0) == grey ? 0 : 255);
            }
        }
    }

    private static Element element(IIOMetadata data, String name) {
        var tree = (Element) data.getAsTree(data.getNativeMetadataFormatName());
        return (Element) tree.getElementsByTagName(name).item(0);
    }

    private static int number(Element element, String attribute) {
        return Integer.parseInt(element.getAttribute(attribute));
    }

    @Override
    void row(int y, int[] argb) {
        if (fills() && stepX == 1 && stepY == 1) {
            imageRow(y, argb);
        } else {
            partOfFrame(y * stepY + stepY / 2 - frame.y, argb);
        }
        if (toSrgb != null) {
            toSrgb.convert(argb);
        }
    }

    private void partOfFrame(int y, int[] argb) {
        Arrays.fill(argb, 0);
        if (y < 0 || y >= frame.height) {
            return;
        }
        frameRow = frameRow == null ? new int[frame.width] : frameRow;
        imageRow(y, frameRow);
        for (int i = 0; i < argb.length; ++i) {
            int x = i * stepX + stepX / 2 - frame.x;
            if (x >= 0 && x < frame.width) {
                argb[i] = frameRow[x];
            }
        }
    }

    private void imageRow(int y, int[] row) {
        if (palette != null) {
            image.getRaster().getPixels(0, y, row.length, 1, row);
            for (int x = 0; x < row.length; ++x) {
                row[x] = palette[row[x]];
            }
        } else if (!samplesAreColors) {
            image.getRGB(0, y, row.length, 1, row, 0, row.length);
        } else if (image.getRaster().getTransferType() == DataBuffer.TYPE_BYTE) {
            samples = (byte[]) image.getRaster().getDataElements(0, y, row.length, 1, samples);
            bytesRow(image.getRaster().getNumBands(), samples, row);
        } else {
            shortsRow(image.getRaster().getNumBands(), image.getRaster().getPixels(0, y, row.length, 1, (int[]) null), row);
        }
    }

    /** Grey or RGB, and then alpha if the bands are even. */
    private static void bytesRow(int bands, byte[] samples, int[] row) {
        int green = bands < 3 ? 0 : 1, blue = bands < 3 ? 0 : 2;
        boolean alpha = bands % 2 == 0;
        for (int x = 0, at = 0; x < row.length; ++x, at += bands) {
            int a = alpha ? samples[at + bands - 1] & 255 : 255;
            row[x] = Color.argb(a, samples[at] & 255, samples[at + green] & 255, samples[at + blue] & 255);
        }
    }

    private static void shortsRow(int bands, int[] samples, int[] row) {
        int green = bands < 3 ? 0 : 1, blue = bands < 3 ? 0 : 2;
        boolean alpha = bands % 2 == 0;
        for (int x = 0, at = 0; x < row.length; ++x, at += bands) {
            int a = alpha ? to8(samples[at + bands - 1]) : 255;
            row[x] = Color.argb(a, to8(samples[at]), to8(samples[at + green]), to8(samples[at + blue]));
        }
    }

    private static int to8(int sample) {
        return (sample * 255 + 32767) / 65535;
    }

    /** Where the samples can be taken as they are: getRGB would take grey for linear light and brighten it. */
    private static boolean samplesAreColors(ColorModel model) {
        int type = model.getTransferType();
        int bits = type == DataBuffer.TYPE_BYTE ? 8 : 16;
        for (int size : model.getComponentSize()) {
            if (size != bits) {
                return false;
            }
        }
        return model instanceof ComponentColorModel
                && !model.isAlphaPremultiplied()
                && (type == DataBuffer.TYPE_BYTE || type == DataBuffer.TYPE_USHORT)
                && (model.getColorSpace().getType() == ColorSpace.TYPE_GRAY || model.getColorSpace().isCS_sRGB());
    }

    static boolean png(Bitmap bitmap, OutputStream stream) throws IOException {
        int type = bitmap.getConfig() == Bitmap.Config.RGB_565 ? BufferedImage.TYPE_INT_RGB : BufferedImage.TYPE_INT_ARGB;
        try (var cached = new MemoryCacheImageOutputStream(stream)) {
            return ImageIO.write(image(bitmap, type), "png", cached);
        }
    }

    static boolean jpeg(Bitmap bitmap, int quality, OutputStream stream) throws IOException {
        ImageWriter writer = ImageIO.getImageWritersByFormatName("jpeg").next();
        ImageWriteParam param = writer.getDefaultWriteParam();
        param.setCompressionMode(ImageWriteParam.MODE_EXPLICIT);
        param.setCompressionQuality(quality / 100f);
        try (var cached = new MemoryCacheImageOutputStream(stream)) {
            writer.setOutput(cached);
            writer.write(null, new IIOImage(image(bitmap, BufferedImage.TYPE_INT_RGB), null, null), param);
            return true;
        } finally {
            writer.dispose();
        }
    }

    /** Without alpha the colours lie over black, which is what premultiplied channels are. */
    private static BufferedImage image(Bitmap bitmap, int type) {
        int width = bitmap.getWidth();
        var image = new BufferedImage(width, bitmap.getHeight(), type);
        int[] row = new int[width];
        for (int y = 0; y < bitmap.getHeight(); ++y) {
            bitmap.getPixels(row, 0, width, 0, y, width, 1);
            for (int x = 0; type == BufferedImage.TYPE_INT_RGB && x < width; ++x) {
                row[x] = Bitmap.premultiply(row[x]);
            }
            image.getRaster().setDataElements(0, y, width, 1, row);
        }
        return image;
    }
}
