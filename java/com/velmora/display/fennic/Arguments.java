package com.velmora.display.fennic;

import android.graphics.Bitmap;

/** What the calls by name ask of their arguments before a native sees them, and what they say where one fails. */
final class Arguments {
    private Arguments() {}

    /** The bitmap, which can be read. */
    static Bitmap read(String name, Bitmap bitmap) {
        present(name, bitmap);
        if (bitmap.isRecycled()) {
            throw new IllegalArgumentException(name + " is recycled");
        }
        if (bitmap.getConfig() != Bitmap.Config.ARGB_8888) {
            throw new IllegalArgumentException(name + " is of " + bitmap.getConfig() + ", not ARGB_8888");
        }
        return bitmap;
    }

    /** The bitmap, which can be written. */
    static Bitmap written(String name, Bitmap bitmap) {
        read(name, bitmap);
        if (!bitmap.isMutable()) {
            throw new IllegalArgumentException(name + " is immutable, and would be written");
        }
        return bitmap;
    }

    /** A base that can be written and a layer that covers it. */
    static void pair(Bitmap base, Bitmap layer) {
        written("base", base);
        read("layer", layer);
        if (layer.getWidth() < base.getWidth() || layer.getHeight() < base.getHeight()) {
            throw new IllegalArgumentException("layer is " + size(layer) + " and does not cover base, which is " + size(base));
        }
    }

    /** Bitmaps that can be read and have the first one's size, with their names in one string. */
    static void ofOneSize(String names, Bitmap... bitmaps) {
        String[] name = names.split(" ");
        for (int i = 0; i < bitmaps.length; ++i) {
            read(name[i], bitmaps[i]);
            if (bitmaps[i].getWidth() != bitmaps[0].getWidth() || bitmaps[i].getHeight() != bitmaps[0].getHeight()) {
                throw new IllegalArgumentException(
                    name[i] + " is " + size(bitmaps[i]) + ", not " + size(bitmaps[0]) + " as " + name[0]);
            }
        }
    }

    static int[] array(String name, int[] array, int length) {
        present(name, array);
        checkLength(name, array.length, length);
        return array;
    }

    static float[] array(String name, float[] array, int length) {
        present(name, array);
        checkLength(name, array.length, length);
        return array;
    }

    /** Throws what a native's negative status stands for. */
    static void check(int status) {
        if (status == -1) {
            throw new IllegalArgumentException("refused: a bitmap was recycled, or is smaller than another one needs,"
                + " or the channel is not one of 0 to 3 (status -1)");
        }
        if (status == -2) {
            throw new IllegalStateException("a bitmap could not be locked; was it recycled meanwhile? (status -2)");
        }
        if (status == -3) {
            throw new OutOfMemoryError("no native memory to work in; take a smaller bitmap (status -3)");
        }
        if (status < 0) {
            throw new IllegalStateException("the platform's bitmap interface failed (status " + status + ")");
        }
    }

    private static void present(String name, Object argument) {
        if (argument == null) {
            throw new NullPointerException(name + " is null");
        }
    }

    private static void checkLength(String name, int length, int wanted) {
        if (length != wanted) {
            throw new IllegalArgumentException(name + " has " + length + " elements, not " + wanted);
        }
    }

    private static String size(Bitmap bitmap) {
        return bitmap.getWidth() + " x " + bitmap.getHeight();
    }
}
