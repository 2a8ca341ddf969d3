package com.velmora.display.fennic.cli;

import java.util.List;
import picocli.CommandLine.Command;
import picocli.CommandLine.Parameters;

@Command(
    name = "blend",
    customSynopsis = {
        "fennic blend MODE BASE LAYER [--PARAMETER=VALUE ...] -o OUT",
        "       fennic blend MODE BASE... LAYER [--PARAMETER=VALUE ...] --out-dir DIR",
        "       fennic blend MODE --help"},
    description = "Blends a layer into pictures and writes what comes of them.")
final class Blend extends Change {
    static final class Modes extends Candidates {
        Modes() {
            super("BLEND");
        }
    }

    @Parameters(
        index = "0",
        paramLabel = "MODE",
        completionCandidates = Modes.class,
        description = "A name that 'fennic list' shows as BLEND, or a mode's number.")
    private String mode;

    @Parameters(
        index = "1..*",
        arity = "1..*",
        paramLabel = "BASE... LAYER",
        description = "The pictures to blend into and, last, the one to lay over each, scaled to its size. A base is a "
            + "picture (PNG, JPEG, GIF, BMP or WebP, whatever its name), a folder with --recursive, @LIST for a file with a name "
            + "a line, or - for standard input; the layer is a picture or -.")
    private List<String> pictures;

    Blend() {
        super("BLEND");
    }

    @Override
    String operation() {
        return mode != null && mode.matches("\\d+") ? "mode-" + mode : mode;
    }

    @Override
    public Integer call() {
        int last = pictures.size() - 1;
        return change(pictures.subList(0, last), pictures.get(last));
    }
}
