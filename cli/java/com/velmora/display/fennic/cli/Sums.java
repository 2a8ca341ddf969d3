package com.velmora.display.fennic.cli;

import android.graphics.Bitmap;
import java.nio.ByteBuffer;
import java.nio.ByteOrder;

/** The visible pixels' number and the sums of their red, green, blue and alpha, wide enough for any picture. */
record Sums(long visible, long[] channels) {
    static Sums of(Bitmap bitmap) {
        ByteBuffer pixels = ByteBuffer.allocate(bitmap.getByteCount()).order(ByteOrder.LITTLE_ENDIAN);
        bitmap.copyPixelsToBuffer(pixels);
        long visible = 0;
        long red = 0;
        long green = 0;
        long blue = 0;
        long alpha = 0;
        int end = pixels.capacity();
        for (int at = 0; at < end; at += Integer.BYTES) {
            int pixel = pixels.getInt(at);
            if (pixel >>> 24 != 0) {
                ++visible;
                red += pixel & 255;
                green += pixel >> 8 & 255;
                blue += pixel >> 16 & 255;
                alpha += pixel >>> 24;
            }
        }
        return new Sums(visible, new long[] {red, green, blue, alpha});
    }

    /** As the natives give it: of premultiplied bytes, truncated, zeros where nothing is visible. */
    int[] average() {
        int[] average = new int[channels.length];
        for (int i = 0; i < average.length; ++i) {
            average[i] = (int) (channels[i] / Math.max(1, visible));
        }
        return average;
    }

    /** Red, green and blue without their alpha, rounded. */
    int[] straight() {
        int[] straight = new int[3];
        for (int i = 0; i < straight.length; ++i) {
            straight[i] = (int) Math.min(255, Math.round(255.0 * channels[i] / Math.max(1, channels[3])));
        }
        return straight;
    }
}
