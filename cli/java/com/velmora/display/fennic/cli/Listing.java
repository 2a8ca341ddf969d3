package com.velmora.display.fennic.cli;

import static java.util.stream.Collectors.joining;

import com.velmora.display.fennic.cli.Operation.Parameter;
import java.util.List;
import java.util.concurrent.Callable;
import picocli.CommandLine.Command;
import picocli.CommandLine.Help;
import picocli.CommandLine.Help.Ansi;
import picocli.CommandLine.Help.Column;
import picocli.CommandLine.Help.TextTable;
import picocli.CommandLine.Option;
import picocli.CommandLine.ParameterException;
import picocli.CommandLine.Parameters;
import picocli.CommandLine.Model.CommandSpec;
import picocli.CommandLine.Spec;

@Command(
    name = "list",
    description = "Lists every operation of the library. "
        + "On a terminal natives and parameters are left out, unless names are given.")
final class Listing implements Callable<Integer> {
    @Parameters(arity = "0..*", paramLabel = "NAME", description = "Operations to tell all about.")
    private List<String> names = List.of();

    @Option(names = "--json", description = "Print a JSON array instead of a table.")
    private boolean json;

    @Option(names = "--markdown", description = "Print the table of docs/operations.md.")
    private boolean markdown;

    @Spec private CommandSpec model;

    @Override
    public Integer call() {
        List<Operation> operations = names.isEmpty() ? Operation.all() : names.stream().map(this::named).toList();
        if (markdown) {
            System.out.print(Markdown.table());
        } else if (json) {
            System.out.println(Json.lines(operations.stream().map(Listing::json).toList()));
        } else if (!names.isEmpty()) {
            operations.forEach(Listing::tell);
        } else if (Terminal.columns() > 0) {
            narrow(operations);
        } else {
            wide(operations);
        }
        return 0;
    }

    private Operation named(String name) {
        try {
            return Operation.named(Operation.KINDS, name.matches("\\d+") ? "mode-" + name : name);
        } catch (IllegalArgumentException e) {
            throw new ParameterException(model.commandLine(), e.getMessage());
        }
    }

    private static void wide(List<Operation> operations) {
        Table table = new Table("kind", "name", "native", "parameters", "what it does");
        for (Operation operation : operations) {
            table.add(
                operation.kind(),
                operation.name(),
                operation.nativeName(),
                operation.parameters().stream().filter(Parameter::isValue).map(Parameter::toString).collect(joining(" ")),
                operation.summary());
        }
        table.print(System.out);
    }

    private static void narrow(List<Operation> operations) {
        int widest = operations.stream().mapToInt(operation -> operation.name().length()).max().orElse(0) + 2;
        TextTable table = TextTable.forColumns(Help.defaultColorScheme(Ansi.OFF), new Column(10, 0, Column.Overflow.SPAN),
            new Column(widest, 0, Column.Overflow.SPAN), new Column(Terminal.columns() - widest - 10, 0, Column.Overflow.WRAP));
        operations.forEach(operation -> table.addRowValues(operation.kind(), operation.name(), operation.summary()));
        System.out.print(table);
    }

    private static void tell(Operation operation) {
        System.out.printf("%s %s: %s.%n  native %s%n",
            operation.kind(), operation.name(), operation.summary(), operation.nativeName());
        for (Parameter p : operation.parameters()) {
            if (p.isValue()) {
                String range = (p.range() + " " + p.unit()).strip();
                System.out.println("  " + p + (range.isEmpty() ? "" : " (" + range + ")")
                    + (p.meaning().isEmpty() ? "" : ": " + p.meaning()));
            }
        }
    }

    private static String json(Operation operation) {
        return Json.object("kind", Json.string(operation.kind()), "name", Json.string(operation.name()),
            "native", Json.string(operation.nativeName()), "family", Json.string(operation.family()),
            "summary", Json.string(operation.summary()), "parameters",
            operation.parameters().stream().filter(Parameter::isValue).map(Listing::json).collect(joining(", ", "[", "]")));
    }

    /** Values are written as they are typed, for a default may depend on the picture and a bound may be hexadecimal. */
    private static String json(Parameter p) {
        return Json.object("name", Json.string(p.name()), "type", Json.string(p.type()), "default", Json.string(p.initial()),
            "least", Json.string(p.choice() == null ? null : p.choice().least()),
            "most", Json.string(p.choice() == null ? null : p.choice().most()),
            "unit", Json.string(p.unit()), "meaning", Json.string(p.meaning()));
    }
}
