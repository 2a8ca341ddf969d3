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
            System.out.print(Markdown.table());
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
}
