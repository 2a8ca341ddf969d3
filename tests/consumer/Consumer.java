package org.example;

import android.graphics.Bitmap;
import com.velmora.display.fennic.VelUIBitmapUtils;

/** What an application does with the natives, for a shrinker to look at. */
public final class Consumer {
    private Consumer() {}

    public static int decorate(Bitmap icon, Bitmap texture) {
        return VelUIBitmapUtils.nativeBitmapHandle4(icon, texture) + VelUIBitmapUtils.nativeImageFilter3(icon, 0.5f);
    }
}
