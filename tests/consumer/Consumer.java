package org.example;

import android.graphics.Bitmap;
import com.velmora.display.fennic.Blend;
import com.velmora.display.fennic.VelUIBitmapUtils;

/** What an application does with a native and with a call by name, for a shrinker to look at. */
public final class Consumer {
    private Consumer() {}

    public static int decorate(Bitmap icon, Bitmap texture) {
        Blend.MULTIPLY.apply(icon, texture);
        return VelUIBitmapUtils.nativeImageFilter3(icon, 0.5f);
    }
}
