package org.example;

import android.graphics.Bitmap;
import com.velmora.display.fennic.VelUIBitmapUtils;

/** A call that leaves a line in the log. */
public final class Overlay {
    private Overlay() {}

    public static void main(String[] arguments) {
        Bitmap icon = Bitmap.createBitmap(3, 2, Bitmap.Config.ARGB_8888);
        System.exit(VelUIBitmapUtils.nativeBitmapHandle13(icon, icon));
    }
}
