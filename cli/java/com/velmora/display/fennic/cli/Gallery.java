package com.velmora.display.fennic.cli;

import static java.nio.charset.StandardCharsets.UTF_8;
import static java.util.stream.Collectors.joining;
import static java.util.stream.Collectors.toMap;

import android.graphics.Bitmap;
import com.velmora.display.fennic.cli.Operation.Parameter;
import com.velmora.display.fennic.cli.Operation.Value;
import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.List;
import java.util.Map;
import java.util.concurrent.Callable;
import java.util.function.Function;
import java.util.stream.Stream;
import picocli.CommandLine.Command;
import picocli.CommandLine.Option;

@Command(name = "gallery", description = "Shows every blend, effect and filter on icons as a web page.")
final class Gallery implements Callable<Integer> {
    /** Twice the size at which the page shows a picture would be ideal; this keeps eighty operations below 15 MB. */
    private static final int THUMBNAIL = 120;

    /** So many icons show a named operation, a number, and what parameters change; they fill the rows of a wide page. */
    private static final int NAMED = 6;
    private static final int NUMBERED = 3;
    private static final int COMPARED = 4;

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
        description = "Where index.html and images go (default: ${DEFAULT-VALUE}).")
    private Path out;

    @Option(
        names = "--figures",
        paramLabel = "FILE",
        defaultValue = "${sys:fennic.root:-.}/build/benchmark/figures.csv",
        description = "What ./benchmark measured, for a chart (default: ${DEFAULT-VALUE}).")
    private Path figures;

    /** A picture, as a file of its own and as the page shows it. */
    record Picture(String name, Bitmap bitmap, byte[] png, byte[] thumbnail) {
        static Picture of(String name, Bitmap bitmap) {
            return new Picture(name, bitmap, Pngs.encode(bitmap), Pngs.encode(Pngs.within(bitmap, THUMBNAIL)));
        }
    }

    /** An icon with the layer that goes over it, in the icon's size. */
    record Subject(Picture icon, Picture layer, Measurement measurement) {}

    /** What became of a subject, and what is written under it. */
    record Result(String caption, Picture picture) {}

    record Strip(Subject subject, List<Result> results) {}

    record Card(Operation operation, List<Strip> strips, double nanosPerPixel) {}

    @Override
    public Integer call() {
        Path images = out.resolve("images");
        checkFolder(images);
        Speeds speeds = Speeds.read(figures);
        List<Subject> subjects = subjects();
        List<Card> cards = new ArrayList<>();
        // Everything is made before anything is written, so that a failing native leaves no torn gallery.
        List<Picture> pictures = new ArrayList<>();
        for (Subject subject : subjects) {
            pictures.add(subject.icon);
            pictures.add(subject.layer);
        }
        Stopwatch stopwatch = new Stopwatch(subjects.get(0).icon.bitmap, subjects.get(0).layer.bitmap);
        List<Operation> operations = Operation.of(List.of("BLEND", "EFFECT", "FILTER"));
        try (Progress progress = new Progress(operations.size() + 1)) {
            for (Operation operation : operations) {
                progress.step(operation.name());
                double nanos = stopwatch.nanosPerPixel(operation);
                int shown = operation.isNumbered() ? NUMBERED : operation.compared().isEmpty() ? NAMED : COMPARED;
                List<Strip> strips = subjects.subList(0, Math.min(shown, subjects.size())).parallelStream()
                    .map(subject -> strip(operation, subject))
                    .toList();
                cards.add(new Card(operation, strips, nanos));
                strips.forEach(strip -> strip.results.forEach(result -> pictures.add(result.picture)));
            }
            progress.step("writing");
            createFolder(images);
            for (Picture picture : pictures) {
                Pngs.write(images.resolve(picture.name + ".png"), picture.png);
            }
            Pngs.write(out.resolve("index.html"), new Page(subjects, cards, speeds).html().getBytes(UTF_8));
        }
        System.out.println(out.resolve("index.html"));
        return 0;
    }

    private static Strip strip(Operation operation, Subject subject) {
        Result usual = result(operation, subject, "", Parameter::initial);
        return new Strip(subject, operation.compared().isEmpty() ? List.of(usual) : List.of(
            result(operation, subject, "-low", Parameter::low), usual, result(operation, subject, "-high", Parameter::high)));
    }

    private static Result result(Operation operation, Subject subject, String suffix, Function<Parameter, String> value) {
        List<Parameter> compared = operation.compared();
        Map<String, Value> values = compared.stream().collect(toMap(Parameter::name, p -> p.value(value.apply(p))));
        String caption = compared.isEmpty()
            ? operation.name()
            : compared.stream().map(p -> p.name() + " " + value.apply(p)).collect(joining(", "));
        Bitmap bitmap = operation.changed(subject.icon.bitmap, subject.layer.bitmap, values);
        return new Result(caption, Picture.of(operation.name() + suffix + "-" + subject.icon.name, bitmap));
    }

    /** The layers take turns over the icons, so that each blend is seen with all of them. */
    private List<Subject> subjects() {
        List<Path> iconFiles = pictures("icon-");
        List<Path> layerFiles = pictures("layer-");
        List<Bitmap> layers = layerFiles.stream().map(Pngs::read).toList();
        List<Subject> subjects = new ArrayList<>();
        for (int i = 0; i < iconFiles.size(); ++i) {
            Bitmap icon = Pngs.read(iconFiles.get(i));
            int l = i % layers.size();
            Bitmap layer = Pngs.scaled(layers.get(l), icon.getWidth(), icon.getHeight());
            subjects.add(new Subject(
                Picture.of(name(iconFiles.get(i)), icon), Picture.of(name(layerFiles.get(l)), layer), Measurement.of(icon)));
        }
        return subjects;
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

    /** Says before any work is done what would keep the folder from being made. */
    private static void checkFolder(Path folder) {
        Path existing = folder.toAbsolutePath();
        while (!Files.exists(existing)) {
            existing = existing.getParent();
        }
        if (!Files.isDirectory(existing) || !Files.isWritable(existing)) {
            String why = Files.isDirectory(existing) ? "no permission to write in " : "not a folder: ";
            throw new Failure(folder, why + existing + "; name another place with --out");
        }
    }

    private static void createFolder(Path folder) {
        try {
            Files.createDirectories(folder);
        } catch (IOException e) {
            throw new Failure(folder, "cannot be created; name another place with --out");
        }
    }
}
