package android.widget;

/** A stand-in by name, to compile the sample against. */
public class AdapterView<T> extends android.view.View {
    public interface OnItemSelectedListener {
        void onItemSelected(AdapterView<?> parent, android.view.View view, int position, long id);

        void onNothingSelected(AdapterView<?> parent);
    }

    public void setOnItemSelectedListener(OnItemSelectedListener listener) {}

    public Object getItemAtPosition(int position) {
        return null;
    }
}
