package android.graphics;

/** A stand-in by name, to compile the sample against. */
public class BitmapFactory {
    public static Bitmap decodeStream(java.io.InputStream in) {
        return null;
    }
}
