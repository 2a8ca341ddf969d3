package com.velmora.display.fennic;

import android.graphics.Bitmap;
import com.velmora.display.fennic.cli.Operation;
import java.nio.ByteBuffer;
import java.util.Collections;
import java.util.List;
import java.util.stream.Stream;

/** What the tests call: the natives of the list, with arguments by their type and pictures as text. */
final class Natives {
    private Natives() {}

    /** Every operation that has a native and comes back from it. */
    static List<Operation> all() {
        return Operation.listed().stream().filter(operation -> !operation.kind().matches("INNER|ABORT")).toList();
    }

    /** The one that a parameter of this type takes; null for any other type. */
    static Object ofType(Class<?> type, Bitmap bitmap, int whole, double number, Boolean truth, int[] ints, float[] floats) {
        return type == Bitmap.class ? bitmap
            : type == int.class ? (Object) whole
            : type == float.class ? (Object) (float) number
            : type == double.class ? (Object) number
            : type == boolean.class ? truth
            : type == int[].class ? ints
            : type == float[].class ? floats : null;
    }

    /** Pixels as text; one of them stands for a picture of some width. */
    static Bitmap picture(String text) {
        String[] rows = text.strip().split(" *\\| *");
        boolean isOne = !text.strip().contains(" ");
        List<String> pixels = Stream.of(rows).flatMap(row -> Stream.of(row.split(" +"))).toList();
        if (isOne) pixels = Collections.nCopies(2 * 67, pixels.get(0));
        int height = isOne ? 2 : rows.length;
        Bitmap bitmap = Bitmap.createBitmap(pixels.size() / height, height, Bitmap.Config.ARGB_8888);
        ByteBuffer bytes = ByteBuffer.allocate(bitmap.getByteCount());
        for (String pixel : pixels) {
            String[] channels = (pixel.contains(",") ? pixel : pixel + "," + pixel + "," + pixel + ",255").split(",");
            for (String channel : channels) bytes.put((byte) Integer.parseInt(channel));
        }
        bitmap.copyPixelsFromBuffer(bytes.rewind());
        return bitmap;
    }

    static byte[] bytes(Bitmap bitmap) {
        ByteBuffer bytes = ByteBuffer.allocate(bitmap.getByteCount());
        bitmap.copyPixelsToBuffer(bytes);
        return bytes.array();
    }
}
