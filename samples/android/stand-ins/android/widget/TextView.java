package android.widget;

/** A stand-in by name, to compile the sample against. */
public class TextView extends android.view.View {
    public TextView(android.content.Context context) {}

    public void setText(CharSequence text) {}
}
