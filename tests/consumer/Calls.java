package org.example;

import android.graphics.Bitmap;
import android.graphics.BitmapFactory;
import android.graphics.Color;
import android.graphics.Point;
import android.graphics.PointF;
import android.graphics.Rect;
import android.graphics.RectF;
import java.io.ByteArrayInputStream;
import java.io.ByteArrayOutputStream;
import java.io.File;
import java.io.FileInputStream;
import java.io.FileOutputStream;
import java.io.IOException;
import java.nio.ByteBuffer;
import java.nio.IntBuffer;

/** The calls of android.graphics that code around icons makes, each with its answer; silent unless one is another. */
public final class Calls {
    private static int calls;

    private Calls() {}

    public static void main(String[] arguments) throws IOException {
        bitmaps();
        files();
        colors();
        shapes();
    }

    private static void is(Object expected, Object actual) {
        ++calls;
        if (!expected.equals(actual)) {
            throw new AssertionError("call " + calls + ": " + actual + " instead of " + expected);
        }
    }

    private static void bitmaps() {
        Bitmap icon = Bitmap.createBitmap(4, 2, Bitmap.Config.ARGB_8888);
        is(4, icon.getWidth());
        is(2, icon.getHeight());
        is(16, icon.getRowBytes());
        is(32, icon.getByteCount());
        is(32, icon.getAllocationByteCount());
        is(Bitmap.Config.ARGB_8888, icon.getConfig());
        is(true, icon.isMutable());
        is(true, icon.hasAlpha());
        is(true, icon.isPremultiplied());
        icon.eraseColor(Color.RED);
        is(Color.RED, icon.getPixel(3, 1));
        icon.setPixel(0, 0, 0x80FFFFFF);
        is(0x80FFFFFF, icon.getPixel(0, 0));
        int[] row = new int[4];
        icon.getPixels(row, 0, 4, 0, 0, 4, 1);
        is(Color.RED, row[1]);
        row[1] = Color.GREEN;
        int generation = icon.getGenerationId();
        icon.setPixels(row, 0, 4, 0, 1, 4, 1);
        is(Color.GREEN, icon.getPixel(1, 1));
        is(false, generation == icon.getGenerationId());
        is(Color.GREEN, Bitmap.createBitmap(icon, 1, 1, 2, 1).getPixel(0, 0));
        is(true, Bitmap.createBitmap(icon).sameAs(icon));
        is(false, Bitmap.createBitmap(row, 4, 1, Bitmap.Config.ARGB_8888).isMutable());
        is(Color.GREEN, Bitmap.createBitmap(row, 1, 2, 2, 1, Bitmap.Config.RGB_565).getPixel(0, 0));
        is(8, Bitmap.createScaledBitmap(icon, 8, 4, true).getWidth());
        is(Color.RED, Bitmap.createScaledBitmap(icon, 2, 1, false).getPixel(1, 0));
        is(Bitmap.Config.RGB_565, icon.copy(Bitmap.Config.RGB_565, false).getConfig());
        is(0x80000000, icon.extractAlpha().getPixel(0, 0));
        is(4, icon.extractAlpha().getRowBytes());
        ByteBuffer bytes = ByteBuffer.allocate(icon.getByteCount());
        icon.copyPixelsToBuffer(bytes);
        is(0, bytes.remaining());
        is((byte) 0x80, bytes.get(3));
        icon.copyPixelsFromBuffer(IntBuffer.allocate(8));
        is(0, icon.getPixel(0, 0));
        icon.setHasAlpha(false);
        is(false, icon.hasAlpha());
        icon.setDensity(320);
        is(320, icon.getDensity());
        is(2, icon.getScaledWidth(160));
        is(3, icon.getScaledHeight(480));
        icon.prepareToDraw();
        icon.reconfigure(2, 2, Bitmap.Config.ALPHA_8);
        is(4, icon.getByteCount());
        icon.recycle();
        is(true, icon.isRecycled());
        is(Bitmap.Config.ALPHA_8, Bitmap.Config.valueOf("ALPHA_8"));
    }

