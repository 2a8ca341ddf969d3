package com.velmora.display.fennic;

import com.velmora.display.fennic.desktop.Libraries;

/** Where the natives come from on a desktop JVM. */
final class NativeLibrary {
    private NativeLibrary() {}

    static void load() {
        Libraries.load("fennic");
    }
}
