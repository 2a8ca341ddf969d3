package android.graphics;

import java.io.IOException;
import javax.imageio.stream.ImageInputStream;

/** An image on its way to a bitmap: what its head says, and then its rows. */
abstract class Picture implements AutoCloseable {
    final String mimeType;
    final int width;
    final int height;

    Picture(String mimeType, int width, int height) {
        this.mimeType = mimeType;
        this.width = width;
        this.height = height;
    }

    /** Null where nothing reads such an image. */
    static Picture open(ImageInputStream in) throws IOException {
        return Webp.begins(in) ? Webp.open(in) : ImageIoPicture.open(in);
    }

    abstract boolean hasAlpha() throws IOException;

    /** Has to come before the rows. Of each stepX by stepY pixels, the one at half of both is kept. */
    abstract void read(int stepX, int stepY) throws IOException;

    /** Straight ARGB. */
    abstract void row(int y, int[] argb);

    @Override
    public void close() {}
}
