package com.velmora.display.fennic.cli;

import static java.util.stream.Collectors.joining;

import com.velmora.display.fennic.cli.Operation.Parameter;
import java.util.concurrent.Callable;
import picocli.CommandLine.Command;
import picocli.CommandLine.Option;

@Command(name = "list", description = "Lists every operation of the library.")
final class Listing implements Callable<Integer> {
    @Option(names = "--markdown", description = "Print the table of docs/operations.md.")
    private boolean markdown;

    @Override
    public Integer call() {
        if (markdown) {
            System.out.print(markdown());
            return 0;
        }
        Table table = new Table("kind", "name", "native", "parameters", "what it does");
        for (Operation operation : Operation.all()) {
            table.add(
                operation.kind(),
                operation.name(),
                operation.nativeName(),
                operation.parameters().stream().filter(Parameter::isValue).map(Parameter::toString).collect(joining(" ")),
                operation.summary());
        }
        table.print(System.out);
        return 0;
    }

    /** By kind and family; the numbered operations follow each other as they do in the list. */
    private static String markdown() {
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
