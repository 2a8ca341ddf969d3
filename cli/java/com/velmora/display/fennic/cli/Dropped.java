package com.velmora.display.fennic.cli;

import static java.nio.charset.StandardCharsets.ISO_8859_1;

import java.nio.ByteBuffer;
import java.nio.ByteOrder;
import java.util.EnumSet;
import java.util.Set;
import java.util.concurrent.ConcurrentHashMap;

/** What a picture file may hold that is not taken from it; each is warned of where it is met first. */
enum Dropped {
    DEPTH("has 16 bits a channel; only the upper 8 are taken"),
    ANIMATION("is an animation; only its first picture is taken"),
    ORIENTATION("is turned by its EXIF orientation, which is not followed; turn its pixels first"),
    EXIF("holds EXIF data, which no result has"),
    NINE_PATCH("is a compiled nine-patch, whose stretches no result has");

    /** These matter to whoever measures too. */
    static final Set<Dropped> PIXELS = EnumSet.of(DEPTH, ANIMATION, ORIENTATION);

    private static final Set<Dropped> TOLD = ConcurrentHashMap.newKeySet();
    private static final int ORIENTATION_TAG = 0x0112;

    private final String words;

    Dropped(String words) {
        this.words = words;
    }

    static void warn(Input input, byte[] bytes, Set<Dropped> about) {
        for (Dropped each : in(bytes)) {
            if (about.contains(each) && !Terminal.isQuiet() && TOLD.add(each)) {
                Fennic.complain("fennic: warning: " + input + ": " + each.words);
            }
        }
    }

    private static Set<Dropped> in(byte[] bytes) {
        Set<Dropped> found = EnumSet.noneOf(Dropped.class);
        try {
            switch (String.valueOf(Pngs.format(bytes))) {
                case "PNG" -> lookInPng(ByteBuffer.wrap(bytes), found);
                case "JPEG" -> lookInJpeg(ByteBuffer.wrap(bytes), found);
                default -> { }
            }
        } catch (IndexOutOfBoundsException e) {
            // A file that is cut short is for its decoder to tell of.
        }
        return found;
    }

    /** Behind eight bytes of signature, chunks of a length, a name, so many bytes and a sum. */
    private static void lookInPng(ByteBuffer png, Set<Dropped> found) {
        for (long at = 8; at < png.limit(); at += 12L + (png.getInt((int) at) & 0xffffffffL)) {
            switch (text(png, (int) at + 4, 4)) {
                case "IHDR" -> {
                    if (png.get((int) at + 16) == 16) {
                        found.add(DEPTH);
                    }
                }
                case "acTL" -> found.add(ANIMATION);
                case "eXIf" -> found.add(EXIF);
                case "npTc" -> found.add(NINE_PATCH);
                default -> { }
            }
        }
    }

    /** Behind two bytes, segments of 0xff, a kind, and a length that counts itself; the picture follows a segment 0xda. */
    private static void lookInJpeg(ByteBuffer jpeg, Set<Dropped> found) {
        for (int at = 2; jpeg.getShort(at) != (short) 0xffda; at += 2 + (jpeg.getShort(at + 2) & 0xffff)) {
            if (jpeg.getShort(at) == (short) 0xffe1 && text(jpeg, at + 4, 6).equals("Exif\0\0")) {
                found.add(EXIF);
                if (isTurned(jpeg.slice(at + 10, (jpeg.getShort(at + 2) & 0xffff) - 8))) {
                    found.add(ORIENTATION);
                }
            }
        }
    }

    /** The first directory's entries of twelve bytes: a tag, a type, a count and a value. */
    private static boolean isTurned(ByteBuffer tiff) {
        tiff.order(tiff.get(0) == 'I' ? ByteOrder.LITTLE_ENDIAN : ByteOrder.BIG_ENDIAN);
        int directory = tiff.getInt(4);
        for (int i = 0; i < tiff.getShort(directory); ++i) {
            int entry = directory + 2 + 12 * i;
            if (tiff.getShort(entry) == ORIENTATION_TAG) {
                return tiff.getShort(entry + 8) > 1;
            }
        }
        return false;
    }

    private static String text(ByteBuffer bytes, int at, int length) {
        byte[] text = new byte[length];
        bytes.get(at, text);
        return new String(text, ISO_8859_1);
    }
}
