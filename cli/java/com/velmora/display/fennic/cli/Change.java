package com.velmora.display.fennic.cli;

import static java.util.stream.Collectors.joining;

import android.graphics.Bitmap;
import com.velmora.display.fennic.cli.Operation.Parameter;
import com.velmora.display.fennic.cli.Operation.Value;
import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.EnumSet;
import java.util.HashMap;
import java.util.HashSet;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Locale;
import java.util.Map;
import java.util.Set;
import java.util.concurrent.Callable;
import java.util.concurrent.ConcurrentHashMap;
import java.util.concurrent.atomic.AtomicInteger;
import java.util.stream.Stream;
import picocli.CommandLine;
import picocli.CommandLine.Help;
import picocli.CommandLine.Model.CommandSpec;
import picocli.CommandLine.Model.OptionSpec;
import picocli.CommandLine.Option;
import picocli.CommandLine.ParameterException;
import picocli.CommandLine.Spec;

/** A command that applies one operation of some kinds to pictures and writes what comes of them. */
abstract class Change implements Callable<Integer> {
    private static final Path STANDARD = Path.of("-");

    private final List<String> kinds;

    @Option(
        names = {"-o", "--out"},
        paramLabel = "OUT",
        description = "The picture to write; it may be the one to change. NAME.jpg becomes a JPEG, which has no transparency, "
            + "any other a PNG; - is standard output, as a PNG.")
    private Path out;

    @Option(
        names = {"-d", "--out-dir"},
        paramLabel = "DIR",
        description = "The folder to write any number of pictures to, each under its own name with .png. Earlier results there "
            + "are replaced, a picture that is to be changed only with --overwrite.")
    private Path folder;

    @Option(names = "--suffix", paramLabel = "SUFFIX", description = "Put -SUFFIX behind each name in DIR.")
    private String suffix;

    @Option(names = {"-r", "--recursive"}, description = "Take all pictures in folders; they keep their places under DIR.")
    private boolean recursive;

    @Option(names = "--skip-existing", description = "Leave results that are there, and so go on after a run that was stopped.")
    private boolean skipExisting;

    @Option(names = "--overwrite", description = "Let a result in DIR take the place of the picture that it is made of.")
    private boolean overwrite;

    @Spec private CommandSpec model;

    private final Map<List<Integer>, Bitmap> layers = new ConcurrentHashMap<>();

    Change(String... kinds) {
        this.kinds = List.of(kinds);
    }

    /** What the user names; null where nothing is. */
    abstract String operation();

    /**
     * Every parameter of every operation becomes an option, so that a new line of the list is all that a new operation takes.
     * Many share a name, so the help shows them operation by operation.
     */
    void offerParameters() {
        Map<String, String> takers = new LinkedHashMap<>();
        for (Operation operation : Operation.of(kinds)) {
            if (!operation.choices().isEmpty()) {
                takers.put(operation.name(),
                    operation.choices().stream().map(p -> "--" + p.name() + "=" + p.initial()).collect(joining(" ")));
            }
        }
        names().forEach(name -> model.addOption(OptionSpec.builder("--" + name).type(String.class).hidden(true).build()));
        model.usageMessage().footerHeading(
            "%nParameters, as they are if left out ('fennic " + model.name() + " NAME --help' explains them):%n");
        model.usageMessage().footer(Stream.of(
            new Help(model).createTextTable(takers).toString().lines(),
            Stream.of("", "What a result never has: EXIF data, colour profiles, more than 8 bits a channel, the stretches of "
                + "a nine-patch, and of an animation all but the first picture. An EXIF orientation is not followed."))
            .flatMap(lines -> lines).toArray(String[]::new));
    }

    /** What one operation does and takes. */
    String help() {
        Operation operation = named();
        String command = "fennic " + model.name() + " " + operation.name();
        CommandSpec help = CommandSpec.create().name(command);
        help.usageMessage()
            .width(model.usageMessage().width())
            .sortOptions(false)
            .customSynopsis(command + (kinds.contains("BLEND") ? " BASE... LAYER" : " IN...")
                + (operation.choices().isEmpty() ? "" : " [--PARAMETER=VALUE ...]") + " {-o OUT | --out-dir DIR}")
            .description(
                operation.summary().replace("%", "%%") + ".", "Its native is VelUIBitmapUtils." + operation.nativeName() + ".")
            .optionListHeading(operation.choices().isEmpty() ? "" : "%n")
            .footer("", "'fennic " + model.name() + " --help' tells what goes in and out.");
        for (Parameter p : operation.choices()) {
            String sizes = p.initial().matches("(width|height).*")
                ? "; width and height are the picture's, times and by whole numbers" : "";
            String text = p.meaning() + " ("
                + Stream.of(p.unit().equals("choice") ? "" : p.unit(), p.range(), "else " + p.initial())
                .filter(part -> !part.isEmpty()).collect(joining("; ")) + sizes + ")";
            help.addOption(OptionSpec.builder("--" + p.name()).type(String.class)
                .paramLabel(p.type().replaceAll("\\[]", ",...").toUpperCase(Locale.ROOT))
                .description(text.replace("%", "%%")).build());
        }
        return new CommandLine(help).getUsageMessage();
    }

