package com.velmora.display.fennic.cli;

import static java.util.stream.Collectors.joining;

import java.nio.file.Path;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.List;
import java.util.Locale;
import java.util.concurrent.Callable;
import picocli.CommandLine.Command;
import picocli.CommandLine.Option;
import picocli.CommandLine.Parameters;

@Command(name = "measure", description = "Measures what is visible of each icon.")
final class Measure implements Callable<Integer> {
    @Parameters(arity = "1..*", paramLabel = "FILE", description = "PNG files.")
    private List<Path> files;

    @Option(names = "--json", description = "Print a JSON array instead of a table.")
    private boolean json;

    /** A file that fails is reported and the others are measured all the same. */
    @Override
    public Integer call() {
        int exitCode = 0;
        Table table = new Table(">width", ">height", ">visible", ">invisible", ">outside", ">median",
            "average rgba", "cut-off l,t,r,b", "square x,y,w,h", "file");
        List<String> objects = new ArrayList<>();
        for (Path file : files) {
            try {
                Measurement m = Measurement.of(Pngs.read(file));
                objects.add(json(file, m));
                table.add(
                    "" + m.width(), "" + m.height(), "" + m.visible(), "" + m.invisible(),
                    String.format(Locale.ROOT, "%.4f", m.outside()),
                    m.median() == null ? "-" : String.format(Locale.ROOT, "%.1f", m.median()),
                    commas(m.average()), commas(m.cutOff()), m.square() == null ? "-" : commas(m.square()), file.toString());
            } catch (Failure e) {
                exitCode = Fennic.complain(e.getMessage(), 1);
            }
        }
        if (json) {
            System.out.println(objects.isEmpty() ? "[]" : "[\n  " + String.join(",\n  ", objects) + "\n]");
        } else if (!objects.isEmpty()) {
            table.print(System.out);
        }
        return exitCode;
    }

    static String commas(int[] values) {
        return Arrays.stream(values).mapToObj(Integer::toString).collect(joining(","));
    }

    private static String json(Path file, Measurement m) {
        return "{\"file\": %s, \"width\": %d, \"height\": %d, \"visible\": %d, \"invisible\": %d, \"outside\": %s, "
            .formatted(quoted(file.toString()), m.width(), m.height(), m.visible(), m.invisible(), m.outside())
            + "\"average\": [%s], \"cutOff\": [%s], \"square\": %s, \"median\": %s}"
            .formatted(commas(m.average()), commas(m.cutOff()), m.square() == null ? "null" : "[" + commas(m.square()) + "]",
                m.median());
    }

    private static String quoted(String text) {
        StringBuilder out = new StringBuilder("\"");
        for (char c : text.toCharArray()) {
            if (c == '"' || c == '\\') {
                out.append('\\').append(c);
            } else {
                out.append(c < ' ' ? String.format("\\u%04x", (int) c) : String.valueOf(c));
            }
        }
        return out.append('"').toString();
    }
}
