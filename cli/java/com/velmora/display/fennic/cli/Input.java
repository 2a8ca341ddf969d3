package com.velmora.display.fennic.cli;

import java.io.IOException;
import java.nio.file.FileVisitResult;
import java.nio.file.FileVisitor;
import java.nio.file.Files;
import java.nio.file.InvalidPathException;
import java.nio.file.Path;
import java.nio.file.SimpleFileVisitor;
import java.nio.file.attribute.BasicFileAttributes;
import java.util.ArrayList;
import java.util.List;
import java.util.regex.Pattern;

/**
 * A picture to read, as the user named it: a file, or standard input where file is null. The place is where it stands in the
 * folder that was named, or its bare name.
 */
record Input(Path file, Path place) {
    private static final String STANDARD = "-";
    private static final Pattern PICTURE = Pattern.compile("(?i).+\\.(png|jpe?g|gif|bmp|webp)");

    /** What a file name that is not UTF-8 becomes in a JVM. */
    private static final char UNKNOWN = '\ufffd';

    static Input of(String name) {
        return name.equals(STANDARD) ? new Input(null, null) : of(path(name));
    }

    static Input of(Path file) {
        return new Input(file, file.getFileName() == null ? file : file.getFileName());
    }

    /** Files, standard input, lists of files and, where they are wanted, all pictures in folders but those in one of them. */
    static List<Input> all(List<String> names, boolean recursive, Path without) {
        List<Input> inputs = new ArrayList<>();
        for (String name : names) {
            if (name.startsWith("@") && name.length() > 1) {
                // One name a line, as it is: a name may hold blanks and quotes, and may begin with a dash or an @.
                for (String line : Pngs.text(of(name.substring(1))).split("\n")) {
                    if (!line.isEmpty()) {
                        add(inputs, of(path(line)), recursive, without);
                    }
                }
            } else {
                add(inputs, of(name), recursive, without);
            }
        }
        if (inputs.stream().filter(Input::isStandard).count() > 1) {
            throw new Failure("-", "standard input can be read once only");
        }
        return inputs;
    }

    private static void add(List<Input> inputs, Input input, boolean recursive, Path without) {
        if (!recursive || input.isStandard() || !Files.isDirectory(input.file)) {
            inputs.add(input);
            return;
        }
        List<Path> found = new ArrayList<>();
        Path leftOut = without == null ? null : without.toAbsolutePath().normalize();
        FileVisitor<Path> visitor = new SimpleFileVisitor<>() {
            @Override
            public FileVisitResult preVisitDirectory(Path folder, BasicFileAttributes attributes) {
                boolean isResults = folder != input.file && folder.toAbsolutePath().normalize().equals(leftOut);
                return isResults ? FileVisitResult.SKIP_SUBTREE : FileVisitResult.CONTINUE;
            }

            @Override
            public FileVisitResult visitFile(Path file, BasicFileAttributes attributes) {
                if (PICTURE.matcher(file.getFileName().toString()).matches()) {
                    found.add(file);
                }
                return FileVisitResult.CONTINUE;
            }

            /** Reading it tells why. */
            @Override
            public FileVisitResult visitFileFailed(Path file, IOException e) {
                found.add(file);
                return FileVisitResult.CONTINUE;
            }
        };
        try {
            Files.walkFileTree(input.file, visitor);
        } catch (IOException e) {
            throw new Failure(input, "cannot be read: " + WholeFile.reason(e));
        }
        if (found.isEmpty()) {
            throw new Failure(input, "holds no pictures (.png, .jpg, .gif, .bmp, .webp); name another folder");
        }
        found.stream().sorted().forEach(file -> inputs.add(new Input(file, input.file.relativize(file))));
    }

    private static Path path(String name) {
        try {
            return Path.of(name);
        } catch (InvalidPathException e) {
            throw new Failure(name, "no file name: " + e.getReason());
        }
    }

    boolean isStandard() {
        return file == null;
    }

    /** Whether its name, or a name made from it, would be another one than that of the file. */
    boolean isUnspeakable() {
        return file != null && file.toString().indexOf(UNKNOWN) >= 0;
    }

    @Override
    public String toString() {
        return isStandard() ? "standard input" : file.toString();
    }
}
