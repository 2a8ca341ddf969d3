package com.velmora.display.fennic.cli;

import static java.nio.charset.StandardCharsets.UTF_8;

import java.io.FileNotFoundException;
import java.io.IOException;
import java.io.InputStream;

/** The files that the jar holds beside its classes. */
final class Resource {
    private Resource() {}

    static String text(String name) {
        try (InputStream in = Resource.class.getResourceAsStream(name)) {
            if (in == null) {
                throw new FileNotFoundException(name);
            }
            return new String(in.readAllBytes(), UTF_8);
        } catch (IOException e) {
            throw new Failure(name, "missing from fennic-cli.jar; build the jar anew");
        }
    }
}
