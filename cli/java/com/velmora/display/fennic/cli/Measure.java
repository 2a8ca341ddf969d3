package com.velmora.display.fennic.cli;

import static java.util.stream.Collectors.joining;

import java.util.ArrayList;
import java.util.Arrays;
import java.util.List;
import java.util.Locale;
import java.util.concurrent.Callable;
import picocli.CommandLine.Command;
import picocli.CommandLine.Option;
import picocli.CommandLine.Parameters;

@Command(
    name = "measure",
    description = "Measures what is visible of each icon.",
    footerHeading = "%nThe columns, and the fields of the JSON objects:%n",
    footer = {
        "  width, height   the picture's size",
        "  visible         pixels with any alpha",
        "  invisible       pixels without",
        "  outside         share of the pixels before the first and after the last",
        "                  visible one of their row, 0 to 1",
        "  median          brightness, 0 to 255, that half of the visible pixels do",
        "                  not exceed; - or null where none is visible",
        "  average         mean red, green, blue and alpha of the visible pixels as",
        "                  bitmaps hold them: premultiplied by alpha, truncated",
        "  cut-off, cutOff the visible content's left, top, right and bottom, inclusive",
        "  square          where the content is not square: its x and y on a square",
        "                  canvas that holds it, and that canvas's side twice; else -",
        "                  or null",
        "  straight        mean red, green and blue as a colour picker shows them,",
        "                  each pixel weighed by its alpha",
        "Pixels are taken at 8 bits a channel, of an animation the first picture, and as they are stored: an EXIF "
            + "orientation is not followed."})
final class Measure implements Callable<Integer> {
    @Parameters(
        arity = "1..*",
        paramLabel = "FILE",
        description = "Pictures (PNG, JPEG, GIF, BMP or WebP, whatever their names), folders with --recursive, @LIST for a file "
            + "with a name a line, or - for standard input.")
    private List<String> files;

    @Option(names = "--json", description = "Print a JSON array instead of a table.")
    private boolean json;

    @Option(names = {"-r", "--recursive"}, description = "Measure all pictures in folders.")
    private boolean recursive;

    private record Row(Input input, Measurement measurement) {}

    /** A file that fails is reported and the others are measured all the same. */
    @Override
    public Integer call() {
        Batch batch = new Batch();
        List<Row> rows = new ArrayList<>();
        batch.each(Input.all(files, recursive, null), input -> {
            byte[] bytes = Pngs.bytes(input);
            Dropped.warn(input, bytes, Dropped.PIXELS);
            return new Row(input, Measurement.of(Pngs.decode(input, bytes)));
        }, rows::add);
        if (json) {
            System.out.println(Json.lines(rows.stream().map(Measure::json).toList()));
        } else if (!rows.isEmpty()) {
            table(rows).print(System.out);
        }
        return batch.exitCode();
    }

    private static Table table(List<Row> rows) {
        Table table = new Table(">width", ">height", ">visible", ">invisible", ">outside", ">median",
            "average rgba", "cut-off l,t,r,b", "square x,y,w,h", "straight rgb", "file");
        for (Row row : rows) {
            Measurement m = row.measurement;
            table.add(
                "" + m.width(), "" + m.height(), "" + m.visible(), "" + m.invisible(),
                String.format(Locale.ROOT, "%.4f", m.outside()),
                m.median() == null ? "-" : String.format(Locale.ROOT, "%.1f", m.median()),
                commas(m.average()), commas(m.cutOff()), m.square() == null ? "-" : commas(m.square()), commas(m.straight()),
                row.input.toString());
        }
        return table;
    }

    static String commas(int[] values) {
        return Arrays.stream(values).mapToObj(Integer::toString).collect(joining(","));
    }

    private static String json(Row row) {
        Measurement m = row.measurement;
        return Json.object("file", Json.string(row.input.toString()), "width", "" + m.width(), "height", "" + m.height(),
            "visible", "" + m.visible(), "invisible", "" + m.invisible(), "outside", "" + m.outside(),
            "average", array(m.average()), "cutOff", array(m.cutOff()), "square", array(m.square()), "median", "" + m.median(),
            "straight", array(m.straight()));
    }

    private static String array(int[] values) {
        return values == null ? "null" : "[" + commas(values) + "]";
    }
}
