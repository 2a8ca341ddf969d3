package com.velmora.display.fennic.cli;

import java.util.List;
import picocli.CommandLine.Command;
import picocli.CommandLine.Parameters;

@Command(
    name = "effect",
    aliases = "filter",
    customSynopsis = {
        "fennic effect NAME IN [--PARAMETER=VALUE ...] -o OUT",
        "       fennic effect NAME IN... [--PARAMETER=VALUE ...] --out-dir DIR",
        "       fennic effect NAME --help"},
    description = "Changes pictures and writes what comes of them.")
final class Effect extends Change {
    static final class Names extends Candidates {
        Names() {
            super("EFFECT", "FILTER");
        }
    }

    @Parameters(
        index = "0",
        paramLabel = "NAME",
        completionCandidates = Names.class,
        description = "A name that 'fennic list' shows as EFFECT or FILTER.")
    private String name;

    @Parameters(
        index = "1..*",
        arity = "1..*",
        paramLabel = "IN",
        description = "Pictures (PNG, JPEG, GIF, BMP or WebP, whatever their names), folders with --recursive, @LIST for a file "
            + "with a name a line, or - for standard input.")
    private List<String> in;

    Effect() {
        super("EFFECT", "FILTER");
    }

    @Override
    String operation() {
        return name;
    }

    @Override
    public Integer call() {
        return change(in, null);
    }
}
