package com.velmora.display.fennic;

import static com.velmora.display.fennic.Natives.*;
import static java.util.stream.Collectors.joining;
import static org.junit.jupiter.api.Assertions.*;

import android.graphics.Bitmap;
import com.velmora.display.fennic.cli.Operation;
import com.velmora.display.fennic.cli.Operation.Parameter;
import java.io.ByteArrayOutputStream;
import java.lang.reflect.Array;
import java.lang.reflect.InvocationTargetException;
import java.lang.reflect.Method;
import java.lang.reflect.Modifier;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.HashSet;
import java.util.List;
import java.util.Map;
import java.util.Objects;
import java.util.Random;
import java.util.Set;
import java.util.regex.Matcher;
import java.util.regex.Pattern;
import java.util.stream.IntStream;
import java.util.stream.Stream;
import javax.tools.ToolProvider;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.function.Executable;
import org.junit.jupiter.api.io.TempDir;

/** The calls by name: that they are those of the list, that they do what the natives do, and what they refuse. */
class TypedCallsTest {
    private static final Pattern SOURCE = Pattern.compile("(\\w+)\\.(\\w+)(\\.apply\\(base, layer|\\(.*)\\);");

    /** A method, the constant that it is of, and which of the native's parameters it takes. */
    private record Call(Operation operation, Object constant, Method method, int[] taken) {
        Object run(Object[] arguments) throws Throwable {
            try {
                return method.invoke(constant, arguments);
            } catch (InvocationTargetException e) {
                throw e.getCause();
            }
        }

        /** The native's arguments: the list's defaults, or another value for each that is taken. */
        Object[] all(boolean usual) {
            Object[] all = operation.arguments(noise(7, 5), noise(7, 5), noise(8, 6), Map.of());
            for (int i : taken) if (!usual) all[i] = other(all[i], i);
            return all;
        }

        Object[] of(Object[] all) {
            return Arrays.stream(taken).mapToObj(i -> all[i]).toArray();
        }

        @Override
        public String toString() {
            return operation.typedCall();
        }
    }

    private static List<Call> calls() throws Exception {
        List<Call> calls = new ArrayList<>();
        for (Operation operation : Operation.all()) {
            if (operation.kind().equals("ABORT")) continue;
            Matcher source = SOURCE.matcher(operation.typedCall());
            assertTrue(source.matches(), operation.typedCall());
            Class<?> owner = Class.forName("com.velmora.display.fennic." + source.group(1));
            boolean isBlend = operation.kind().equals("BLEND");
            var parameters = operation.parameters();
            int[] taken = IntStream.range(0, parameters.size())
                .filter(i -> isBlend ? parameters.get(i).isBitmap() : parameters.get(i).isTyped())
                .toArray();
            Class<?>[] all = operation.method().getParameterTypes();
            Class<?>[] types = Arrays.stream(taken).mapToObj(i -> all[i]).toArray(Class<?>[]::new);
            calls.add(new Call(operation, isBlend ? owner.getField(source.group(2)).get(null) : null,
                owner.getMethod(isBlend ? "apply" : source.group(2), types), taken));
            if (isBlend && all.length > 2 && !operation.isNumbered())
                calls.add(new Call(operation, null, owner.getMethod(operation.camelCase(), all), new int[] {0, 1, 2}));
        }
        return calls;
    }

    private static Bitmap noise(int width, int height) {
        Bitmap bitmap = Bitmap.createBitmap(width, height, Bitmap.Config.ARGB_8888);
        Random random = new Random(1);
        for (int i = 0; i < width * height; ++i)
            bitmap.setPixel(i % width, i / width, random.nextInt(4) == 0 ? 0 : random.nextInt());
        return bitmap;
    }

    private static Object other(Object value, int parameter) {
        if (value instanceof int[] ints) return IntStream.range(0, ints.length).map(i -> 60 / (i + 1)).toArray();
        if (value instanceof float[] floats) {
            for (int i = 0; i < floats.length; ++i) floats[i] = 0.1f + i / 8f;
            return floats;
        }
        return value instanceof Integer ? (Object) parameter
            : value instanceof Float ? (Object) (0.1f + parameter / 8f)
            : value instanceof Double ? (Object) (0.1 + parameter / 8.0)
            : value instanceof Boolean flag ? !flag : value;
    }

