package com.velmora.display.fennic.desktop;

/** Finds the desktop's native libraries. */
public final class Libraries {
    private Libraries() {}

    /** Loads a library by its plain name, from {@code java.library.path}. */
    public static void load(String name) {
        System.loadLibrary(name);
    }
}
