package com.velmora.display.fennic.cli;

import static java.nio.charset.StandardCharsets.UTF_8;
import static java.util.stream.Collectors.joining;

import com.velmora.display.fennic.cli.Operation.Parameter;
import java.io.IOException;
import java.net.URLEncoder;
import java.nio.file.Files;
import java.nio.file.Path;
import java.time.LocalDate;
import java.util.ArrayList;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Locale;
import java.util.Map;
import java.util.stream.Stream;

/** The gallery's page, which shows the pictures beside it as they are scrolled to, and needs nothing else. */
final class Page {
    /** The ways to call an operation, of which one is shown at a time. */
    private static final List<String> CALLS = List.of("Java", "Native", "Command");

    private final List<Gallery.Subject> subjects;
    private final List<Gallery.Card> cards;
    private final Speeds speeds;
    private final boolean live;

    /** Without speeds the page says how to measure them; with a live page beside it, links to that. */
    Page(List<Gallery.Subject> subjects, List<Gallery.Card> cards, Speeds speeds, boolean live) {
        this.live = live;
        this.subjects = subjects;
        this.cards = cards;
        this.speeds = speeds;
    }

    String html() {
        Map<String, List<Gallery.Card>> families = new LinkedHashMap<>();
        cards.forEach(card -> families.computeIfAbsent(card.operation().family(), family -> new ArrayList<>()).add(card));
        long layers = subjects.stream().map(subject -> subject.layer().title()).distinct().count();
        return Resource.text("gallery.html")
            .replace("{{style}}", Resource.text("gallery.css"))
            .replace("{{favicon}}", file(subjects.get(0).icon().picture()))
            .replace("{{counts}}", "%d blends, %d effects and %d filters over %d icons and %d layers".formatted(
                count("BLEND"), count("EFFECT"), count("FILTER"), subjects.size(), layers)
                + (live ? ". <a class=\"live\" href=\"try.html\">Try them on a picture of your own</a>" : ""))
            .replace("{{navigation}}", each(families, this::navigation))
            .replace("{{families}}", each(families, this::section))
            .replace("{{letters}}", Formula.letters())
            .replace("{{measuring}}", Words.finding(Operation.of(List.of("MEASURE", "GEOMETRY")).stream()))
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
        Words words = Words.of(operation);
        Formula formula = Formula.of(operation);
        String benchmark = speeds == null ? "" : speeds.beside(operation.name());
        return """
            <article class="card" id="card-%1$s" data-words="%2$s">
            <header>
            <h3><a href="#card-%1$s">%1$s</a></h3>
            %3$s
            <p class="speed"><b>%4$s</b> ns per pixel%5$s</p>
            %16$s</header>
            <p class="summary">%6$s.</p>
            %7$s<div class="strips" style="--tiles:%8$d">
            %9$s</div>
            <details class="formula wide">
            <summary>Formula</summary>
            %10$s
            %15$s%11$s%12$s</details>
            <div class="calls">
            <fieldset>
            <legend>Call of %1$s</legend>
            %13$s</fieldset>
            %14$s<button type="button" class="copy" aria-label="Copy the call of %1$s">Copy</button>
            </div>
            </article>
            """.formatted(
                escaped(operation.name()), escaped(Words.finding(Stream.of(operation))),
                operation.parameters().stream().filter(Parameter::isValue).map(Page::parameter).collect(joining("\n")),
                String.format(Locale.ROOT, card.nanosPerPixel() < 10 ? "%.2f" : "%.1f", card.nanosPerPixel()),
                benchmark.isEmpty() ? "" : "<span>" + escaped(benchmark) + "</span>",
                escaped(operation.summary()), slider(card), isBlend(operation) ? 3 : 2,
                card.strips().stream().map(strip -> strip(card, strip)).collect(joining()), formula.shown(),
                words.difference().isEmpty() ? "" : "<p><b>Unlike elsewhere:</b> " + escaped(words.difference()) + "</p>\n",
                formula.more().isEmpty() ? "" : "<details>\n<summary>More</summary>\n" + formula.more() + "\n</details>\n",
                CALLS.stream().map(call -> choice(call, operation.name())).collect(joining()),
                code(0, escaped(operation.typedCall())) + code(1, escaped(operation.call())) + code(2, command(card)),
                meanings(operation), tryLink(card));
    }

    private String tryLink(Gallery.Card card) {
        return !live ? "" : "<a class=\"live\" href=\"%s\" aria-label=\"Try it: %s\">Try it</a>\n".formatted(
            escaped(LivePage.address(card.strips().get(0).subject(), card.operation())), escaped(card.operation().name()));
    }

    /** What each parameter means, with its range and unit. */
    private static String meanings(Operation operation) {
        String meanings = operation.choices().stream()
            .map(p -> "<li><code>%s</code>: %s%s</li>\n".formatted(escaped(p.name()), escaped(p.meaning()), limits(p)))
            .collect(joining());
        return meanings.isEmpty() ? "" : "<ul>\n" + meanings + "</ul>\n";
    }