    /** What it holds now. */
    private static Object comparable(Object value) {
        return value instanceof Bitmap bitmap && !bitmap.isRecycled() ? bytes(bitmap)
            : value instanceof int[] ints ? ints.clone() : value;
    }

    private static Object[] comparable(Object[] values) {
        return Stream.of(values).map(TypedCallsTest::comparable).toArray();
    }

    @Test
    void theyAreThoseOfTheListAndDoWhatTheNativesDo() throws Throwable {
        Set<Object> members = new HashSet<>();
        for (Call call : calls()) {
            assertTrue(members.add(call.constant == null ? call.method : call.constant), "twice: " + call);
            for (boolean usual : new boolean[] {true, false}) {
                Object[] all = call.all(usual), arguments = call.of(call.all(usual)), before = comparable(arguments);
                Object status = call.operation.method().invoke(null, all), result = call.run(arguments);
                boolean isMeasured = call.operation.kind().matches("MEASURE|GEOMETRY");
                // What has no number to return writes the last array.
                Object measured = status instanceof Number ? status
                    : Stream.of(all).filter(int[].class::isInstance).reduce((earlier, last) -> last).orElseThrow();
                assertTrue(Objects.deepEquals(isMeasured ? measured : null, result), call::toString);
                for (int i = 0; i < arguments.length; ++i) {
                    Object expected = arguments[i] instanceof Bitmap ? all[call.taken[i]] : before[i];
                    assertTrue(Objects.deepEquals(comparable(expected), comparable(arguments[i])), call + ", argument " + i);
                }
            }
        }
        Set<Object> declared = new HashSet<>();
        for (Class<?> owner : List.of(Blend.class, StraightBlend.class, Effects.class, IconMetrics.class)) {
            if (owner.isEnum()) declared.addAll(List.of(owner.getEnumConstants()));
            Stream.of(owner.getMethods())
                .filter(method -> Modifier.isStatic(method.getModifiers()) && !method.getName().matches("values|valueOf|of"))
                .forEach(declared::add);
        }
        declared.removeAll(members);
        assertEquals(Set.of(), declared, "not of the list");
        for (StraightBlend blend : StraightBlend.values()) assertEquals(blend.ordinal() + 3, blend.number());
    }

    /** What the gallery shows; each bitmap is a variable of its parameter's name. */
    @Test
    void theirSourceCompiles(@TempDir Path folder) throws Exception {
        List<Operation> operations = calls().stream().map(Call::operation).toList();
        String bitmaps = operations.stream().flatMap(operation -> operation.parameters().stream()).filter(Parameter::isBitmap)
            .map(parameter -> "Bitmap " + parameter.name()).distinct().collect(joining(", "));
        Path file = Files.writeString(folder.resolve("Calls.java"), """
            import android.graphics.Bitmap;
            import com.velmora.display.fennic.*;
            class Calls {
                void all(%s) { %s }
            }
            """.formatted(bitmaps, operations.stream().map(Operation::typedCall).collect(joining("\n"))));
        var errors = new ByteArrayOutputStream();
        String[] arguments = {"-cp", System.getProperty("java.class.path"), file.toString()};
        assertEquals(0, ToolProvider.getSystemJavaCompiler().run(null, null, errors, arguments), errors::toString);
    }

