package com.velmora.display.fennic.cli;

/**
 * Progress on stderr: one line that is rewritten on a terminal, plain lines elsewhere. Every line is whole, because the script
 * that starts the command line passes them on line by line; it says whether they end on a terminal.
 */
final class Progress implements AutoCloseable {
    private static final String REWRITE_LINE = "\033[A\r\033[K";

    private final boolean terminal = !Terminal.DEVICE.isEmpty();
    private final int total;
    private int done;

    /** Of nothing, it says nothing. */
    Progress(int total) {
        this.total = total;
    }

    void step(String what) {
        if (total == 0 || Terminal.isQuiet()) {
            return;
        }
        System.err.printf("%s[%d/%d] %s%n", terminal && done > 0 ? REWRITE_LINE : "", ++done, total, what);
    }

    @Override
    public void close() {
        if (terminal && done > 0) {
            System.err.print(REWRITE_LINE);
            System.err.flush();
        }
    }
}
