package com.velmora.display.fennic.cli;

/** docs/operations.md: what the library can do, by families, in the order of the list. */
final class Markdown {
    private Markdown() {}

    static String table() {
        StringBuilder text = new StringBuilder("""
            # Operations

            Every operation with its native, the same call by name, and the command line's name in the first column. The formulas,
            parameters and answers to bad arguments are in the Javadoc. `./fennic list --markdown` writes this file from
            `jni/Operations.def`.
            """);
        String family = "";
        for (Operation operation : Operation.all()) {
            if (operation.kind().equals("ABORT")) {
                continue;
            }
            if (!operation.family().equals(family)) {
                family = operation.family();
                text.append("\n## ").append(family).append("\n\n| | native | call | |\n|---|---|---|---|\n");
            }
            text.append("| %s | `%s` | `%s` | %s |\n".formatted(
                operation.name(), operation.nativeName(), operation.typedCall(), operation.summary()));
        }
        return text.toString();
    }
}
