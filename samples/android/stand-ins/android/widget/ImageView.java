package android.widget;

/** A stand-in by name, to compile the sample against. */
public class ImageView extends android.view.View {
    public ImageView(android.content.Context context) {}

    public void setImageBitmap(android.graphics.Bitmap bitmap) {}
}
