package com.velmora.display.fennic.cli;

import static java.util.stream.Collectors.joining;

import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Path;
import java.time.LocalDate;
import java.util.ArrayList;
import java.util.Base64;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Locale;
import java.util.Map;

/** The gallery as one HTML page that needs nothing else. */
final class Page {
    private static final String SHARED_TILE = """
        <span class="tile"><span class="%s-%d" role="img" aria-label="%s"></span></span>
        """;

    private final List<Gallery.Subject> subjects;
    private final List<Gallery.Card> cards;
    private final Speeds speeds;

    /** Without speeds the page says how to measure them. */
    Page(List<Gallery.Subject> subjects, List<Gallery.Card> cards, Speeds speeds) {
        this.subjects = subjects;
        this.cards = cards;
        this.speeds = speeds;
    }

    String html() {
        Map<String, List<Gallery.Card>> families = new LinkedHashMap<>();
        cards.forEach(card -> families.computeIfAbsent(card.operation().family(), family -> new ArrayList<>()).add(card));
        long layers = subjects.stream().map(subject -> subject.layer().name()).distinct().count();
        return Resource.text("gallery.html")
            .replace("{{style}}", Resource.text("gallery.css") + shared())
            .replace("{{favicon}}", data(subjects.get(0).icon()))
            .replace("{{counts}}", "%d blends, %d effects and %d filters over %d icons and %d layers".formatted(
                count("BLEND"), count("EFFECT"), count("FILTER"), subjects.size(), layers))
            .replace("{{navigation}}", each(families, this::navigation))
            .replace("{{families}}", each(families, this::section))
            .replace("{{measurements}}", subjects.stream().map(this::measurement).collect(joining()))
            .replace("{{speeds}}", speeds == null ? "<p class=\"legend\"><code>./benchmark</code> adds a chart of speeds here.</p>\n"
                : """
                <p class="legend">Millions of pixels a second at 1024 × 1024, one thread, the best of repeated calls; beside the
                bars the ratio to the fastest peer. Measured on %s.</p>
                """.formatted(speeds.date()) + speeds.chart())
            .replace("{{machine}}", escaped(processor() + ", Java " + System.getProperty("java.version")))
            .replace("{{date}}", LocalDate.now().toString());
    }

    private long count(String kind) {
        return cards.stream().filter(card -> card.operation().kind().equals(kind)).count();
    }

    private static boolean isBlend(Operation operation) {
        return operation.kind().equals("BLEND");
    }

    private interface Part {
        String of(String family, List<Gallery.Card> cards);
    }

    private static String each(Map<String, List<Gallery.Card>> families, Part part) {
        return families.entrySet().stream().map(entry -> part.of(entry.getKey(), entry.getValue())).collect(joining());
    }

    private String navigation(String family, List<Gallery.Card> members) {
        String links = members.stream()
            .map(card -> "<li><a href=\"#card-%1$s\">%1$s</a></li>\n".formatted(escaped(card.operation().name())))
            .collect(joining());
        return "<section>\n<h2><a href=\"#family-%s\">%s</a></h2>\n<ul>\n%s</ul>\n</section>\n"
            .formatted(slug(family), family, links);
    }

    private String section(String family, List<Gallery.Card> members) {
        return "<section class=\"family\" id=\"family-%s\">\n<h2>%s</h2>\n%s</section>\n"
            .formatted(slug(family), family, members.stream().map(this::card).collect(joining()));
    }

    private String card(Gallery.Card card) {
        Operation operation = card.operation();
        String parameters = operation.parameters().stream()
            .filter(Operation.Parameter::isValue)
            .map(p -> "<span class=\"parameter\">%s = %s</span>".formatted(escaped(p.name()), escaped(p.initial())))
            .collect(joining("\n"));
        return """
            <article class="card" id="card-%1$s" data-words="%1$s %2$s">
            <header>
            <h3><a href="#card-%1$s">%1$s</a></h3>
            %3$s
            <p class="speed" title="Median of repeated calls on 1024 × 1024 pixels"><b>%4$s</b> ns per pixel</p>
            </header>
            <p class="summary">%5$s.</p>
            <div class="strips" style="--tiles:%8$d">
            %6$s</div>
            <div class="call"><code>%7$s</code>
            <button type="button" class="copy" aria-label="Copy the call of %1$s">Copy</button></div>
            </article>
            """.formatted(
                escaped(operation.name()), operation.nativeName(), parameters,
                String.format(Locale.ROOT, card.nanosPerPixel() < 10 ? "%.2f" : "%.1f", card.nanosPerPixel()),
                escaped(operation.summary()),
                card.strips().stream().map(strip -> strip(operation, strip)).collect(joining()), escaped(operation.call()),
                1 + (isBlend(operation) ? 1 : 0) + card.strips().get(0).results().size());
    }

