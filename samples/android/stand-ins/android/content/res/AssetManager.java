package android.content.res;

/** A stand-in by name, to compile the sample against. */
public final class AssetManager {
    public java.io.InputStream open(String name) throws java.io.IOException {
        return null;
    }
}
