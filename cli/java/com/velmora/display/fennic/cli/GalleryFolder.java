package com.velmora.display.fennic.cli;

import static java.nio.charset.StandardCharsets.UTF_8;

import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.Comparator;
import java.util.List;
import java.util.stream.Stream;

/** A folder with index.html, try.html and pictures in images, which take the place of a former gallery's and of nothing else. */
final class GalleryFolder {
    /** By this line of its head a page is known as a gallery. */
    private static final String TITLE = "<title>fennic gallery</title>";

    private final Path folder;
    private final Path images;

    /** Says before any work is done what would keep the gallery from being written. */
    GalleryFolder(Path folder) {
        this.folder = folder;
        images = folder.resolve("images");
        Path existing = images.toAbsolutePath();
        while (!Files.exists(existing)) {
            existing = existing.getParent();
        }
        if (!Files.isDirectory(existing) || !Files.isWritable(existing)) {
            String why = Files.isDirectory(existing) ? "no permission to write in " : "not a folder: ";
            throw new Failure(folder, why + existing + "; name another place with --out");
        }
        if ((Files.exists(index()) || Files.exists(images)) && !isGallery()) {
            throw new Failure(folder, "holds a page or pictures that are no gallery; name another place with --out");
        }
    }

    Path index() {
        return folder.resolve("index.html");
    }

    private boolean isGallery() {
        try {
            return Files.readString(index()).contains(TITLE);
        } catch (IOException e) {
            return false;
        }
    }

    /** The pictures are whole before they take their name; the page, without which they are not seen, comes last. */
    void write(String page, String livePage, List<Gallery.Picture> pictures) {
        long process = ProcessHandle.current().pid();
        Path fresh = folder.resolve(".images." + process + ".tmp");
        Path former = folder.resolve(".former." + process + ".tmp");
        try {
            Files.createDirectories(fresh);
            for (Gallery.Picture picture : pictures) {
                Files.write(fresh.resolve(picture.name() + ".png"), picture.png());
            }
            if (Files.exists(images)) {
                Files.move(images, former);
            }
            Files.move(fresh, images);
            if (livePage == null) {
                Files.deleteIfExists(folder.resolve("try.html"));
            } else {
                Pngs.write(folder.resolve("try.html"), livePage.getBytes(UTF_8));
            }
            Pngs.write(index(), page.getBytes(UTF_8));
        } catch (IOException e) {
            throw new Failure(folder, "cannot be written: " + e.getMessage() + "; name another place with --out");
        } finally {
            remove(fresh);
            remove(former);
        }
    }

    private static void remove(Path folder) {
        try (Stream<Path> files = Files.exists(folder) ? Files.walk(folder) : Stream.empty()) {
            files.sorted(Comparator.reverseOrder()).forEach(file -> file.toFile().delete());
        } catch (IOException e) {
            throw new Failure(folder, "is left over and cannot be removed; remove it by hand");
        }
    }
}
