package android.content;

/** A stand-in by name, to compile the sample against. */
public class Context {
    public android.content.res.AssetManager getAssets() {
        return null;
    }
}
