package com.velmora.display.fennic.cli;

/** What the script that starts the command line knows of the terminal, and whether anything shall be said on it. */
final class Terminal {
    /** The device behind the error stream, or empty. */
    static final String DEVICE = System.getProperty("fennic.terminal", "");

    private static final int NARROWEST = 55;
    private static volatile boolean quiet;

    private Terminal() {}

    static void keepQuiet() {
        quiet = true;
    }

    static boolean isQuiet() {
        return quiet;
    }

    /** Whether somebody sees what is under way. */
    static boolean isWatched() {
        return !quiet && !DEVICE.isEmpty();
    }

    /** The columns of what is printed to, or 0 where lines may have any length. */
    static int columns() {
        int columns = Integer.getInteger("fennic.columns", 0);
        return columns > 0 ? Math.max(NARROWEST, columns) : 0;
    }
}
