package com.velmora.display.fennic.cli;

import static java.util.stream.Collectors.joining;
import static java.util.stream.Collectors.toMap;

import android.graphics.Bitmap;
import com.velmora.display.fennic.VelUIBitmapUtils;
import java.lang.reflect.InvocationTargetException;
import java.lang.reflect.Method;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.Comparator;
import java.util.HashMap;
import java.util.List;
import java.util.Locale;
import java.util.Map;
import java.util.Set;
import java.util.function.Function;
import java.util.function.ToIntFunction;
import java.util.regex.Matcher;
import java.util.regex.Pattern;
import java.util.stream.IntStream;
import java.util.stream.Stream;

/** One line of Operations.def, the list that the library, its tests and this command line share. */
public record Operation(
    String kind, String nativeName, String name, String frame, String family, Set<String> traits, List<Parameter> parameters,
    String summary) {

    /** A value, which may depend on the size of the picture that it is for. */
    public interface Value {
        Object in(Bitmap picture);
    }

    /** How values stand in a language's source: what is around all of them, behind each whole one, and behind each. */
    record Spelling(String before, String whole, String suffix, String after) {
        static final Spelling PLAIN = new Spelling("", "", "", "");

        String of(String text) {
            return Stream.of(text.split(","))
                .map(element -> element + (element.matches("-?\\d+") ? whole : "") + suffix)
                .collect(joining(", ", before, after));
        }
    }

    /** What the list says of a parameter that a person may choose; least and most are null where that side is open. */
    public record Choice(String least, String most, String unit, String meaning) {}

    /**
     * A parameter; initial is null where the list gives no default, last where it gives no range of operations, low and high
     * where it gives no values beside the default, choice where it is not a person's to choose.
     */
    public record Parameter(String name, String type, String initial, String last, String low, String high, Choice choice) {
        private static final Pattern SIZE = Pattern.compile("(width|height)(?:\\*(\\d+))?(?:/([1-9]\\d*))?");
        private static final Pattern SHIFTED = Pattern.compile("shifted\\((-?\\d+),(-?\\d+)\\)");

        static Parameter bitmap(String name, String recipe) {
            return new Parameter(name, "bitmap", recipe, null, null, null, null);
        }

        /** The values that make sense, in words: "0 to 1", "1 or more"; empty where all do. */
        public String range() {
            if (choice == null || choice.least == null && choice.most == null) {
                return "";
            }
            return choice.most == null ? choice.least + " or more" : choice.least == null ? "up to " + choice.most
                : choice.least + " to " + choice.most;
        }

        public String unit() {
            return choice == null ? "" : choice.unit;
        }

        public String meaning() {
            return choice == null ? "" : choice.meaning;
        }

        Value value(String text) {
            Matcher size = SIZE.matcher(text);
            try {
                if (size.matches()) {
                    Value sized = sized(size.group(1).equals("width") ? Bitmap::getWidth : Bitmap::getHeight,
                        size.group(2) == null ? 1 : Double.parseDouble(size.group(2)),
                        size.group(3) == null ? 1 : Double.parseDouble(size.group(3)));
                    return picture -> within(sized.in(picture), text);
                }
                Object fixed = within(fixed(text), text);
                return picture -> fixed;
            } catch (NumberFormatException e) {
                String kind = type.endsWith("[]") ? type + " like " + initial : type;
                throw new IllegalArgumentException("--" + name + " takes a value of type " + kind + ", not '" + text + "'");
            }
        }

        /** Computed in double: exact up to the quotient, which rounds to the same float as the one in the literal. */
        private Value sized(ToIntFunction<Bitmap> side, double factor, double divisor) {
            return switch (type) {
                case "int" -> picture -> (int) (side.applyAsInt(picture) * factor / divisor);
                case "float" -> picture -> (float) (side.applyAsInt(picture) * factor / divisor);
                case "double" -> picture -> side.applyAsInt(picture) * factor / divisor;
                default -> throw new NumberFormatException();
            };
        }

        private Object fixed(String text) {
            return switch (typeWithoutLength()) {
                case "int" -> Integer.decode(text);
                case "float" -> Float.valueOf(text);
                case "double" -> Double.valueOf(text);
                case "boolean" -> switch (text) {
                    case "true" -> true;
                    case "false" -> false;
                    default -> throw new NumberFormatException();
                };
                case "int[]" -> Stream.of(elements(text)).mapToInt(Integer::decode).toArray();
                case "float[]" -> {
                    String[] elements = elements(text);
                    float[] values = new float[elements.length];
                    for (int i = 0; i < values.length; ++i) {
                        values[i] = Float.parseFloat(elements[i]);
                    }
                    yield values;
                }
                case "object" -> null;
                default -> throw new Failure("--" + name + " is of type " + type + ", which cannot be given here");
            };
        }

        /** The value, if all its numbers make sense; what overflows or is no number at all never does. */
        private Object within(Object value, String text) {
            double[] numbers = value instanceof Number number ? new double[] {number.doubleValue()}
                : value instanceof int[] ints ? Arrays.stream(ints).asDoubleStream().toArray()
                : value instanceof float[] floats ? IntStream.range(0, floats.length).mapToDouble(i -> floats[i]).toArray()
                : new double[0];
            for (double number : numbers) {
                boolean tooLow = choice != null && choice.least != null && number < bound(choice.least);
                boolean tooHigh = choice != null && choice.most != null && number > bound(choice.most);
                if (!Double.isFinite(number) || tooLow || tooHigh) {
                    throw new IllegalArgumentException(unit().equals("choice")
                        ? "no " + name + " " + text + ": " + meaning()
                        : "--" + name + " takes " + (range().isEmpty() ? "a finite number" : range()) + ", not " + text);
                }
            }
            return value;
        }

        /** As precise as the type, so that the bound itself is within. */
        private double bound(String text) {
            return type.startsWith("float") ? Float.parseFloat(text)
                : type.equals("double") ? Double.parseDouble(text) : Integer.decode(text);
        }

        /** An array always has the default's length, for the natives count on it. */
        private String[] elements(String text) {
            String[] elements = text.split(",", -1);
            if (elements.length != initial.split(",", -1).length) {
                throw new NumberFormatException();
            }
            return elements;
        }

        /** What the recipe makes of a picture that is being changed. */
        private Bitmap prepared(Bitmap result, Bitmap picture, Bitmap layer) {
            Matcher shifted = SHIFTED.matcher(initial);
            if (shifted.matches()) {
                return Pngs.shifted(picture, Integer.parseInt(shifted.group(1)), Integer.parseInt(shifted.group(2)));
            }
            return switch (initial) {
                case "result" -> result;
                case "input" -> picture;
                case "layer" -> layer;
                default -> throw new Failure("Operations.def", "no recipe for a bitmap: " + this);
            };
        }

        /** The default as Java source; a size is that of the bitmap of this name. */
        String literal(String bitmap) {
            return literal(bitmap, java());
        }

        String literal(String bitmap, Spelling spelling) {
            Matcher size = SIZE.matcher(initial);
            if (size.matches()) {
                String side = initial.replace("width", bitmap + ".getWidth()").replace("height", bitmap + ".getHeight()");
                String suffix = size.group(3) == null || type.equals("int") ? "" : type.equals("float") ? "f" : ".0";
                return side.replaceAll("([*/])", " $1 ") + suffix;
            }
            return isBitmap() ? name : spelling.of(initial);
        }

        /** How its values stand in Java's source. */
        Spelling java() {
            return switch (typeWithoutLength()) {
                case "float" -> new Spelling("", "", "f", "");
                case "float[]" -> new Spelling("new float[] {", "", "f", "}");
                case "int[]" -> new Spelling("new int[] {", "", "", "}");
                default -> Spelling.PLAIN;
            };
        }

        /** And in Kotlin's, which takes no whole number for a double. */
        Spelling kotlin() {
            return switch (typeWithoutLength()) {
                case "double" -> new Spelling("", ".0", "", "");
                case "float[]" -> new Spelling("floatArrayOf(", "", "f", ")");
                case "int[]" -> new Spelling("intArrayOf(", "", "", ")");
                default -> java();
            };
        }

        private String typeWithoutLength() {
            return type.replaceAll("\\d", "");
        }

        public boolean isBitmap() {
            return type.equals("bitmap");
        }

        /** Whether its value makes a difference that a person can choose. */
        boolean isValue() {
            return !isBitmap() && !type.equals("object") && !name.startsWith("ignored");
        }

        /** Whether it is an array that a native writes and does not read. */
        boolean isResult() {
            return initial == null;
        }

        /** Whether the call by name takes it. */
        public boolean isTyped() {
            return isBitmap() || isValue() && !isResult();
        }

        /** Whether it is left to the caller. */
        boolean isChoice() {
            return isValue() && last == null;
        }

        @Override
        public String toString() {
            return name + ":" + type + (initial == null ? "" : "=" + initial);
        }
    }

    /** The kinds that can be called, and those that make a picture of one. */
    static final List<String> KINDS = List.of("MEASURE", "GEOMETRY", "BLEND", "EFFECT", "FILTER", "ABORT");
    static final List<String> CHANGING = List.of("BLEND", "EFFECT", "FILTER");

    /** The kind, native, class, method, name, frame, family, traits, parameters and summary. */
    private static final Pattern LINE = Pattern.compile("OPERATION\\((\\w+), *(\\w+), *(\\w+), *(\\w+), *\"([^\"]+)\", *(\\w+)"
        + ", *\"([^\"]+)\", *\"([^\"]*)\", *\"([^\"]*)\", *\"([^\"]+)\"\\)");
    private static final Pattern PARAMETER = Pattern.compile(
        "(\\w+):(\\w+(?:\\[\\d*])?)(?:=([^\\s\\[]+?)(?:\\.\\.([^\\s\\[]+)|\\[(\\S+)\\.\\.(\\S+)])?)?");

    private static final Pattern CHOICE = Pattern.compile(
        "PARAMETER\\(\"([^\"]+)\", *\"([^\"]+)\", *\"(\\S*?)\\.\\.(\\S*)\", *\"([^\"]*)\", *\"([^\"]+)\"\\)");

    /** Every line of the list. */
    public static List<Operation> listed() {
        return Loaded.LINES;
    }

    /** What can be called, a numbered operation once for each of its numbers. */
    public static List<Operation> all() {
        return Loaded.OPERATIONS;
    }

    static List<Operation> of(List<String> kinds) {
        return all().stream().filter(operation -> kinds.contains(operation.kind)).toList();
    }

    /** The operation of those kinds and that name; the message of the exception names its nearest relatives. */
    static Operation named(List<String> kinds, String name) {
        List<Operation> operations = of(kinds);
        return operations.stream().filter(operation -> operation.name.equals(name)).findFirst().orElseThrow(() -> {
            String typed = name.toLowerCase(Locale.ROOT);
            String near = operations.stream()
                .map(Operation::name)
                .filter(known -> distance(typed, known) <= Math.max(1, typed.length() / 3))
                .sorted(Comparator.comparingInt(known -> distance(typed, known)))
                .limit(3)
                .collect(joining(" or "));
            String elsewhere = elsewhere(typed);
            String hint = elsewhere != null ? elsewhere
                : near.isEmpty() ? "fennic list shows them all" : "did you mean " + near + "?";
            String what = kinds == KINDS ? "operation" : word(kinds.get(0));
            return new IllegalArgumentException("unknown " + what + " '" + name + "'; " + hint);
        });
    }

    /** Where an operation of another kind is found, or null: "multiply is a blend: fennic blend multiply". */
    static String elsewhere(String name) {
        return all().stream().filter(operation -> operation.name.equals(name)).findFirst().map(operation ->
            name + " is " + (operation.kind.equals("EFFECT") ? "an " : "a ") + word(operation.kind) + ": "
                + switch (operation.kind) {
                case "BLEND" -> "fennic blend " + name;
                case "EFFECT", "FILTER" -> "fennic effect " + name;
                case "MEASURE" -> "fennic measure";
                default -> "only programs call it";
            }).orElse(null);
    }

    private static String word(String kind) {
        return kind.equals("MEASURE") ? "measurement" : kind.equals("GEOMETRY") ? "computation" : kind.toLowerCase(Locale.ROOT);
    }

    /** The parameters that are left to the caller. */
    List<Parameter> choices() {
        return parameters.stream().filter(Parameter::isChoice).toList();
    }

    /** The parameters whose values the gallery compares. */
    List<Parameter> compared() {
        return parameters.stream().filter(parameter -> parameter.low != null).toList();
    }

    /** A changed copy of the picture; values by name stand in for the defaults. */
    Bitmap changed(Bitmap picture, Bitmap layer, Map<String, Value> values) {
        Bitmap result = picture.copy(Bitmap.Config.ARGB_8888, true);
        apply(arguments(result, picture, layer, values));
        return result;
    }

    /** The picture itself, changed, where the operation needs no copy of it; it must be mutable and nobody else's. */
    Bitmap change(Bitmap picture, Bitmap layer, Map<String, Value> values) {
        if (parameters.stream().anyMatch(p -> p.isBitmap() && !List.of("result", "layer").contains(p.initial))) {
            return changed(picture, layer, values);
        }
        apply(arguments(picture, picture, layer, values));
        return picture;
    }

    /** What the native takes to change the result, which starts as a copy of the picture. */
    public Object[] arguments(Bitmap result, Bitmap picture, Bitmap layer, Map<String, Value> values) {
        return parameters.stream()
            .map(p -> p.isBitmap() ? p.prepared(result, picture, layer)
                : p.isResult() ? new int[Integer.parseInt(p.type.replaceAll("\\D", ""))]
                : values.getOrDefault(p.name, p.value(p.initial)).in(picture))
            .toArray();
    }

    /** The call with all defaults as Java source. */
    String call() {
        return call(parameter -> parameter.literal(parameters.get(0).name));
    }

    /** The same with arguments of one's own. */
    String call(Function<Parameter, String> argument) {
        return "VelUIBitmapUtils." + nativeName + "(" + parameters.stream().map(argument).collect(joining(", ")) + ");";
    }

    /** The same call by name; what the native writes into an array comes back from it. */
    public String typedCall() {
        return typedCall(parameter -> parameter.literal(parameters.get(0).name));
    }

    String typedCall(Function<Parameter, String> argument) {
        String typed = !kind.equals("BLEND") ? (kind.matches("EFFECT|FILTER") ? "Effects." : "IconMetrics.") + camelCase()
            : (isNumbered() ? "StraightBlend." + constant(like(listed(), parameters.get(2).initial)) : "Blend." + constant(name))
                + ".apply";
        return typed + parameters.stream()
            .filter(parameter -> kind.equals("BLEND") ? parameter.isBitmap() : parameter.isTyped())
            .map(argument)
            .collect(joining(", ", "(", ");"));
    }

    private static String constant(String name) {
        return name.toUpperCase(Locale.ROOT).replace('-', '_');
    }

    public String camelCase() {
        return Pattern.compile("-(\\w)").matcher(name).replaceAll(match -> match.group(1).toUpperCase(Locale.ROOT));
    }

    /** The Java class's method; null where the operation has no native. */
    public Method method() {
        return Natives.BY_NAME.get(nativeName);
    }

    /** Calls the native; a negative status, which every writing native may return, is a failure. */
    void apply(Object... arguments) {
        Method method = method();
        if (method == null) {
            throw new Failure("VelUIBitmapUtils does not declare " + nativeName + "; declare it there");
        }
        try {
            if (method.invoke(null, arguments) instanceof Integer status && status < 0) {
                throw new Failure(nativeName + " failed with status " + status + ": " + switch (status) {
                    case -1 -> "it refuses these bitmaps or parameters; check their sizes";
                    case -3 -> "not enough memory; take a smaller picture";
                    default -> "the bitmap could not be locked; check that it is RGBA_8888";
                });
            }
        } catch (InvocationTargetException e) {
            if (e.getCause() instanceof Error error) {
                throw error;
            }
            throw new Failure(nativeName, "threw " + e.getCause());
        } catch (IllegalAccessException | IllegalArgumentException e) {
            throw new Failure(nativeName, "Operations.def and VelUIBitmapUtils disagree on its parameters; mend one of them");
        }
    }

    private static Operation parse(String line, int number, Map<String, Choice> choices) {
        Matcher match = LINE.matcher(line);
        if (!match.matches()) {
            throw new Failure("Operations.def:" + number, "not an operation: " + line);
        }
        String kind = match.group(1);
        List<Parameter> parameters = new ArrayList<>();
        for (String text : words(match.group(9))) {
            Matcher parameter = PARAMETER.matcher(text);
            if (!parameter.matches()) {
                throw new Failure("Operations.def:" + number, "not a parameter (name:type=default): " + text);
            }
            parameters.add(new Parameter(parameter.group(1), parameter.group(2), parameter.group(3),
                parameter.group(4), parameter.group(5), parameter.group(6),
                choices.remove(match.group(5) + " " + parameter.group(1))));
        }
        if (kind.equals("BLEND")) {
            parameters.addAll(0, List.of(Parameter.bitmap("base", "result"), Parameter.bitmap("layer", "layer")));
        } else if (kind.matches("MEASURE|EFFECT|FILTER") && parameters.stream().noneMatch(Parameter::isBitmap)) {
            parameters.add(0, Parameter.bitmap("bitmap", kind.equals("MEASURE") ? "input" : "result"));
        }
        if (CHANGING.contains(kind) && parameters.stream().anyMatch(p -> p.isChoice() && p.choice == null)) {
            throw new Failure("Operations.def:" + number, "a parameter to choose has no line PARAMETER of its own");
        }
        return new Operation(kind, match.group(2), match.group(5), match.group(6), match.group(7),
            Set.copyOf(words(match.group(8))), List.copyOf(parameters), match.group(10));
    }

    private static List<String> words(String text) {
        return text.isBlank() ? List.of() : List.of(text.strip().split("\\s+"));
    }

    /** The name on the list, where all numbers of an operation are one. */
    String listedName() {
        return isNumbered() ? name.substring(0, name.lastIndexOf('-')) : name;
    }

    /** Whether it is one number of an operation that the list gives a range of. */
    public boolean isNumbered() {
        return parameters.stream().anyMatch(parameter -> parameter.last != null);
    }

    /** An operation whose parameter has a range is one operation for each number in it, which is then no longer a choice. */
    private Stream<Operation> variants(List<Operation> listed) {
        Parameter ranged = parameters.stream().filter(parameter -> parameter.last != null).findFirst().orElse(null);
        if (ranged == null) {
            return Stream.of(this);
        }
        return IntStream.rangeClosed(Integer.parseInt(ranged.initial), Integer.parseInt(ranged.last)).mapToObj(number -> {
            Parameter fixed = new Parameter(ranged.name, ranged.type, "" + number, "" + number, null, null, null);
            return new Operation(kind, nativeName, name + "-" + number, frame, family, traits,
                parameters.stream().map(parameter -> parameter == ranged ? fixed : parameter).toList(),
                summary + ": " + like(listed, fixed.initial));
        });
    }

    /** The blend that a mode is like: the numbers of the modes are those in the names of the natives that blend alike. */
    private static String like(List<Operation> listed, String number) {
        return listed.stream()
            .filter(operation -> operation.nativeName.equals("nativeBitmapHandle" + number))
            .map(Operation::name)
            .collect(joining());
    }

    /** How far a mistyped name is from a known one or from one of its words; nothing where it is a part of it. */
    private static int distance(String typed, String known) {
        if (!typed.isEmpty() && known.contains(typed)) {
            return 0;
        }
        int least = edits(typed, known);
        for (String word : known.split("-")) {
            least = Math.min(least, edits(typed, word));
        }
        return least;
    }

    /** Letters to insert, drop or replace to turn one word into the other. */
    private static int edits(String a, String b) {
        int[] row = new int[b.length() + 1];
        Arrays.setAll(row, j -> j);
        for (int i = 1; i <= a.length(); ++i) {
            int diagonal = row[0];
            row[0] = i;
            for (int j = 1; j <= b.length(); ++j) {
                int replaced = diagonal + (a.charAt(i - 1) == b.charAt(j - 1) ? 0 : 1);
                diagonal = row[j];
                row[j] = Math.min(replaced, Math.min(row[j], row[j - 1]) + 1);
            }
        }
        return row[b.length()];
    }

    private static final class Loaded {
        static final List<Operation> LINES = lines();
        static final List<Operation> OPERATIONS = LINES.stream()
            .filter(operation -> !operation.kind.equals("INNER"))
            .flatMap(operation -> operation.variants(LINES))
            .toList();

        private static List<Operation> lines() {
            String[] lines = Resource.text("Operations.def").split("\n");
            Map<String, Choice> choices = new HashMap<>();
            for (String line : lines) {
                Matcher match = CHOICE.matcher(line.strip());
                if (match.matches()) {
                    choices.put(match.group(1) + " " + match.group(2),
                        new Choice(side(match.group(3)), side(match.group(4)), match.group(5), match.group(6)));
                }
            }
            List<Operation> listed = new ArrayList<>();
            for (int i = 0; i < lines.length; ++i) {
                String line = lines[i].strip();
                if (!line.isEmpty() && !line.startsWith("//") && !line.startsWith("#") && !CHOICE.matcher(line).matches()) {
                    listed.add(parse(line, i + 1, choices));
                }
            }
            if (!choices.isEmpty()) {
                throw new Failure("Operations.def", "PARAMETER of no operation: " + String.join(", ", choices.keySet()));
            }
            return List.copyOf(listed);
        }

        private static String side(String text) {
            return text.isEmpty() ? null : text;
        }
    }

    private static final class Natives {
        static final Map<String, Method> BY_NAME =
            Arrays.stream(VelUIBitmapUtils.class.getMethods()).collect(toMap(Method::getName, method -> method, (a, b) -> a));
    }
}
