package com.velmora.display.fennic;

import static org.junit.jupiter.api.Assertions.assertArrayEquals;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertTrue;

import android.graphics.Bitmap;
import java.lang.reflect.InvocationTargetException;
import java.lang.reflect.Method;
import java.nio.ByteBuffer;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.Collections;
import java.util.List;
import java.util.Map;
import java.util.function.Function;
import java.util.regex.Matcher;
import java.util.regex.Pattern;
import java.util.stream.Collectors;
import java.util.stream.Stream;
import org.junit.jupiter.api.Test;

/** The examples of tests/examples.txt, which the library's own tests run too, on the path of an application. */
class ExamplesTest {
    private static final Path ROOT = Path.of(System.getProperty("fennic.root"));
    private static final Pattern EXAMPLE = Pattern.compile("([a-z\\d-]+)([^:]*) : ([^=]*) = ([^#]*)(#.*)?");

    /** The natives by the names of their operations. */
    private static Map<String, Method> natives() throws Exception {
        Map<String, Method> byName = Arrays.stream(VelUIBitmapUtils.class.getDeclaredMethods())
            .collect(Collectors.toMap(Method::getName, Function.identity(), (a, b) -> a));
        return Pattern.compile("^(?:BLEND|EFFECT)\\((\\w+), *\\w+, *\\w+, *\"([^\"]+)\"", Pattern.MULTILINE)
            .matcher(Files.readString(ROOT.resolve("jni/Operations.def")))
            .results()
            .collect(Collectors.toMap(line -> line.group(2), line -> byName.get(line.group(1))));
    }

    /** Pixels as text; one of them stands for a picture of some width. */
    private static Bitmap picture(String text) {
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

    private static byte[] bytes(Bitmap bitmap) {
        ByteBuffer bytes = ByteBuffer.allocate(bitmap.getByteCount());
        bitmap.copyPixelsToBuffer(bytes);
        return bytes.array();
    }

    private static Object parameter(Class<?> type, String text) {
        if (text.equals("null")) return null;
        double[] numbers = Stream.of(text.replaceAll("[\\[\\]()]", "").split(",")).mapToDouble(Double::parseDouble).toArray();
        float[] floats = new float[numbers.length];
        for (int i = 0; i < floats.length; i++) floats[i] = (float) numbers[i];
        return type == int.class ? (Object) (int) numbers[0]
            : type == float.class ? (Object) floats[0]
            : type == boolean.class ? (Object) (numbers[0] != 0)
            : type == int[].class ? Arrays.stream(numbers).mapToInt(number -> (int) number).toArray()
            : type == float[].class ? floats : (Object) numbers[0];
    }

    @Test
    void giveTheirExactBytes() throws Exception {
        var natives = natives();
        List<String> called = new ArrayList<>(), withoutNative = new ArrayList<>();
        for (String line : Files.readAllLines(ROOT.resolve("tests/examples.txt"))) {
            Matcher example = EXAMPLE.matcher(line);
            if (!example.matches()) continue;
            String name = example.group(1);
            Method method = natives.get(name);
            (method == null ? withoutNative : called).add(name);
            if (method == null) continue;

            var given = List.of(example.group(2).strip().split(" +")).iterator();
            List<Bitmap> pictures = Stream.of(example.group(3).split("&")).map(ExamplesTest::picture).toList();
            var unused = pictures.iterator();
            Object[] arguments = Stream.of(method.getParameterTypes())
                .map(type -> !type.isAssignableFrom(Bitmap.class) ? parameter(type, given.next())
                    : unused.hasNext() ? unused.next() : null)
                .toArray();
            List<byte[]> expected = new ArrayList<>(pictures.stream().map(ExamplesTest::bytes).toList());
            int changed = pictures.size() == 9 ? 4 : name.equals("sharpen") || name.equals("swirl") ? 1 : 0;
            expected.set(changed, bytes(picture(example.group(4))));
            try {
                assertEquals(0, method.invoke(null, arguments), line);
            } catch (InvocationTargetException e) {
                // An array too short for the native counts as zeros, but throws at the end.
                assertEquals(ArrayIndexOutOfBoundsException.class, e.getCause().getClass(), line);
            }
            for (int i = 0; i < pictures.size(); i++) assertArrayEquals(expected.get(i), bytes(pictures.get(i)), line);
        }
        assertEquals(List.of("linear-light-c"), withoutNative.stream().distinct().toList());
        assertTrue(called.containsAll(natives.keySet()), "every blend and effect has an example");
    }
}
