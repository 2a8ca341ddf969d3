package com.velmora.display.fennic.sample;

import android.app.Activity;
import android.graphics.Bitmap;
import android.graphics.BitmapFactory;
import android.os.Bundle;
import android.view.View;
import android.widget.AdapterView;
import android.widget.ArrayAdapter;
import android.widget.ImageView;
import android.widget.LinearLayout;
import android.widget.Spinner;
import android.widget.TextView;
import com.velmora.display.fennic.VelUIBitmapUtils;
import java.io.IOException;
import java.io.InputStream;
import java.util.LinkedHashMap;
import java.util.Map;

/** An icon before and after an operation that one picks from a list. */
public final class MainActivity extends Activity implements AdapterView.OnItemSelectedListener {
    /** What changes the icon, with a texture of at least its size; 0 is success. */
    private interface Operation {
        int change(Bitmap icon, Bitmap texture);
    }

    private static final Map<String, Operation> OPERATIONS = new LinkedHashMap<>();
    static {
        OPERATIONS.put("Multiply", VelUIBitmapUtils::nativeBitmapHandle4);
        OPERATIONS.put("Screen", VelUIBitmapUtils::nativeBitmapHandle9);
        OPERATIONS.put("Soft light", VelUIBitmapUtils::nativeBitmapHandle14);
        OPERATIONS.put("Invert", (icon, texture) -> VelUIBitmapUtils.nativeToBitReverse(icon));
        OPERATIONS.put("Sepia", (icon, texture) -> VelUIBitmapUtils.nativeImageFilter3(icon, 0.6f));
        OPERATIONS.put("Saturation", (icon, texture) -> VelUIBitmapUtils.nativeImageFilter5(icon, 1.5f));
        OPERATIONS.put("Kuwahara", (icon, texture) -> VelUIBitmapUtils.nativeImageFilter4(icon, 3));
    }

    private Bitmap icon, texture;
    private ImageView after;
    private TextView note;

    @Override
    protected void onCreate(Bundle state) {
        super.onCreate(state);
        icon = picture("icon-map.png");
        texture = picture("layer-paper.png");
        ImageView before = new ImageView(this);
        before.setImageBitmap(icon);
        after = new ImageView(this);
        note = new TextView(this);
        Spinner list = new Spinner(this);
        list.setAdapter(new ArrayAdapter<>(this, android.R.layout.simple_spinner_item, OPERATIONS.keySet().toArray(new String[0])));
        list.setOnItemSelectedListener(this);
        LinearLayout column = new LinearLayout(this);
        column.setOrientation(LinearLayout.VERTICAL);
        for (View each : new View[] {list, before, after, note}) column.addView(each);
        setContentView(column);
    }

    @Override
    public void onItemSelected(AdapterView<?> list, View row, int position, long id) {
        String name = (String) list.getItemAtPosition(position);
        Bitmap changed = icon.copy(Bitmap.Config.ARGB_8888, true);
        long start = System.nanoTime();
        int status = OPERATIONS.get(name).change(changed, texture);
        long microseconds = (System.nanoTime() - start) / 1000;
        int[] visible = new int[4];
        VelUIBitmapUtils.nativeGetBitmapTransparentCutOffRect(changed, 0, visible);
        after.setImageBitmap(changed);
        note.setText(name + ": status " + status + ", " + microseconds + " microseconds, visible from " + visible[0] + ", " + visible[1]
                + " to " + visible[2] + ", " + visible[3]);
    }

    @Override
    public void onNothingSelected(AdapterView<?> list) {}

    private Bitmap picture(String name) {
        try (InputStream in = getAssets().open(name)) {
            return BitmapFactory.decodeStream(in);
        } catch (IOException e) {
            throw new IllegalStateException(name, e);
        }
    }
}
