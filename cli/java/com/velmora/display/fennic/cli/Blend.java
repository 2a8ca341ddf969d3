package com.velmora.display.fennic.cli;

import java.nio.file.Path;
import picocli.CommandLine.Command;
import picocli.CommandLine.Parameters;

@Command(
    name = "blend",
    customSynopsis = "fennic blend MODE BASE LAYER [--PARAMETER=VALUE ...] -o OUT",
    description = "Blends a layer into a base and writes a PNG.")
final class Blend extends Change {
    @Parameters(index = "0", paramLabel = "MODE", description = "A name that 'fennic list' shows as BLEND, or a mode's number.")
    private String mode;

    @Parameters(index = "1", paramLabel = "BASE", description = "The PNG to blend into.")
    private Path base;

    @Parameters(index = "2", paramLabel = "LAYER", description = "The PNG to lay over it, scaled to the base's size.")
    private Path layer;

    Blend() {
        super("BLEND");
    }

    @Override
    public Integer call() {
        return change(mode.matches("\\d+") ? "mode-" + mode : mode, base, layer);
    }
}
