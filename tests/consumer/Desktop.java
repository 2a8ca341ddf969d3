package org.example;

import android.graphics.Bitmap;
import com.velmora.display.fennic.VelUIBitmapUtils;

/** What somebody's test does on a desktop JVM: one blend, its status and what it made of a pixel. */
public final class Desktop {
    private Desktop() {}

    public static void main(String[] arguments) {
        Bitmap icon = Bitmap.createBitmap(3, 2, Bitmap.Config.ARGB_8888);
        Bitmap texture = Bitmap.createBitmap(3, 2, Bitmap.Config.ARGB_8888);
        icon.eraseColor(0xFF66FF00);
        texture.eraseColor(0xFF800000);
        int status = VelUIBitmapUtils.nativeBitmapHandle4(icon, texture);
        System.out.println(status + " " + Integer.toHexString(icon.getPixel(2, 1)));
    }
}