    private static String limits(Parameter parameter) {
        String limits = Stream.of(parameter.unit(), parameter.range()).filter(text -> !text.isEmpty()).collect(joining(", "));
        return limits.isEmpty() ? "" : " (" + escaped(limits) + ")";
    }

    /** What the list says of a parameter. */
    private static String parameter(Parameter parameter) {
        return "<span class=\"parameter\">%s = %s</span>".formatted(escaped(parameter.name()), escaped(parameter.initial()));
    }

    /** Without scripts it is not shown, and the pictures are those of the usual values. */
    private static String slider(Gallery.Card card) {
        if (card.steps().size() == 1) {
            return "";
        }
        String names = escaped(String.join(", ", card.steps().get(0).keySet()));
        List<String> texts = card.steps().stream().map(values -> values(values, "", " ", ", ")).toList();
        return """
            <label class="slider">%1$s
            <input type="range" min="0" max="%2$d" value="%3$d" data-steps="%4$s" aria-label="%1$s of %5$s" aria-valuetext="%6$s">
            <output>%6$s</output></label>
            """.formatted(
                names, card.steps().size() - 1, card.usual(), escaped(String.join("|", texts)), escaped(card.operation().name()),
                escaped(texts.get(card.usual())));
    }

    private static String values(Map<String, String> values, String before, String between, String separator) {
        return values.entrySet().stream().map(e -> before + e.getKey() + between + e.getValue()).collect(joining(separator));
    }

    private static String choice(String call, String name) {
        return "<label><input type=\"radio\" name=\"call-%s\" value=\"%s\"%s><span>%s</span></label>\n"
            .formatted(escaped(name), slug(call), call.equals(CALLS.get(0)) ? " checked" : "", call);
    }

    private static String code(int call, String code) {
        return "<code class=\"%s\">%s</code>\n".formatted(slug(CALLS.get(call)), code);
    }

    /** What makes the first picture of the card, with the values that are shown. */
    private static String command(Gallery.Card card) {
        Gallery.Subject subject = card.strips().get(0).subject();
        boolean blend = isBlend(card.operation());
        return "./fennic " + (blend ? "blend " : "effect ") + escaped(card.operation().name())
            + argument(subject.icon()) + (blend ? argument(subject.layer()) : "")
            + (card.steps().size() == 1 ? ""
                : " <span>" + escaped(values(card.steps().get(card.usual()), "--", "=", " ")) + "</span>")
            + " -o out.png";
    }

    /** The file as it is named in the library's folder, and as a shell takes it. */
    private static String argument(Gallery.Source source) {
        String path = source.path();
        return " " + escaped(path.matches("[\\w./-]+") ? path : "'" + path.replace("'", "'\\''") + "'");
    }

    private static String strip(Gallery.Card card, Gallery.Strip strip) {
        String icon = escaped(strip.subject().icon().title());
        String layer = escaped(strip.subject().layer().title());
        String name = escaped(card.operation().name());
        return "<figure class=\"strip\">\n" + tile(strip.subject().icon().picture(), icon + " before")
            + (isBlend(card.operation()) ? tile(strip.subject().layer().picture(), "layer " + layer) : "")
            + tile(strip.results().get(card.usual()), icon + " after " + name)
            + "<figcaption aria-hidden=\"true\"><span>" + icon + "</span>"
            + (isBlend(card.operation()) ? "<span>" + layer + "</span>" : "")
            + "<span>" + name + "</span></figcaption>\n</figure>\n";
    }

    private static String tile(Gallery.Picture picture, String description) {
        return "<span class=\"tile\">" + image(picture, description) + "</span>\n";
    }

    private static String image(Gallery.Picture picture, String description) {
        return "<img src=\"%s\" alt=\"%s\" width=\"%d\" height=\"%d\" loading=\"lazy\" decoding=\"async\">"
            .formatted(file(picture), description, picture.width(), picture.height());
    }

    static String file(Gallery.Picture picture) {
        return "images/" + urlEncoded(picture.name()) + ".png";
    }

    static String urlEncoded(String name) {
        return URLEncoder.encode(name, UTF_8).replace("+", "%20");
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
            %1$s
            <svg viewBox="0 0 %3$d %4$d" aria-hidden="true"><rect x="%5$d" y="%6$d" width="%7$d" height="%8$d"/></svg>
            <span class="swatch" style="--color:%9$s"></span>
            </div>
            <figcaption>
            <h3>%2$s</h3>
            <dl>
            """.formatted(
                image(subject.icon().picture(), escaped(subject.icon().title()) + " with its cut-off rectangle"),
                escaped(subject.icon().title()), m.width(), m.height(),
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
