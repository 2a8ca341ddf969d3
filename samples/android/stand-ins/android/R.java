package android;

/** A stand-in by name, to compile the sample against. */
public final class R {
    public static final class layout {
        public static final int simple_spinner_item = 0;
    }
}
