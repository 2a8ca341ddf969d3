package com.velmora.display.fennic.cli;

import static java.util.stream.Collectors.joining;

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
                operation.parameters().stream().map(Object::toString).collect(joining(" ")),
                operation.summary());
        }
        table.print(System.out);
        return 0;
    }
}
