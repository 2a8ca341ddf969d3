package com.velmora.display.fennic.cli;

import static java.util.stream.Collectors.toSet;

import java.util.Arrays;
import java.util.LinkedHashMap;
import java.util.LinkedHashSet;
import java.util.List;
import java.util.Locale;
import java.util.Map;
import java.util.Set;
import java.util.stream.Stream;

/** What words.txt knows of an operation: its other names, and how it differs from what has its name elsewhere. */
record Words(String others, String difference) {
    static Words of(Operation operation) {
        return Loaded.WORDS.get(operation.name());
    }

    /** All words by which the operations are found, each once, in lower case and in every spelling. */
    static String finding(Stream<Operation> operations) {
        Set<String> words = new LinkedHashSet<>();
        operations.forEach(operation -> {
            // The mode's summary ends in the name of the blend that it is like, whose other names are its own as well.
            Words alike = Loaded.WORDS.get(operation.summary().replaceFirst(".*: ", ""));
            String call = operation.nativeName() + " " + operation.typedCall();
            Stream.of(operation.name(), operation.family(), operation.summary(), call, call.replaceAll("([a-z])([A-Z])", "$1 $2"),
                    Loaded.WORDS.getOrDefault(operation.name(), NONE).others, (alike == null ? NONE : alike).others)
                .flatMap(text -> Arrays.stream(text.toLowerCase(Locale.ROOT).split("[^\\p{L}\\p{N}&]+")))
                .filter(word -> !word.isEmpty())
                .forEach(words::add);
        });
        for (String[] spelling : Loaded.SPELLINGS) {
            for (String word : List.copyOf(words)) {
                words.add(word.replace(spelling[0], spelling[1]));
                words.add(word.replace(spelling[1], spelling[0]));
            }
        }
        return String.join(" ", words);
    }

    private static final Words NONE = new Words("", "");

    private static final class Loaded {
        static final Map<String, Words> WORDS = new LinkedHashMap<>();
        static final List<String[]> SPELLINGS;

        static {
            List<String[]> rows = Resource.text("words.txt").lines()
                .filter(line -> !line.isBlank() && !line.startsWith("#"))
                .map(line -> line.strip().split("\\s*\\|\\s*", -1))
                .toList();
            SPELLINGS = rows.stream().filter(row -> row.length == 2).toList();
            rows.stream().filter(row -> row.length == 3).forEach(row -> {
                if (WORDS.put(row[0], new Words(row[1], row[2])) != null) {
                    throw new Failure("words.txt", "twice: " + row[0]);
                }
            });
            Set<String> known = Operation.of(List.of("BLEND", "EFFECT", "FILTER")).stream().map(Operation::name).collect(toSet());
            Set<String> different = new LinkedHashSet<>(known);
            different.removeAll(WORDS.keySet());
            WORDS.keySet().stream().filter(name -> !known.contains(name)).forEach(different::add);
            if (!different.isEmpty()) {
                throw new Failure("words.txt", "knows other operations than Operations.def: " + String.join(", ", different));
            }
        }
    }
}