    private String strip(Operation operation, Gallery.Strip strip) {
        int index = subjects.indexOf(strip.subject());
        String icon = title(strip.subject().icon());
        String layer = title(strip.subject().layer());
        StringBuilder tiles = new StringBuilder(SHARED_TILE.formatted("before", index, icon + " before"));
        StringBuilder captions = new StringBuilder("<span>" + icon + "</span>");
        if (isBlend(operation)) {
            tiles.append(SHARED_TILE.formatted("layer", index, "layer " + layer));
            captions.append("<span>" + layer + "</span>");
        }
        for (Gallery.Result result : strip.results()) {
            tiles.append("""
                <span class="tile"><img src="%s" alt="%s after %s" loading="lazy" decoding="async"></span>
                """.formatted(data(result.picture()), icon, escaped(result.caption())));
            captions.append("<span>" + escaped(result.caption()) + "</span>");
        }
        return """
            <figure class="strip">
            %s<figcaption aria-hidden="true">%s</figcaption>
            </figure>
            """.formatted(tiles, captions);
    }

    private String measurement(Gallery.Subject subject) {
        Measurement m = subject.measurement();
        int[] cut = m.cutOff();
        int[] rgba = m.average();
        double area = (double) m.width() * m.height();
        String square = m.square() == null
            ? "square enough"
            : "%3$d px, at %1$d, %2$d".formatted(m.square()[0], m.square()[1], m.square()[2]);
        return """
            <figure class="measured">
            <div class="tile">
            <span class="before-%1$d" role="img" aria-label="%2$s with its cut-off rectangle"></span>
            <svg viewBox="0 0 %3$d %4$d" aria-hidden="true"><rect x="%5$d" y="%6$d" width="%7$d" height="%8$d"/></svg>
            <span class="swatch" style="--color:%9$s"></span>
            </div>
            <figcaption>
            <h3>%2$s</h3>
            <dl>
            """.formatted(
                subjects.indexOf(subject), title(subject.icon()), m.width(), m.height(),
                cut[0], cut[1], cut[2] - cut[0] + 1, cut[3] - cut[1] + 1, straight(rgba))
            + fact("Size", "%d × %d".formatted(m.width(), m.height()))
            + fact("Visible", String.format(Locale.ROOT, "%,d (%.1f %%)", m.visible(), 100 * m.visible() / area))
            + fact("Invisible", String.format(Locale.ROOT, "%,d (%.1f %%)", m.invisible(), 100 * m.invisible() / area))
            + fact("Outside", String.format(Locale.ROOT, "%.1f %%", 100 * m.outside()))
            + fact("Median", m.median() == null ? "none" : String.format(Locale.ROOT, "%.1f", m.median()))
            + fact("Average", "%d %d %d %d".formatted(rgba[0], rgba[1], rgba[2], rgba[3]))
            + fact("Cut-off", "%d, %d – %d, %d".formatted(cut[0], cut[1], cut[2], cut[3]))
            + fact("Square", square)
            + "</dl>\n</figcaption>\n</figure>\n";
    }

    private static String fact(String name, String value) {
        return "<div><dt>%s</dt><dd>%s</dd></div>\n".formatted(name, value);
    }

    /** The average is premultiplied, CSS colours are not. */
    private static String straight(int[] rgba) {
        int alpha = Math.max(1, rgba[3]);
        return String.format(Locale.ROOT, "rgb(%d %d %d / %.3f)",
            Math.min(255, rgba[0] * 255 / alpha), Math.min(255, rgba[1] * 255 / alpha), Math.min(255, rgba[2] * 255 / alpha),
            rgba[3] / 255.0);
    }

    /** Icons and layers come again in every card; as backgrounds in the style sheet they are in the page once. */
    private String shared() {
        StringBuilder rules = new StringBuilder();
        for (int i = 0; i < subjects.size(); ++i) {
            rules.append(".before-%d{background-image:url(%s)}\n".formatted(i, data(subjects.get(i).icon())));
            rules.append(".layer-%d{background-image:url(%s)}\n".formatted(i, data(subjects.get(i).layer())));
        }
        return rules.toString();
    }

    private static String data(Gallery.Picture picture) {
        return "data:image/png;base64," + Base64.getEncoder().encodeToString(picture.thumbnail());
    }

    /** "icon-road-map" is titled "road map". */
    private static String title(Gallery.Picture picture) {
        return escaped(picture.name().substring(picture.name().indexOf('-') + 1).replace('-', ' '));
    }

    private static String slug(String text) {
        return text.toLowerCase(Locale.ROOT).replace(' ', '-');
    }

    static String escaped(String text) {
        return text.replace("&", "&amp;").replace("<", "&lt;").replace(">", "&gt;").replace("\"", "&quot;");
    }

    private static String processor() {
        try (var lines = Files.lines(Path.of("/proc/cpuinfo"))) {
            return lines.filter(line -> line.startsWith("model name"))
                .map(line -> line.substring(line.indexOf(':') + 1).strip())
                .findFirst()
                .orElse(System.getProperty("os.arch"));
        } catch (IOException e) {
            return System.getProperty("os.arch");
        }
    }
}