    private static void files() throws IOException {
        Bitmap icon = Bitmap.createBitmap(4, 4, Bitmap.Config.ARGB_8888);
        icon.eraseColor(0xFF204060);
        ByteArrayOutputStream out = new ByteArrayOutputStream();
        is(true, icon.compress(Bitmap.CompressFormat.JPEG, 90, out));
        is(true, BitmapFactory.decodeByteArray(out.toByteArray(), 0, out.size()) != null);
        out.reset();
        is(true, icon.compress(Bitmap.CompressFormat.PNG, 100, out));
        byte[] png = out.toByteArray();
        is(true, BitmapFactory.decodeByteArray(png, 0, png.length).sameAs(icon));
        is(true, BitmapFactory.decodeStream(new ByteArrayInputStream(png)).sameAs(icon));
        is(true, BitmapFactory.decodeFile("no such file") == null);
        BitmapFactory.Options options = new BitmapFactory.Options();
        options.inJustDecodeBounds = true;
        is(true, BitmapFactory.decodeStream(new ByteArrayInputStream(png), null, options) == null);
        is("image/png", options.outMimeType);
        is(4, options.outWidth);
        is(4, options.outHeight);
        is(Bitmap.Config.ARGB_8888, options.outConfig);
        options.inJustDecodeBounds = false;
        options.inSampleSize = 2;
        options.inMutable = true;
        options.inPreferredConfig = Bitmap.Config.ARGB_8888;
        options.inScaled = false;
        File file = File.createTempFile("calls", ".png");
        try {
            try (FileOutputStream stream = new FileOutputStream(file)) {
                stream.write(png);
            }
            is(2, BitmapFactory.decodeFile(file.getPath(), options).getWidth());
            try (FileInputStream stream = new FileInputStream(file)) {
                is(true, BitmapFactory.decodeFileDescriptor(stream.getFD(), new Rect(), options).isMutable());
                is(true, BitmapFactory.decodeFileDescriptor(stream.getFD()).sameAs(icon));
            }
        } finally {
            is(true, file.delete());
        }
    }

    private static void colors() {
        is(0x12, Color.alpha(0x12345678));
        is(0x34, Color.red(0x12345678));
        is(0x56, Color.green(0x12345678));
        is(0x78, Color.blue(0x12345678));
        is(0xFF010203, Color.rgb(1, 2, 3));
        is(0x04010203, Color.argb(4, 1, 2, 3));
        is(Color.YELLOW, Color.rgb(1f, 1f, 0f));
        is(0x80FF0000, Color.argb(0.5f, 1f, 0f, 0f));
        is(Color.LTGRAY, Color.parseColor("lightgray"));
        is(0x80112233, Color.parseColor("#80112233"));
        is(1f, Color.luminance(Color.WHITE));
        float[] hsv = new float[3];
        Color.colorToHSV(Color.CYAN, hsv);
        is(180f, hsv[0]);
        Color.RGBToHSV(0, 0, 255, hsv);
        is(240f, hsv[0]);
        is(Color.BLUE, Color.HSVToColor(hsv));
        is(0x7F0000FF, Color.HSVToColor(0x7F, hsv));
    }

    private static void shapes() {
        Rect rect = new Rect(0, 0, 8, 6);
        is(8, rect.width());
        is(6, rect.height());
        is(4, rect.centerX());
        is(3f, rect.exactCenterY());
        is(true, rect.contains(7, 5));
        is(true, Rect.intersects(rect, new Rect(7, 5, 9, 9)));
        rect.inset(1, 1);
        rect.offset(1, 0);
        is(new Rect(2, 1, 8, 5), rect);
        is("2 1 8 5", rect.flattenToString());
        is(rect, Rect.unflattenFromString("2 1 8 5"));
        is(true, rect.intersect(0, 0, 4, 4));
        rect.union(new Rect(0, 0, 1, 1));
        is("[0,0][4,4]", rect.toShortString());
        rect.setEmpty();
        is(true, rect.isEmpty());
        RectF exact = new RectF(0.25f, 0.75f, 2.25f, 2.75f);
        is(1.25f, exact.centerX());
        exact.round(rect);
        is(new Rect(0, 1, 2, 3), rect);
        exact.roundOut(rect);
        is("Rect(0, 0 - 3, 3)", rect.toString());
        Point point = new Point(1, 2);
        point.offset(2, 2);
        is(5f, new PointF(point).length());
    }
}
