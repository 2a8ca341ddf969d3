package com.velmora.display.fennic.cli;

import java.io.File;
import java.io.IOException;
import java.io.OutputStream;

/** A progress bar on the terminal by pv, which is fed a line for every picture; nothing if nobody watches or pv is missing. */
final class Bar implements AutoCloseable {
    private static final String CLEAR_LINE = "\r\033[K";

    private final Process pv;

    Bar(int total) {
        pv = total > 1 && Terminal.isWatched() ? started(total) : null;
    }

    private static Process started(int total) {
        try {
            // It shows itself after a second: what is done by then needs no bar.
            return new ProcessBuilder("pv", "-l", "-s", "" + total, "-N", "fennic", "-D", "1")
                .redirectOutput(ProcessBuilder.Redirect.DISCARD)
                .redirectError(ProcessBuilder.Redirect.appendTo(new File(Terminal.DEVICE)))
                .start();
        } catch (IOException e) {
            return null;
        }
    }

    synchronized void step() {
        if (pv != null) {
            try {
                OutputStream lines = pv.getOutputStream();
                lines.write('\n');
                lines.flush();
            } catch (IOException e) {
                // The bar is gone; the work goes on.
            }
        }
    }

    /** What makes room for a line of text. */
    String room() {
        return pv == null ? "" : CLEAR_LINE;
    }

    @Override
    public void close() {
        if (pv != null) {
            try {
                pv.getOutputStream().close();
                pv.waitFor();
            } catch (IOException e) {
                pv.destroy();
            } catch (InterruptedException e) {
                Thread.currentThread().interrupt();
            }
        }
    }
}
