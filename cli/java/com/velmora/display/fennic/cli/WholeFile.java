package com.velmora.display.fennic.cli;

import java.io.BufferedOutputStream;
import java.io.FileNotFoundException;
import java.io.IOException;
import java.io.OutputStream;
import java.nio.channels.Channels;
import java.nio.channels.FileChannel;
import java.nio.file.FileSystemException;
import java.nio.file.Files;
import java.nio.file.Path;
import java.nio.file.StandardCopyOption;
import java.nio.file.StandardOpenOption;
import java.util.HashSet;
import java.util.Set;
import java.util.concurrent.ConcurrentHashMap;
import java.util.concurrent.atomic.AtomicInteger;
import java.util.regex.Matcher;
import java.util.regex.Pattern;
import java.util.stream.Stream;

/**
 * Files that appear whole or not at all: the bytes go to a neighbour that then takes the name. Whatever stops the process takes
 * unfinished neighbours along; those of a process that was killed go when the next one writes into their folder.
 */
final class WholeFile {
    interface Content {
        void writeTo(OutputStream out) throws IOException;
    }

    private static final long PID = ProcessHandle.current().pid();
    private static final Pattern NEIGHBOUR = Pattern.compile("\\.fennic-(\\d{1,9})-\\d+\\.tmp");

    private static final AtomicInteger COUNT = new AtomicInteger();
    private static final Set<Path> SWEPT = ConcurrentHashMap.newKeySet();
    private static final Set<Path> UNFINISHED = new HashSet<>();
    private static boolean stopping;

    static {
        Runtime.getRuntime().addShutdownHook(new Thread(WholeFile::stop));
    }

    private WholeFile() {}

    /** Says before any work is done what would keep the file from being written. */
    static void check(Path file) {
        Path parent = file.toAbsolutePath().getParent();
        if (parent == null || Files.isDirectory(file)) {
            throw new Failure(file, "a folder; name the file to write");
        }
        if (!Files.isDirectory(parent)) {
            boolean taken = Files.exists(parent);
            String why = taken ? parent + " is a file, no folder; choose another" : "its folder is missing; create it first";
            throw new Failure(file, why);
        }
        if (!Files.isWritable(parent) || Files.exists(file) && !Files.isWritable(file)) {
            throw new Failure(file, "no permission to write it; mend with chmod +w or choose another place");
        }
        if (Files.exists(file) && !Files.isRegularFile(file)) {
            throw new Failure(file, "not a plain file; choose another name, or - for standard output");
        }
    }

    static void write(Path file, Content content) {
        check(file);
        Path neighbour = null;
        try {
            Path target = Files.exists(file) ? file.toRealPath() : file.toAbsolutePath();
            sweep(target.getParent());
            neighbour = target.resolveSibling(".fennic-" + PID + "-" + COUNT.incrementAndGet() + ".tmp");
            try (OutputStream out = new BufferedOutputStream(create(neighbour), 1 << 16)) {
                content.writeTo(out);
            }
            if (Files.exists(target)) {
                keepMode(target, neighbour);
            }
            Files.move(neighbour, target, StandardCopyOption.ATOMIC_MOVE);
            moved(neighbour);
        } catch (IOException e) {
            throw new Failure(file, "cannot be written: " + reason(e));
        } finally {
            if (neighbour != null) {
                remove(neighbour);
            }
        }
    }

    private static void keepMode(Path from, Path to) throws IOException {
        try {
            Files.setPosixFilePermissions(to, Files.getPosixFilePermissions(from));
        } catch (UnsupportedOperationException e) {
            // A file system without modes has none to keep.
        }
    }

    private static synchronized OutputStream create(Path neighbour) throws IOException {
        if (stopping) {
            throw new FileNotFoundException("stopped");
        }
        UNFINISHED.add(neighbour);
        FileChannel channel = FileChannel.open(neighbour, StandardOpenOption.CREATE_NEW, StandardOpenOption.WRITE);
        isFree(channel);
        return Channels.newOutputStream(channel);
    }

    private static synchronized void moved(Path neighbour) {
        UNFINISHED.remove(neighbour);
    }

    private static synchronized void remove(Path neighbour) {
        if (UNFINISHED.remove(neighbour)) {
            neighbour.toFile().delete();
        }
    }

    private static synchronized void stop() {
        stopping = true;
        UNFINISHED.forEach(neighbour -> neighbour.toFile().delete());
    }

    static synchronized boolean isStopping() {
        return stopping;
    }

    private static void sweep(Path folder) {
        if (!SWEPT.add(folder)) {
            return;
        }
        try (Stream<Path> files = Files.list(folder)) {
            for (Path file : (Iterable<Path>) files::iterator) {
                Matcher name = NEIGHBOUR.matcher(file.getFileName().toString());
                if (name.matches() && ProcessHandle.of(Long.parseLong(name.group(1))).isEmpty()) {
                    sweepOne(file);
                }
            }
        } catch (IOException e) {
            // A leftover that stays does no harm, and what cannot be listed may still be written to.
        }
    }

    /** The lock tells of a process that cannot be seen from here, in another container. */
    private static void sweepOne(Path file) throws IOException {
        try (FileChannel channel = FileChannel.open(file, StandardOpenOption.WRITE)) {
            if (isFree(channel)) {
                file.toFile().delete();
            }
        }
    }

    /** Locks the file for as long as it is open; a file system without locks has nobody else on it. */
    private static boolean isFree(FileChannel channel) {
        try {
            return channel.tryLock() != null;
        } catch (IOException e) {
            return true;
        }
    }

    static String reason(IOException e) {
        String reason = e instanceof FileSystemException file ? file.getReason() : e.getMessage();
        return reason == null ? e.getClass().getSimpleName() : reason;
    }
}
