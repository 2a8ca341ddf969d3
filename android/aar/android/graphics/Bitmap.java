package android.graphics;

/** The platform's class by name, to compile against; never shipped. */
public final class Bitmap {
    private Bitmap() {}
}
