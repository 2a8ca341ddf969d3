package com.velmora.display.fennic.desktop;

import static java.nio.file.LinkOption.NOFOLLOW_LINKS;
import static java.nio.file.StandardOpenOption.CREATE_NEW;
import static java.nio.file.StandardOpenOption.WRITE;

import java.io.IOException;
import java.nio.channels.FileChannel;
import java.nio.file.DirectoryIteratorException;
import java.nio.file.FileAlreadyExistsException;
import java.nio.file.Files;
import java.nio.file.NoSuchFileException;
import java.nio.file.Path;
import java.nio.file.attribute.PosixFilePermissions;
import java.nio.file.attribute.UserPrincipal;

/**
 * A new folder of this process alone, deleted when it is closed. While it is in use, a file in it is locked; the lock goes with
 * the process, however that ends, and whoever makes the next folder beside it deletes what is left.
 *
 * <p>Whoever deletes holds the lock, and deletes the locked file after all others. So who has made a folder, its file and the
 * lock one after the other sees at the end whether somebody took it for an abandoned one in between, and makes another one.
 */
final class PrivateFolder implements AutoCloseable {
    private static final String PREFIX = "fennic-natives-", LOCKED = "locked";

    private final Path path;
    private final FileChannel lock;

    private PrivateFolder(Path path, FileChannel lock) {
        this.path = path;
        this.lock = lock;
    }

    static PrivateFolder in(Path parent) throws IOException {
        while (true) {
            Path path = create(parent.toAbsolutePath());
            FileChannel lock = null;
            try {
                lock = FileChannel.open(path.resolve(LOCKED), CREATE_NEW, WRITE);
                if (lock.tryLock() != null && Files.exists(path.resolve(LOCKED))) {
                    deleteAbandoned(path);
                    return new PrivateFolder(path, lock);
                }
                lock.close();
            } catch (NoSuchFileException e) {
                // Deleted before its file was there.
            } catch (IOException e) {
                if (lock != null) {
                    lock.close();
                }
                delete(path);
                throw e;
            }
        }
    }

    /** A name need not be a secret, for which the JDK wakes its cryptography: one that is taken, by a link too, is refused. */
    private static Path create(Path parent) throws IOException {
        var ownersOnly = PosixFilePermissions.asFileAttribute(PosixFilePermissions.fromString("rwx------"));
        while (true) {
            try {
                return Files.createDirectory(parent.resolve(PREFIX.concat(Long.toHexString(System.nanoTime()))), ownersOnly);
            } catch (FileAlreadyExistsException e) {
                // Another start's, then.
            }
        }
    }

    Path path() {
        return path;
    }

    /** What cannot be deleted is left for the next start: that is no reason to fail. */
    @Override
    public void close() {
        try (lock) {
            delete(path);
        } catch (IOException e) {
            // Left.
        }
    }

    private static void deleteAbandoned(Path own) {
        try (var folders = Files.newDirectoryStream(own.getParent())) {
            UserPrincipal self = Files.getOwner(own);
            for (Path folder : folders) {
                if (folder.getFileName().toString().startsWith(PREFIX) && !folder.equals(own)) {
                    deleteIfAbandoned(folder, self);
                }
            }
        } catch (IOException | DirectoryIteratorException e) {
            // A folder that cannot be listed keeps what it has.
        }
    }

    /** Links and other people's folders are let alone. */
    private static void deleteIfAbandoned(Path folder, UserPrincipal self) {
        try {
            if (!Files.isDirectory(folder, NOFOLLOW_LINKS) || !Files.getOwner(folder, NOFOLLOW_LINKS).equals(self)) {
                return;
            }
            try (var lock = FileChannel.open(folder.resolve(LOCKED), WRITE, NOFOLLOW_LINKS)) {
                if (lock.tryLock() != null) {
                    delete(folder);
                }
            } catch (NoSuchFileException e) {
                Files.delete(folder);
            }
        } catch (IOException e) {
            // Gone already, or not empty and so not ours.
        }
    }

    private static void delete(Path folder) throws IOException {
        for (String name : Libraries.NAMES) {
            Files.deleteIfExists(folder.resolve(System.mapLibraryName(name)));
        }
        Files.deleteIfExists(folder.resolve(LOCKED));
        Files.deleteIfExists(folder);
    }
}
