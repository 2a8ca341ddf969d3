package com.velmora.display.fennic.cli;

import static java.util.stream.Collectors.joining;

import android.graphics.Bitmap;
import com.velmora.display.fennic.cli.Operation.Parameter;
import com.velmora.display.fennic.cli.Operation.Value;
import java.nio.file.Path;
import java.util.HashMap;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Map;
import java.util.concurrent.Callable;
import java.util.stream.Stream;
import picocli.CommandLine.Help;
import picocli.CommandLine.Model.CommandSpec;
import picocli.CommandLine.Model.OptionSpec;
import picocli.CommandLine.Option;
import picocli.CommandLine.ParameterException;
import picocli.CommandLine.Spec;

/** A command that applies one operation of some kinds to a picture and writes what comes of it. */
abstract class Change implements Callable<Integer> {
    private final List<String> kinds;

    @Option(
        names = {"-o", "--out"},
        required = true,
        paramLabel = "OUT",
        description = "The PNG to write; it may be the one to change.")
    private Path out;

    @Spec private CommandSpec model;

    Change(String... kinds) {
        this.kinds = List.of(kinds);
    }

    /**
     * Every parameter of every operation becomes an option, so that a new line of the list is all that a new operation takes.
     * Many share a name, so the help shows them operation by operation.
     */
    void offerParameters() {
        Map<String, String> takers = new LinkedHashMap<>();
        for (Operation operation : Operation.of(kinds)) {
            if (!operation.choices().isEmpty()) {
                takers.put(operation.name(),
                    operation.choices().stream().map(p -> "--" + p.name() + "=" + p.initial()).collect(joining(" ")));
            }
        }
        names().forEach(name -> model.addOption(OptionSpec.builder("--" + name).type(String.class).hidden(true).build()));
        model.usageMessage().footerHeading("%nParameters, as they are if left out:%n");
        model.usageMessage().footer(new Help(model).createTextTable(takers).toString().split("\n"));
    }

    /** The layer is null where the kinds take none. */
    int change(String name, Path file, Path layer) {
        Operation operation;
        Map<String, Value> values;
        try {
            operation = Operation.named(kinds, name);
            values = values(operation);
        } catch (IllegalArgumentException e) {
            throw new ParameterException(model.commandLine(), e.getMessage());
        }
        Pngs.checkTarget(out);
        Bitmap picture = Pngs.read(file);
        Bitmap over = layer == null ? null : Pngs.scaled(Pngs.read(layer), picture.getWidth(), picture.getHeight());
        Pngs.write(out, Pngs.encode(operation.changed(picture, over, values)));
        return 0;
    }

    private Map<String, Value> values(Operation operation) {
        Map<String, Value> values = new HashMap<>();
        names().forEach(name -> {
            String text = model.findOption("--" + name).getValue();
            if (text != null) {
                values.put(name, operation.choices().stream().filter(p -> p.name().equals(name)).findFirst()
                    .orElseThrow(() -> new IllegalArgumentException(operation.name() + " takes no --" + name)).value(text));
            }
        });
        return values;
    }

    private Stream<String> names() {
        return Operation.of(kinds).stream().flatMap(operation -> operation.choices().stream()).map(Parameter::name).distinct();
    }
}
