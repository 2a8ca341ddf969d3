package com.velmora.display.fennic.cli;

import java.nio.file.Path;
import picocli.CommandLine.Command;
import picocli.CommandLine.Parameters;

@Command(
    name = "effect",
    aliases = "filter",
    customSynopsis = "fennic effect NAME IN [--PARAMETER=VALUE ...] -o OUT",
    description = "Changes a picture and writes a PNG.")
final class Effect extends Change {
    @Parameters(index = "0", paramLabel = "NAME", description = "A name that 'fennic list' shows as EFFECT or FILTER.")
    private String name;

    @Parameters(index = "1", paramLabel = "IN", description = "The PNG to change.")
    private Path in;

    Effect() {
        super("EFFECT", "FILTER");
    }

    @Override
    public Integer call() {
        return change(name, in, null);
    }
}
