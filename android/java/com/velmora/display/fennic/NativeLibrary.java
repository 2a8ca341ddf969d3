package com.velmora.display.fennic;

/** Where the natives come from on Android: the application's own libraries. */
final class NativeLibrary {
    private NativeLibrary() {}

    static void load() {
        System.loadLibrary("fennic");
    }
}
