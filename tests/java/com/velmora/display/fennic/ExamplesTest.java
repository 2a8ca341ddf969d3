package com.velmora.display.fennic;

import static java.util.stream.Collectors.*;
import static org.junit.jupiter.api.Assertions.*;

import android.graphics.Bitmap;
import com.velmora.display.fennic.cli.Operation;
import com.velmora.display.fennic.cli.Operation.Parameter;
import java.lang.reflect.InvocationTargetException;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.Arrays;
import java.util.HashSet;
import java.util.List;
import java.util.Map;
import java.util.Set;
import java.util.regex.Matcher;
import java.util.regex.Pattern;
import java.util.stream.Stream;
import org.junit.jupiter.api.Test;

/** The examples of tests/examples.txt, which the library's own tests run too, on the path of an application. */
class ExamplesTest {
    private static final Pattern EXAMPLE = Pattern.compile("([a-z\\d-]+)([^:]*) : ([^=]*) = ([^#]*)(#.*)?");

    private static Object parameter(Class<?> type, String text) {
        if (text.equals("null")) return null;
        double[] numbers = Stream.of(text.replaceAll("[\\[\\]()]", "").split(",")).mapToDouble(Double::parseDouble).toArray();
        float[] floats = new float[numbers.length];
        for (int i = 0; i < floats.length; i++) floats[i] = (float) numbers[i];
        int[] ints = Arrays.stream(numbers).mapToInt(number -> (int) number).toArray();
        return Natives.ofType(type, null, ints[0], numbers[0], numbers[0] != 0, ints, floats);
    }

    @Test
    void giveTheirExactBytes() throws Exception {
        Map<String, Operation> operations = Operation.listed().stream().collect(toMap(Operation::name, operation -> operation));
        Set<Operation> called = new HashSet<>();
        for (String line : Files.readAllLines(Path.of(System.getProperty("fennic.root"), "tests/examples.txt"))) {
            Matcher example = EXAMPLE.matcher(line);
            if (!example.matches()) continue;
            Operation operation = operations.get(example.group(1));
            assertNotNull(operation, line);
            if (operation.kind().equals("INNER")) continue;
            called.add(operation);

            var given = List.of(example.group(2).strip().split(" +")).iterator();
            List<Bitmap> pictures = Stream.of(example.group(3).split("&")).map(Natives::picture).toList();
            var unused = pictures.iterator();
            Object[] arguments = Stream.of(operation.method().getParameterTypes())
                .map(type -> !type.isAssignableFrom(Bitmap.class) ? parameter(type, given.next())
                    : unused.hasNext() ? unused.next() : null)
                .toArray();
            byte[][] expected = pictures.stream().map(Natives::bytes).toArray(byte[][]::new);
            var recipes = operation.parameters().stream().filter(Parameter::isBitmap).map(Parameter::initial).toList();
            expected[recipes.indexOf("result")] = Natives.bytes(Natives.picture(example.group(4)));
            try {
                assertEquals(0, operation.method().invoke(null, arguments), line);
            } catch (InvocationTargetException e) {
                // An array too short for the native counts as zeros, but throws at the end.
                assertEquals(ArrayIndexOutOfBoundsException.class, e.getCause().getClass(), line);
            }
            assertArrayEquals(expected, pictures.stream().map(Natives::bytes).toArray(), line);
        }
        var changing = Operation.listed().stream().filter(operation -> operation.kind().matches("BLEND|EFFECT|FILTER"));
        assertEquals(changing.collect(toSet()), called, "every one that changes pictures has an example");
    }
}
