package android.graphics;

/** A stand-in by name, to compile the sample against. */
public final class Bitmap {
    public enum Config { ARGB_8888 }

    public Bitmap copy(Config config, boolean mutable) {
        return null;
    }
}
