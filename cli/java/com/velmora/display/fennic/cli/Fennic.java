package com.velmora.display.fennic.cli;

import java.io.File;
import java.io.PrintWriter;
import java.util.Locale;
import java.util.Optional;
import java.util.Set;
import java.util.regex.Matcher;
import java.util.regex.Pattern;
import java.util.stream.Collectors;
import java.util.stream.Stream;
import picocli.AutoComplete.GenerateCompletion;
import picocli.CommandLine;
import picocli.CommandLine.Command;
import picocli.CommandLine.HelpCommand;
import picocli.CommandLine.IVersionProvider;
import picocli.CommandLine.Model.CommandSpec;
import picocli.CommandLine.Option;
import picocli.CommandLine.ParameterException;
import picocli.CommandLine.ParseResult;
import picocli.CommandLine.RunLast;
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
    footer = {"", "Exit codes: 0 done, 1 a picture or all of the work failed, 2 wrong usage.",
        "Names that begin with a dash: ./-name.png, or behind --."},
    subcommands = {
        Listing.class, Measure.class, Blend.class, Effect.class, Gallery.class, HelpCommand.class, GenerateCompletion.class})
public final class Fennic implements Runnable {
    /** The build's own, from the jar's manifest. */
    static final class Version implements IVersionProvider {
        @Override
        public String[] getVersion() {
            return new String[] {"fennic " + Fennic.class.getPackage().getImplementationVersion()};
        }
    }

    @Spec private CommandSpec model;

    @Option(names = {"-q", "--quiet"}, scope = ScopeType.INHERIT, description = "Show no progress, counts and warnings.")
    void quiet(boolean wanted) {
        if (wanted) {
            Terminal.keepQuiet();
        }
    }

    public static void main(String[] args) {
        StandardOutput output = StandardOutput.install();
        int exitCode = run(args);
        String loss = output.loss();
        if (loss != null) {
            exitCode = complain(loss, 1);
        }
        awaitFilter();
        System.exit(exitCode);
    }

    /** The script passes the error stream through a filter, which shall have said everything before the prompt comes back. */
    private static void awaitFilter() {
        System.err.close();
        Optional.ofNullable(Long.getLong("fennic.filter")).flatMap(ProcessHandle::of)
            .ifPresent(filter -> filter.onExit().join());
    }

    @Override
    public void run() {
        throw new ParameterException(model.commandLine(), "a command is missing");
    }

    private static int run(String[] args) {
        try {
            CommandLine line = new CommandLine(new Fennic());
            line.setExpandAtFiles(false);
            line.setOut(new PrintWriter(System.out, true));
            if (Terminal.columns() > 0) {
                line.setUsageHelpWidth(Terminal.columns());
            }
            // A command stands there once more for each of its aliases.
            for (CommandLine command : Set.copyOf(line.getSubcommands().values())) {
                if (command.getCommand() instanceof Change change) {
                    change.offerParameters();
                }
            }
            line.setParameterExceptionHandler((e, all) -> complain(usage(e, all), 2));
            line.setExecutionExceptionHandler((e, command, result) -> complain(explain(e), 1));
            line.setExecutionStrategy(Fennic::execute);
            return line.execute(args);
        } catch (Failure | LinkageError | OutOfMemoryError e) {
            return complain(explain(e), 1);
        }
    }

    /** Behind the name of an operation --help tells of that one. */
    private static int execute(ParseResult result) {
        ParseResult last = result;
        while (last.hasSubcommand()) {
            last = last.subcommand();
        }
        if (last.isUsageHelpRequested() && last.commandSpec().userObject() instanceof Change change
            && change.operation() != null) {
            System.out.print(change.help());
            return 0;
        }
        return new RunLast().execute(result);
    }

    static void complain(String line) {
        System.err.println(line);
    }

    static int complain(String message, int exitCode) {
        complain("fennic: " + message);
        return exitCode;
    }

    private static String usage(ParameterException e, String[] args) {
        CommandLine command = e.getCommandLine();
        String text = e.getMessage().lines().map(String::strip).collect(Collectors.joining(" "));
        Optional<String> file = Stream.of(args).filter(arg -> arg.matches("-.+") && new File(arg).exists()).findFirst();
        if (file.isPresent()) {
            text += "; for the file " + file.get() + " write ./" + file.get();
        } else if (e instanceof UnmatchedArgumentException unmatched) {
            String elsewhere = Operation.elsewhere(unmatched.getUnmatched().get(0).toLowerCase(Locale.ROOT));
            if (command.getParent() == null && elsewhere != null) {
                text += "; " + elsewhere;
            } else if (!unmatched.getSuggestions().isEmpty()) {
                text += "; did you mean " + String.join(" or ", unmatched.getSuggestions()) + "?";
            }
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