    @Test
    void measurementsAtOnceAreThoseOneByOne() throws Exception {
        Bitmap icon = picture("0,0,0,0 99,0,9,200 0,0,0,0 0,0,0,0 | 0,0,0,0 3,4,5,100 1,1,1,2 0,0,0,0"
            + " | 0,0,0,0 0,0,0,0 0,0,0,0 0,0,0,0");
        Map<String, Object> expected = Map.of("width", 4, "height", 3, "visibleCount", 3, "invisibleCount", 9,
            "outsideShare", 0.75f, "medianBrightness", IconMetrics.median(icon), "averageChannels", new int[] {34, 1, 5, 100},
            "averageColor", 0x6457030D, "contentBounds", new int[] {1, 0, 1, 1}, "squareCanvas", new int[] {0, 0, 2, 2});
        IconMetrics metrics = IconMetrics.of(icon);
        icon.eraseColor(-1);
        Set<String> names = new HashSet<>();
        for (Method method : IconMetrics.class.getDeclaredMethods()) {
            if (method.getModifiers() != Modifier.PUBLIC) continue;
            names.add(method.getName());
            if (method.invoke(metrics) instanceof int[] array) Arrays.fill(array, -1);
            assertTrue(Objects.deepEquals(expected.get(method.getName()), method.invoke(metrics)), method::getName);
        }
        assertEquals(expected.keySet(), names);
        assertNull(IconMetrics.of(picture("1 2 | 3 4")).squareCanvas());
        assertEquals(0, IconMetrics.of(picture("0,0,0,0")).averageColor());
    }

    private static void assertRefused(Class<? extends Throwable> type, String words, Executable call) {
        String message = assertThrows(type, call, words).getMessage();
        assertTrue(message.startsWith(words), message);
    }

    /** Whatever may be null, recycled, of another format or size, immutable or too long. */
    @Test
    void badArgumentsAreNamedAndNothingIsChanged() throws Throwable {
        Bitmap recycled = noise(7, 5), other = Bitmap.createBitmap(7, 5, Bitmap.Config.RGB_565);
        recycled.recycle();
        for (Call call : calls())
            for (int i = 0; i < call.taken.length; ++i) {
                Parameter parameter = call.operation.parameters().get(call.taken[i]);
                Object[] usual = call.of(call.all(true));
                List<Object> bad = new ArrayList<>();
                if (usual[i] instanceof Bitmap bitmap) {
                    bad.addAll(List.of(recycled, other));
                    if (i > 0) bad.addAll(List.of(noise(6, 5), noise(7, 4)));
                    usual[i] = bitmap.copy(Bitmap.Config.ARGB_8888, false);
                    if (parameter.initial().equals("result")) bad.add(usual[i]);
                    else call.run(usual);
                } else if (usual[i].getClass().isArray()) {
                    bad.add(Array.newInstance(usual[i].getClass().componentType(), Array.getLength(usual[i]) + 1));
                } else {
                    continue;
                }
                bad.add(null);
                for (Object each : bad) {
                    Object[] arguments = call.of(call.all(true));
                    arguments[i] = each;
                    Object[] before = comparable(arguments);
                    assertRefused(each == null ? NullPointerException.class : IllegalArgumentException.class,
                        parameter.name() + " ", () -> call.run(arguments));
                    assertTrue(Objects.deepEquals(before, comparable(arguments)), call::toString);
                }
            }
    }

    @Test
    void failuresHaveWords() {
        Bitmap large = noise(3, 3), small = noise(3, 2), other = Bitmap.createBitmap(3, 3, Bitmap.Config.RGB_565);
        Bitmap immutable = large.copy(Bitmap.Config.ARGB_8888, false);
        Object[][] cases = {
            {"layer is 3 x 2 and does not cover base, which is 3 x 3", (Executable) () -> Blend.HUE.apply(large, small)},
            {"destination is 3 x 3, not 3 x 2 as source", (Executable) () -> Effects.sharpen(small, large, 1)},
            {"bitmap is of RGB_565, not ARGB_8888", (Executable) () -> IconMetrics.median(other)},
            {"bitmap is immutable", (Executable) () -> Effects.invert(immutable)},
            {"box has 2 elements, not 4", (Executable) () -> IconMetrics.iconInfo(new int[2])},
            {"refused: ", (Executable) () -> Effects.pickChannel(large, 4)},
        };
        for (Object[] each : cases) assertRefused(IllegalArgumentException.class, (String) each[0], (Executable) each[1]);
        assertRefused(IllegalStateException.class, "a bitmap could not be locked", () -> Arguments.check(-2));
        assertRefused(OutOfMemoryError.class, "no native memory", () -> Arguments.check(-3));
        assertRefused(IllegalStateException.class, "the platform's bitmap interface failed", () -> Arguments.check(-4));
        Arguments.check(0);
    }
}
