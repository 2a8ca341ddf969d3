package com.velmora.display.fennic.desktop;

import java.io.File;
import java.io.IOException;
import java.io.InputStream;
import java.nio.file.Files;
import java.nio.file.InvalidPathException;
import java.nio.file.Path;
import java.util.HashSet;
import java.util.List;
import java.util.Locale;
import java.util.Set;

/**
 * The native libraries of a desktop JVM: {@code libfennic}, and {@code libjnigraphics} and {@code liblog}, which it needs; and
 * {@code libfennic-webp}, which needs the system's libwebp.
 *
 * <p>A library that stands in a folder of {@code java.library.path} is taken from there, with its neighbours. Otherwise it
 * comes out of this jar: all are unpacked into a fresh folder that nobody else may enter, loaded, and deleted at once, for
 * Linux keeps what is loaded. That folder is made in {@code java.io.tmpdir} or, where this fails, in {@code user.home}.
 *
 * <p>Each class loader has a library of its own, as the JVM wants it: where one has loaded a file of {@code java.library.path},
 * the next one loads a copy of it.
 */
public final class Libraries {
    static final List<String> NAMES = List.of("fennic", "jnigraphics", "log", "fennic-webp");
    private static final Set<String> LOADED = new HashSet<>();
    /** A string literal is the same object in every class loader. Locked files keep processes apart, this one loaders. */
    private static final Object ONE_AT_A_TIME = "com.velmora.display.fennic.desktop.Libraries";
    private static final String OTHER_FOLDER = "Name a folder whose files can be written and run with -Djava.io.tmpdir=FOLDER,"
        + " or unpack the libraries from the jar's %s and name their folder with -Djava.library.path=FOLDER";
    private static final String OTHER_SYSTEM = "There are libraries for Linux on x86_64 and aarch64, with glibc 2.31 or newer;"
        + " elsewhere a container or virtual machine of that kind runs them";

    private Libraries() {}

    /**
     * Loads a library for the class loader of this class, once.
     *
     * @param name the library's name, as {@link System#loadLibrary} takes it
     * @throws UnsatisfiedLinkError if it is not there or cannot be loaded; the message says where it was looked for, and what
     *     helps
     */
    public static void load(String name) {
        synchronized (ONE_AT_A_TIME) {
            if (LOADED.contains(name)) {
                return;
            }
            Path given = inLibraryPath(System.mapLibraryName(name));
            if (given != null) {
                load(given);
            } else {
                loadFromJar(System.mapLibraryName(name));
            }
            LOADED.add(name);
        }
    }

    private static Path inLibraryPath(String file) {
        for (String folder : System.getProperty("java.library.path", "").split(File.pathSeparator)) {
            try {
                Path path = Path.of(folder, file).toAbsolutePath();
                if (!folder.isEmpty() && Files.isRegularFile(path)) {
                    return path;
                }
            } catch (InvalidPathException e) {
                // Not a folder, then.
            }
        }
        return null;
    }

    private static void load(Path given) {
        try {
            System.load(given.toString());
        } catch (UnsatisfiedLinkError refused) {
            // Another class loader may have it. A copy is a file of its own; one that cannot be loaded at all fails again.
            try {
                loadCopy(given.getParent(), given.getFileName().toString());
            } catch (UnsatisfiedLinkError copyRefused) {
                throw new UnsatisfiedLinkError(refused.getMessage() + ". Nor does a copy help: " + copyRefused.getMessage());
            }
        }
    }

    private static void loadFromJar(String file) {
        if (Libraries.class.getResource(resource(file)) == null) {
            throw new UnsatisfiedLinkError("No " + file + " for " + System.getProperty("os.name") + " on "
                + System.getProperty("os.arch") + ": none in java.library.path (" + System.getProperty("java.library.path")
                + "), and the jar has no " + resource(file) + ". " + OTHER_SYSTEM);
        }
        loadCopy(null, file);
    }

    /**
     * Loads a copy of a library in a folder with its neighbours', which it finds there: its run path is its own folder.
     *
     * @param from the folder that they are taken from; null for the jar
     */
    private static void loadCopy(Path from, String library) {
        var refusals = new StringBuilder();
        for (String parent : List.of("java.io.tmpdir", "user.home")) {
            String place = System.getProperty(parent, "");
            try (var folder = PrivateFolder.in(Path.of(place))) {
                for (String name : NAMES) {
                    String file = System.mapLibraryName(name);
                    try (InputStream in = open(from, file)) {
                        if (in != null) {
                            Files.copy(in, folder.path().resolve(file));
                        }
                    }
                }
                System.load(folder.path().resolve(library).toString());
                return;
            } catch (IOException | RuntimeException | UnsatisfiedLinkError e) {
                refusals.append("In ").append(parent).append(" (").append(place).append("): ").append(e).append(". ");
            }
        }
        throw new UnsatisfiedLinkError(library + " could not be unpacked and loaded. " + refusals
            + (isOnMusl() ? "This JVM runs on musl. " + OTHER_SYSTEM : OTHER_FOLDER.formatted(resource(""))));
    }

    private static InputStream open(Path folder, String file) throws IOException {
        if (folder == null) {
            return Libraries.class.getResourceAsStream(resource(file));
        }
        return Files.isRegularFile(folder.resolve(file)) ? Files.newInputStream(folder.resolve(file)) : null;
    }

    /** Without the operator for strings, whose first use takes a JVM a while. */
    private static String resource(String file) {
        String machine = System.getProperty("os.arch");
        machine = machine.equals("amd64") ? "x86_64" : machine.equals("arm64") ? "aarch64" : machine;
        String system = System.getProperty("os.name").toLowerCase(Locale.ROOT).replace(' ', '-');
        return String.join("/", "/com/velmora/display/fennic/desktop", String.join("-", system, machine), file);
    }

    /** The C library that this process runs on names itself among what is mapped. */
    private static boolean isOnMusl() {
        try {
            return Files.readString(Path.of("/proc/self/maps")).contains("/ld-musl-");
        } catch (IOException e) {
            return false;
        }
    }
}
