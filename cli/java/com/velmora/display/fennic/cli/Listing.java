package com.velmora.display.fennic.cli;

import static java.util.stream.Collectors.joining;

import com.velmora.display.fennic.cli.Operation.Parameter;
import java.util.concurrent.Callable;
import picocli.CommandLine.Command;

@Command(name = "list", description = "Lists every operation of the library.")
final class Listing implements Callable<Integer> {
    @Override
    public Integer call() {
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
