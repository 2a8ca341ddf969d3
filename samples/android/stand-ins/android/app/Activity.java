package android.app;

/** A stand-in by name, to compile the sample against. */
public class Activity extends android.content.Context {
    protected void onCreate(android.os.Bundle state) {}

    public void setContentView(android.view.View view) {}
}
