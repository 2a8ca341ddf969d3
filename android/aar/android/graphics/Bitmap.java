package android.graphics;

/** The platform's class by name, to compile against; never shipped. */
public final class Bitmap {
    public enum Config { ARGB_8888 }

    private Bitmap() {}

    public native int getWidth();
    public native int getHeight();
    public native Config getConfig();
    public native boolean isMutable();
    public native boolean isRecycled();
}