    private Operation named() {
        try {
            return Operation.named(kinds, operation());
        } catch (IllegalArgumentException e) {
            throw new ParameterException(model.commandLine(), e.getMessage());
        }
    }

    /** The layer is null where the kinds take none. */
    int change(List<String> names, String layer) {
        Operation operation = named();
        Map<String, Value> values = values(operation);
        checkUsage(names);
        if (out != null && !out.equals(STANDARD)) {
            WholeFile.check(out);
            checkExtension();
        }
        List<Input> inputs = Input.all(names, recursive, folder);
        if (out != null && inputs.size() != 1) {
            throw new ParameterException(model.commandLine(),
                "-o takes one picture, not " + inputs.size() + "; name a folder with --out-dir");
        }
        Input over = layer == null ? null : Input.of(layer);
        if (over != null && over.isStandard() && inputs.stream().anyMatch(Input::isStandard)) {
            throw new Failure("-", "standard input can be read once only");
        }
        Map<Input, Path> targets = out == null ? targets(inputs, over) : Map.of(inputs.get(0), out);
        Bitmap whole = over == null ? null : read(over);
        AtomicInteger skipped = new AtomicInteger();
        Batch batch = new Batch();
        batch.each(inputs, input -> {
            Path target = targets.get(input);
            if (skipExisting && Files.exists(target)) {
                skipped.incrementAndGet();
            } else {
                change(input, target, operation, values, whole, inputs.size());
            }
            return target;
        }, target -> { });
        if (inputs.size() > 1 && Terminal.isWatched()) {
            int written = inputs.size() - skipped.get() - batch.failed();
            System.err.println("fennic: " + written + " written, " + skipped + " skipped, " + batch.failed() + " failed");
        }
        return batch.exitCode();
    }

    private void checkUsage(List<String> names) {
        if (names.isEmpty()) {
            throw new ParameterException(model.commandLine(), "Missing required parameter: 'LAYER'");
        }
        if ((out == null) == (folder == null)) {
            throw new ParameterException(model.commandLine(), out == null
                ? "Missing required option: '--out=OUT' or '--out-dir=DIR'" : "--out and --out-dir exclude each other");
        }
        if (skipExisting && overwrite) {
            throw new ParameterException(model.commandLine(), "--skip-existing and --overwrite exclude each other");
        }
        if (out != null && suffix != null) {
            throw new ParameterException(model.commandLine(), "--suffix goes with --out-dir");
        }
        if (suffix != null && suffix.indexOf('/') >= 0) {
            throw new ParameterException(model.commandLine(), "--suffix is a part of a name, without /");
        }
    }

    private void checkExtension() {
        String name = out.getFileName().toString();
        int dot = name.lastIndexOf('.');
        if (dot > 0 && !name.substring(dot).matches("(?i)\\.(png|jpe?g)")) {
            throw new ParameterException(model.commandLine(),
                out + ": cannot be written as " + name.substring(dot) + "; name it .png or .jpg");
        }
    }

    /** Where each result goes, once it is sure that none takes the place of another or of a picture. */
    private Map<Input, Path> targets(List<Input> inputs, Input layer) {
        checkFolder();
        Set<Path> pictures = new HashSet<>();
        Stream.concat(inputs.stream(), Stream.ofNullable(layer)).filter(input -> !input.isStandard())
            .forEach(input -> pictures.add(real(input.file())));
        Map<Input, Path> targets = new HashMap<>();
        Map<Path, Input> takers = new HashMap<>();
        for (Input input : inputs) {
            Path target = target(input);
            Input other = takers.putIfAbsent(target.toAbsolutePath().normalize(), input);
            if (other != null) {
                throw new Failure(target, input.equals(other) ? input + " is named twice; name it once"
                    : other + " and " + input + " would both become this file; "
                        + "change them in two runs with other --suffix or --out-dir");
            }
            Path existing = real(target);
            if (pictures.contains(existing) && !(overwrite && existing.equals(real(input.file())))) {
                throw new Failure(target, "a picture to read; choose another --out-dir or --suffix"
                    + (existing.equals(real(input.file())) ? ", or replace it with --overwrite" : ""));
            }
            targets.put(input, target);
        }
        return targets;
    }

