package com.velmora.display.fennic.cli;

import java.io.BufferedOutputStream;
import java.io.FileDescriptor;
import java.io.FileOutputStream;
import java.io.FilterOutputStream;
import java.io.IOException;
import java.io.PrintStream;
import java.nio.charset.Charset;

/** Standard output that keeps in mind why it could not be written, which a print stream by itself forgets. */
final class StandardOutput extends FilterOutputStream {
    private IOException failure;

    private StandardOutput() {
        super(new FileOutputStream(FileDescriptor.out));
    }

    static StandardOutput install() {
        StandardOutput output = new StandardOutput();
        System.setOut(new PrintStream(new BufferedOutputStream(output, 1 << 16), false, Charset.defaultCharset()));
        return output;
    }

    @Override
    public void write(int b) throws IOException {
        write(new byte[] {(byte) b}, 0, 1);
    }

    @Override
    public void write(byte[] bytes, int offset, int length) throws IOException {
        try {
            out.write(bytes, offset, length);
        } catch (IOException e) {
            failure = failure == null ? e : failure;
            throw e;
        }
    }

    /** Why something that was printed is lost, or null; whoever closes a pipe wants no more. */
    String loss() {
        System.out.flush();
        return failure == null || String.valueOf(failure.getMessage()).contains("Broken pipe") ? null
            : "standard output: cannot be written: " + failure.getMessage() + "; write to another place";
    }
}
