import java.awt.Image;
import java.awt.image.BufferedImage;
import java.io.File;
import java.io.IOException;
import javax.imageio.ImageIO;

/** Draws pictures side by side, on nothing, at a size that suits the head of a page. */
public class DrawStrip {
    static final int SIDE = 84, GAP = 6;

    public static void main(String[] args) throws IOException {
        if (args.length < 2) {
            System.err.println("usage: java DrawStrip.java <out> <picture> ...");
            System.exit(2);
        }
        System.setProperty("java.awt.headless", "true");
        int count = args.length - 1;
        var strip = new BufferedImage(count * (SIDE + GAP) - GAP, SIDE, BufferedImage.TYPE_INT_ARGB);
        var graphics = strip.createGraphics();
        for (int i = 0; i < count; ++i) {
            var picture = ImageIO.read(new File(args[i + 1]));
            graphics.drawImage(picture.getScaledInstance(SIDE, SIDE, Image.SCALE_AREA_AVERAGING), i * (SIDE + GAP), 0, null);
        }
        ImageIO.write(strip, "png", new File(args[0]));
    }
}
