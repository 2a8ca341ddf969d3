package android.widget;

/** A stand-in by name, to compile the sample against. */
public class Spinner extends AdapterView<SpinnerAdapter> {
    public Spinner(android.content.Context context) {}

    public void setAdapter(SpinnerAdapter adapter) {}
}
