package com.velmora.display.fennic.cli;

import static java.util.stream.Collectors.joining;

import java.io.IOException;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import java.time.LocalDate;
import java.time.ZoneId;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Locale;
import java.util.Map;
import java.util.TreeMap;

/** What ./benchmark measured on random pixels at 1024 x 1024, as a chart of the operations that a peer has too. */
record Speeds(LocalDate date, Map<String, Map<String, Double>> byOperation) {
    private static final String PICTURE = "1024,random,";
    private static final String OURS = "fennic";
    /** The machine's limits, and the library at another commit and at this one. */
    private static final List<String> NO_PEERS = List.of("limit", "before", "now");

    /** Null where nothing has been measured. */
    static Speeds read(Path file) {
        if (!Files.exists(file)) {
            return null;
        }
        Map<String, Map<String, Double>> byOperation = new LinkedHashMap<>();
        try {
            int number = 0;
            for (String line : Files.readAllLines(file, StandardCharsets.UTF_8)) {
                ++number;
                String[] fields = line.split(",", -1);
                if (fields.length != 6 || !line.startsWith("size,") && !fields[4].matches("\\d+(\\.\\d+)?")) {
                    throw new Failure(file + ":" + number, "not size,picture,peer,op,best_mpx_s,median_mpx_s; let ./benchmark write it anew");
                }
                if (line.startsWith(PICTURE) && !NO_PEERS.contains(fields[2])) {
                    byOperation.computeIfAbsent(fields[3], op -> new TreeMap<>()).put(fields[2], Double.valueOf(fields[4]));
                }
            }
            byOperation.values().removeIf(speeds -> speeds.size() < 2 || !speeds.containsKey(OURS));
            return new Speeds(Files.getLastModifiedTime(file).toInstant().atZone(ZoneId.systemDefault()).toLocalDate(), byOperation);
        } catch (IOException e) {
            throw new Failure(file, "cannot be read as text; let ./benchmark write it anew");
        }
    }

    /** An operation's speed with the fastest peer's; empty where no peer has it. */
    String beside(String operation) {
        Map<String, Double> speeds = byOperation.get(operation);
        return speeds == null ? "" : speeds.entrySet().stream()
            .filter(speed -> !speed.getKey().equals(OURS))
            .max(Map.Entry.comparingByValue())
            .map(peer -> String.format(Locale.ROOT, "%,.0f Mpx/s (%s %,.0f)", speeds.get(OURS), peer.getKey(), peer.getValue()))
            .orElseThrow();
    }

    private List<String> peers() {
        return byOperation.values().stream().flatMap(speeds -> speeds.keySet().stream())
            .filter(peer -> !peer.equals(OURS)).distinct().sorted().toList();
    }

    String chart() {
        double most = byOperation.values().stream().flatMap(speeds -> speeds.values().stream()).max(Double::compare).orElse(1.0);
        return "<ul class=\"peers\">\n" + item(OURS) + peers().stream().map(Speeds::item).collect(joining()) + "</ul>\n"
            + byOperation.entrySet().stream().map(entry -> row(entry.getKey(), entry.getValue(), most)).collect(joining());
    }

    private static String item(String peer) {
        return "<li class=\"peer-%1$s\">%1$s</li>\n".formatted(Page.escaped(peer));
    }

    private static String row(String operation, Map<String, Double> speeds, double most) {
        double ours = speeds.get(OURS);
        double best = speeds.entrySet().stream().filter(speed -> !speed.getKey().equals(OURS))
            .mapToDouble(Map.Entry::getValue).max().orElseThrow();
        String bars = bar(OURS, ours, most) + speeds.entrySet().stream().filter(speed -> !speed.getKey().equals(OURS))
            .sorted(Map.Entry.<String, Double>comparingByValue().reversed())
            .map(speed -> bar(speed.getKey(), speed.getValue(), most)).collect(joining());
        return """
            <div class="speeds">
            <h3>%s</h3>
            <div>
            %s</div>
            <b>%s ×</b>
            </div>
            """.formatted(Page.escaped(operation), bars, String.format(Locale.ROOT, ours < 10 * best ? "%.2f" : "%.0f", ours / best));
    }

    private static String bar(String peer, double speed, double most) {
        return "<span class=\"bar peer-%s\" style=\"--share:%s\" title=\"%s\">%s</span>\n".formatted(Page.escaped(peer),
            String.format(Locale.ROOT, "%.4f", speed / most), Page.escaped(peer), String.format(Locale.ROOT, "%,.0f", speed));
    }
}
