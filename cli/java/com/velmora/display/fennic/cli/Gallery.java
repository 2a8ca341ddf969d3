package com.velmora.display.fennic.cli;

import static java.util.stream.Collectors.toMap;

import android.graphics.Bitmap;
import com.velmora.display.fennic.cli.Operation.Parameter;
import com.velmora.display.fennic.cli.Operation.Value;
import java.io.IOException;
import java.math.BigDecimal;
import java.math.MathContext;
import java.math.RoundingMode;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Map;
import java.util.concurrent.Callable;
import java.util.stream.IntStream;
import java.util.stream.Stream;
import picocli.CommandLine.Command;
import picocli.CommandLine.Option;

@Command(name = "gallery", description = "Shows every blend, effect and filter on icons as a web page.")
final class Gallery implements Callable<Integer> {
    /** Twice the size at which the page shows a picture is enough for fine screens. */
    private static final int SIDE = 192;

    /** So many icons show a blend, with as many layers, and any other operation: each fills one row of a wide page. */
    private static final int BLENDED = 3;
    private static final int CHANGED = 4;

    /** So many steps a slider has to either side of the usual values. */
    private static final int STEPS = 4;

    @Option(
        names = "--icons",
        paramLabel = "DIR",
        defaultValue = "${sys:fennic.root:-.}/samples",
        description = "Where icon-*.png and layer-*.png are (default: ${DEFAULT-VALUE}).")
    private Path icons;

    @Option(
        names = "--out",
        paramLabel = "DIR",
        defaultValue = "${sys:fennic.root:-.}/build/gallery",
        description = "Where index.html and images go, in place of a former gallery (default: ${DEFAULT-VALUE}).")
    private Path out;

    @Option(
        names = "--figures",
        paramLabel = "FILE",
        defaultValue = "${sys:fennic.root:-.}/build/benchmark/figures.csv",
        description = "What ./benchmark measured, for a chart (default: ${DEFAULT-VALUE}).")
    private Path figures;

    @Option(
        names = "--live",
        paramLabel = "DIR",
        defaultValue = "${sys:fennic.root:-.}/build/page",
        description = "Where the parts of the live page are, without which it is left out (default: ${DEFAULT-VALUE}).")
    private Path live;

    /** A picture of the page: images/NAME.png. */
    record Picture(String name, int width, int height, byte[] png) {
        static Picture of(String name, Bitmap bitmap) {
            Bitmap shown = Pngs.within(bitmap, SIDE);
            return new Picture(name, shown.getWidth(), shown.getHeight(), Pngs.encode(shown));
        }
    }

    /** A PNG file, what is in it, and how the page shows it. */
    record Source(Path file, Bitmap bitmap, Picture picture) {
        /** "icon-road-map" is titled "road map". */
        String title() {
            return picture.name.substring(picture.name.indexOf('-') + 1).replace('-', ' ');
        }

        /** As it is named in the library's folder. */
        String path() {
            Path root = Path.of(System.getProperty("fennic.root", "."));
            return (file.startsWith(root) ? root.relativize(file) : file).toString();
        }
    }

    /** An icon with the layer that goes over it, in the icon's size. */
    record Subject(Source icon, Source layer, Measurement measurement) {}

    /** What became of a subject, at every step of the slider. */
    record Strip(Subject subject, List<Picture> results) {}

    /** Every step of the slider has the compared parameters' values by their names. */
    record Card(Operation operation, List<Map<String, String>> steps, int usual, List<Strip> strips, double nanosPerPixel) {}