    private Path target(Input input) {
        if (input.isStandard()) {
            throw new Failure("-", "standard input has no name; name the result with -o");
        }
        String name = input.place().getFileName().toString();
        String ending = (suffix == null ? "" : "-" + suffix) + ".png";
        if (name.endsWith(ending) && suffix == null) {
            return folder.resolve(input.place());
        }
        if (input.isUnspeakable()) {
            throw new Failure(input, "no name can be made of this one, which is not UTF-8; rename it");
        }
        return folder.resolve(input.place().resolveSibling(name.replaceFirst("(?<=.)\\.[^.]*$", "") + ending));
    }

    private static Path real(Path file) {
        try {
            return file.toRealPath();
        } catch (IOException e) {
            return file.toAbsolutePath().normalize();
        }
    }

    private void checkFolder() {
        Path existing = folder.toAbsolutePath().normalize();
        while (!Files.exists(existing)) {
            existing = existing.getParent();
        }
        if (!Files.isDirectory(existing) || !Files.isWritable(existing)) {
            throw new Failure(folder, (Files.isDirectory(existing) ? "no permission to write in " : "not a folder: ") + existing
                + "; name another place with --out-dir");
        }
    }

    private void change(Input input, Path target, Operation operation, Map<String, Value> values, Bitmap layer, int inputs) {
        try (Progress progress = new Progress(inputs == 1 && Terminal.isWatched() ? 3 : 0)) {
            progress.step("reading " + input);
            Bitmap picture = mutable(read(input));
            progress.step("changing " + input);
            Bitmap over = layer == null ? null : fitted(layer, picture.getWidth(), picture.getHeight());
            Bitmap result = operation.change(picture, over, values);
            progress.step("writing " + target);
            write(result, target);
        } catch (IllegalArgumentException e) {
            throw new Failure(input, e.getMessage());
        }
    }

    private static Bitmap read(Input input) {
        byte[] bytes = Pngs.bytes(input);
        Dropped.warn(input, bytes, EnumSet.allOf(Dropped.class));
        return Pngs.decode(input, bytes);
    }

    private static Bitmap mutable(Bitmap bitmap) {
        return bitmap.isMutable() && bitmap.getConfig() == Bitmap.Config.ARGB_8888 ? bitmap
            : bitmap.copy(Bitmap.Config.ARGB_8888, true);
    }

    /** The layer in a picture's size. Icons come in few sizes, so these few are kept. */
    private Bitmap fitted(Bitmap layer, int width, int height) {
        if (layers.size() > 16) {
            layers.clear();
        }
        return layers.computeIfAbsent(List.of(width, height), size -> Pngs.scaled(layer, width, height));
    }

    private void write(Bitmap result, Path target) {
        WholeFile.Content content = target.toString().matches("(?i).*\\.jpe?g") ? stream -> {
            if (!result.compress(Bitmap.CompressFormat.JPEG, 95, stream)) {
                throw new IOException("no JPEG can be made here; name it .png");
            }
        } : stream -> PngWriter.write(result, stream);
        try {
            if (target.equals(STANDARD)) {
                content.writeTo(System.out);
                return;
            }
            if (folder != null) {
                Files.createDirectories(target.toAbsolutePath().getParent());
            }
        } catch (IOException e) {
            throw new Failure(target, "its folder cannot be made: " + WholeFile.reason(e));
        }
        WholeFile.write(target, content);
    }

    private Map<String, Value> values(Operation operation) {
        Map<String, Value> values = new HashMap<>();
        try {
            names().forEach(name -> {
                String text = model.findOption("--" + name).getValue();
                if (text != null) {
                    values.put(name, operation.choices().stream().filter(p -> p.name().equals(name)).findFirst()
                        .orElseThrow(() -> new IllegalArgumentException(operation.name() + " takes no --" + name)).value(text));
                }
            });
        } catch (IllegalArgumentException e) {
            throw new ParameterException(model.commandLine(), e.getMessage());
        }
        return values;
    }

    private Stream<String> names() {
        return Operation.of(kinds).stream().flatMap(operation -> operation.choices().stream()).map(Parameter::name).distinct();
    }
}
