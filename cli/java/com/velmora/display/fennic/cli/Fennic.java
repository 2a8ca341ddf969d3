package com.velmora.display.fennic.cli;

import java.util.Set;
import java.util.regex.Matcher;
import java.util.regex.Pattern;
import java.util.stream.Collectors;
import picocli.CommandLine;
import picocli.CommandLine.Command;
import picocli.CommandLine.IVersionProvider;
import picocli.CommandLine.Model.CommandSpec;
import picocli.CommandLine.ParameterException;
import picocli.CommandLine.ScopeType;
import picocli.CommandLine.Spec;
import picocli.CommandLine.UnmatchedArgumentException;

/** The command line. Exit codes: 0 done, 1 the work failed, 2 wrong usage. */
@Command(
    name = "fennic",
    mixinStandardHelpOptions = true,
    versionProvider = Fennic.Version.class,
    scope = ScopeType.INHERIT,
    description = "Measures, blends and changes icons with libfennic, on the desktop.",
    subcommands = {Listing.class, Measure.class, Blend.class, Effect.class, Gallery.class})
public final class Fennic implements Runnable {
    /** The build's own, from the jar's manifest. */
    static final class Version implements IVersionProvider {
        @Override
        public String[] getVersion() {
            return new String[] {"fennic " + Fennic.class.getPackage().getImplementationVersion()};
        }
    }

    @Spec private CommandSpec model;

    public static void main(String[] args) {
        System.exit(run(args));
    }

    @Override
    public void run() {
        throw new ParameterException(model.commandLine(), "a command is missing");
    }

    private static int run(String[] args) {
        try {
            CommandLine line = new CommandLine(new Fennic());
            // A command stands there once more for each of its aliases.
            for (CommandLine command : Set.copyOf(line.getSubcommands().values())) {
                if (command.getCommand() instanceof Change change) {
                    change.offerParameters();
                }
            }
            line.setParameterExceptionHandler((e, rest) -> complain(usage(e), 2));
            line.setExecutionExceptionHandler((e, command, result) -> complain(explain(e), 1));
            return line.execute(args);
        } catch (Failure | LinkageError | OutOfMemoryError e) {
            return complain(explain(e), 1);
        }
    }

    static int complain(String message, int exitCode) {
        System.err.println("fennic: " + message);
        return exitCode;
    }

    private static String usage(ParameterException e) {
        CommandLine command = e.getCommandLine();
        String text = e.getMessage().lines().map(String::strip).collect(Collectors.joining(" "));
        if (e instanceof UnmatchedArgumentException unmatched && !unmatched.getSuggestions().isEmpty()) {
            text += "; did you mean " + String.join(" or ", unmatched.getSuggestions()) + "?";
        }
        return decapitalised(text) + " (see " + command.getCommandSpec().qualifiedName() + " --help)";
    }

    private static String decapitalised(String text) {
        return text.isEmpty() ? text : Character.toLowerCase(text.charAt(0)) + text.substring(1);
    }

    private static String explain(Throwable e) {
        if (e instanceof ExceptionInInitializerError) {
            return explain(e.getCause());
        }
        if (e instanceof Failure) {
            return e.getMessage();
        }
        if (e instanceof UnsatisfiedLinkError) {
            // The JVM names a native it cannot find by its whole Java signature.
            Matcher missing = Pattern.compile("\\.(native\\w+)\\(").matcher(e.getMessage());
            return missing.find()
                ? "libfennic.so does not export " + missing.group(1) + "; build the library anew"
                : "libfennic.so cannot be loaded (" + e.getMessage() + "); build the library first";
        }
        return e instanceof OutOfMemoryError ? "the pictures do not fit into memory; take smaller ones" : "unexpected: " + e;
    }
}