    @Override
    public Integer call() {
        GalleryFolder folder = new GalleryFolder(out);
        Speeds speeds = Speeds.read(figures);
        LivePage livePage = LivePage.of(live);
        List<Subject> subjects = subjects();
        List<Card> cards = new ArrayList<>();
        // Everything is made before anything is written, so that a failing native leaves no torn gallery.
        List<Picture> pictures = new ArrayList<>();
        for (Subject subject : subjects) {
            pictures.add(subject.icon.picture);
            pictures.add(subject.layer.picture);
        }
        Stopwatch stopwatch = new Stopwatch(subjects.get(0).icon.bitmap, subjects.get(0).layer.bitmap);
        List<Operation> operations = Operation.of(List.of("BLEND", "EFFECT", "FILTER"));
        try (Progress progress = new Progress(operations.size() + 1)) {
            for (Operation operation : operations) {
                progress.step(operation.name());
                double nanos = stopwatch.nanosPerPixel(operation);
                List<Map<String, String>> steps = steps(operation);
                int shown = operation.kind().equals("BLEND") ? BLENDED : CHANGED;
                List<Strip> strips = subjects.subList(0, Math.min(shown, subjects.size())).parallelStream()
                    .map(subject -> strip(operation, steps, subject))
                    .toList();
                cards.add(new Card(operation, steps, steps.indexOf(values(operation, 0)), strips, nanos));
                strips.forEach(strip -> pictures.addAll(strip.results));
            }
            progress.step("writing");
            List<Source> samples = Stream.concat(subjects.stream().map(Subject::icon), pictures("layer-").stream()
                .map(file -> source(file, Pngs.read(file)))).toList();
            String livePageHtml = livePage == null ? null : livePage.html(samples, Page.file(samples.get(0).picture));
            folder.write(new Page(subjects, cards, speeds, livePage != null).html(), livePageHtml, pictures);
        }
        System.out.println(folder.index());
        return 0;
    }

    /** One step without values where there is nothing to compare; whole numbers may lie closer together than the steps. */
    private static List<Map<String, String>> steps(Operation operation) {
        return IntStream.rangeClosed(-STEPS, STEPS).mapToObj(step -> values(operation, step)).distinct().toList();
    }

    private static Map<String, String> values(Operation operation, int step) {
        Map<String, String> values = new LinkedHashMap<>();
        operation.compared().forEach(parameter -> values.put(parameter.name(), value(parameter, step)));
        return values;
    }

    private static String value(Parameter parameter, int step) {
        BigDecimal usual = new BigDecimal(parameter.initial());
        BigDecimal end = new BigDecimal(step < 0 ? parameter.low() : parameter.high());
        BigDecimal part = end.subtract(usual).multiply(BigDecimal.valueOf(Math.abs(step))).divide(BigDecimal.valueOf(STEPS));
        BigDecimal value = usual.add(part).round(new MathContext(3));
        boolean whole = parameter.type().equals("int");
        return (whole ? value.setScale(0, RoundingMode.HALF_UP) : value.stripTrailingZeros()).toPlainString();
    }

    private static Strip strip(Operation operation, List<Map<String, String>> steps, Subject subject) {
        List<Picture> results = new ArrayList<>();
        for (Map<String, String> step : steps) {
            Map<String, Value> values = operation.compared().stream()
                .collect(toMap(Parameter::name, parameter -> parameter.value(step.get(parameter.name()))));
            Bitmap bitmap = operation.changed(subject.icon.bitmap, subject.layer.bitmap, values);
            String number = steps.size() == 1 ? "-" : "-" + results.size() + "-";
            results.add(Picture.of(operation.name() + number + subject.icon.picture.name, bitmap));
        }
        return new Strip(subject, results);
    }

    /** The layers take turns over the icons, so that each blend is seen with all of them. */
    private List<Subject> subjects() {
        List<Path> iconFiles = pictures("icon-");
        List<Path> layerFiles = pictures("layer-");
        List<Bitmap> layers = layerFiles.stream().map(Pngs::read).toList();
        List<Subject> subjects = new ArrayList<>();
        for (int i = 0; i < iconFiles.size(); ++i) {
            Source icon = source(iconFiles.get(i), Pngs.read(iconFiles.get(i)));
            int l = i % layers.size();
            Bitmap layer = Pngs.scaled(layers.get(l), icon.bitmap.getWidth(), icon.bitmap.getHeight());
            subjects.add(new Subject(icon, source(layerFiles.get(l), layer), Measurement.of(icon.bitmap)));
        }
        return subjects;
    }

    private static Source source(Path file, Bitmap bitmap) {
        return new Source(file, bitmap, Picture.of(name(file), bitmap));
    }

    private static String name(Path file) {
        return file.getFileName().toString().replaceFirst("\\.png$", "");
    }

    private List<Path> pictures(String prefix) {
        List<Path> found = List.of();
        try (Stream<Path> files = Files.list(icons)) {
            found = files.filter(file -> name(file).startsWith(prefix) && file.toString().endsWith(".png")).sorted().toList();
        } catch (IOException e) {
            boolean exists = Files.isDirectory(icons);
            throw new Failure(icons, exists ? "no permission to read it" : "no such folder; name one with --icons");
        }
        if (found.isEmpty()) {
            throw new Failure(icons, "holds no " + prefix + "*.png; name another folder with --icons");
        }
        return found;
    }
}
