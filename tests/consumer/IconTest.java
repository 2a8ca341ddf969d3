package org.example;

import static org.junit.jupiter.api.Assertions.assertArrayEquals;
import static org.junit.jupiter.api.Assertions.assertEquals;

import android.graphics.Bitmap;
import com.velmora.display.fennic.VelUIBitmapUtils;
import org.junit.jupiter.api.Test;

/** What somebody's unit test looks like: JUnit and the desktop jar, no emulator and no set-up. */
class IconTest {
    @Test
    void measuresAnIcon() {
        Bitmap icon = Bitmap.createBitmap(8, 8, Bitmap.Config.ARGB_8888);
        for (int x = 2; x <= 5; ++x) icon.setPixel(x, 3, 0xFFC86432);
        for (int x = 2; x <= 5; ++x) icon.setPixel(x, 4, 0x80C86432);
        int[] rect = new int[4];
        VelUIBitmapUtils.nativeGetBitmapTransparentCutOffRect(icon, 0, rect);
        assertArrayEquals(new int[] {2, 3, 5, 4}, rect);
        assertEquals(8, VelUIBitmapUtils.nativeGetBitmapVisiblePointNum(icon));
    }
}
