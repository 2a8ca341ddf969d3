package com.velmora.display.fennic.cli;

import android.graphics.Bitmap;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.List;
import java.util.Map;
import java.util.TreeMap;
import java.util.concurrent.Callable;
import picocli.CommandLine.Command;
import picocli.CommandLine.Model.CommandSpec;
import picocli.CommandLine.Model.OptionSpec;
import picocli.CommandLine.Option;
import picocli.CommandLine.ParameterException;
import picocli.CommandLine.Parameters;
import picocli.CommandLine.Spec;

@Command(name = "blend", description = "Blends a layer into a base and writes a PNG.")
final class Blend implements Callable<Integer> {
    @Parameters(index = "0", paramLabel = "MODE", description = "A blend's name, as 'fennic list' shows it, or a mode's number.")
    private String mode;

    @Parameters(index = "1", paramLabel = "BASE", description = "The PNG to blend into.")
    private Path base;

    @Parameters(index = "2", paramLabel = "LAYER", description = "The PNG to lay over it, scaled to the base's size.")
    private Path layer;

    @Option(names = {"-o", "--out"}, required = true, paramLabel = "OUT", description = "The PNG to write; it may be BASE.")
    private Path out;

    @Spec private CommandSpec spec;

    /** Every parameter of every mode becomes an option, so that a new line of the list is all that a new mode takes. */
    static void offerParameters(CommandSpec spec) {
        Map<String, List<String>> takers = new TreeMap<>();
        for (Operation blend : Operation.blends()) {
            for (Operation.Parameter parameter : blend.choices()) {
                String initial = parameter.initial() == null ? "" : ", " + parameter.initial() + " if left out";
                takers.computeIfAbsent(parameter.name(), name -> new ArrayList<>())
                    .add(blend.name() + " (" + parameter.type() + initial + ")");
            }
        }
        takers.forEach((name, modes) -> spec.addOption(OptionSpec.builder("--" + name)
            .type(String.class)
            .paramLabel("VALUE")
            .description("For " + String.join(", ", modes) + ".")
            .build()));
    }

    @Override
    public Integer call() {
        Operation operation;
        List<Object> arguments = new ArrayList<>();
        try {
            operation = Operation.blend(mode);
            arguments.addAll(values(operation));
        } catch (IllegalArgumentException e) {
            throw new ParameterException(spec.commandLine(), e.getMessage());
        }
        Pngs.checkTarget(out);
        Bitmap picture = Pngs.read(base);
        arguments.add(0, picture);
        arguments.add(1, Pngs.scaled(Pngs.read(layer), picture.getWidth(), picture.getHeight()));
        operation.apply(arguments.toArray());
        Pngs.write(out, Pngs.encode(picture));
        return 0;
    }

    private List<Object> values(Operation operation) {
        List<String> known = operation.choices().stream().map(Operation.Parameter::name).toList();
        for (Operation other : Operation.blends()) {
            for (Operation.Parameter parameter : other.choices()) {
                if (!known.contains(parameter.name()) && given(parameter) != null) {
                    throw new IllegalArgumentException(mode + " takes no --" + parameter.name());
                }
            }
        }
        return operation.parameters().stream().map(parameter -> {
            String text = parameter.isChoice() && given(parameter) != null ? given(parameter) : parameter.initial();
            if (text == null) {
                throw new IllegalArgumentException(mode + " needs --" + parameter.name());
            }
            return parameter.value(text);
        }).toList();
    }

    private String given(Operation.Parameter parameter) {
        return spec.findOption("--" + parameter.name()).getValue();
    }
}
