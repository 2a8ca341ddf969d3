package android.widget;

/** A stand-in by name, to compile the sample against. */
public class LinearLayout extends android.view.View {
    public static final int VERTICAL = 1;

    public LinearLayout(android.content.Context context) {}

    public void setOrientation(int orientation) {}

    public void addView(android.view.View child) {}
}
