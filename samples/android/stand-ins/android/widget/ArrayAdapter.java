package android.widget;

/** A stand-in by name, to compile the sample against. */
public class ArrayAdapter<T> implements SpinnerAdapter {
    public ArrayAdapter(android.content.Context context, int layout, T[] items) {}
}
