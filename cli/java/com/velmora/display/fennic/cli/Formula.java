package com.velmora.display.fennic.cli;

import static java.util.stream.Collectors.joining;

import java.util.ArrayList;
import java.util.Arrays;
import java.util.List;
import java.util.regex.Matcher;
import java.util.regex.Pattern;

/** What the comment of a native says of its result, as HTML: as far as the first formula, and the rest. */
record Formula(String shown, String more) {
    private static final String SOURCE = Resource.text("VelUIBitmapUtils.txt");
    private static final Pattern COMPUTATION = Pattern.compile("<code>[^<]* (?:[-+*/=]|&[lg]t;) [^<]*</code>|<pre>");

    /** The column of the table of numbered modes at which their formulas begin, behind number and name. */
    private static final int BEHIND_NAME = 18;

    static Formula of(Operation operation) {
        Matcher declaration = Pattern.compile("native \\w+ " + operation.nativeName() + "\\(").matcher(SOURCE);
        if (!declaration.find()) {
            throw new Failure("VelUIBitmapUtils.java", "does not declare " + operation.nativeName() + "; declare it there");
        }
        String comment = comment(declaration.start()).replaceFirst("(?s)\n@.*", "");
        return operation.isNumbered() ? numbered(comment, operation.parameters().get(2).initial()) : of(comment);
    }

    /** The list of the letters that stand in all formulas, from the comment of the class. */
    static String letters() {
        String comment = comment(SOURCE.indexOf("\npublic final class "));
        return html(comment.substring(comment.indexOf("<ul>"), comment.indexOf("</ul>") + "</ul>".length()));
    }

    /** A comment without a formula is shown as far as its first paragraph. */
    private static Formula of(String comment) {
        List<String> blocks = blocks(comment);
        int formula = 0;
        while (formula < blocks.size() && !COMPUTATION.matcher(blocks.get(formula)).find()) {
            ++formula;
        }
        int shown = formula < blocks.size() ? formula + 1 : 1;
        return new Formula(String.join("\n", blocks.subList(0, shown)), String.join("\n", blocks.subList(shown, blocks.size())));
    }

    private static List<String> blocks(String comment) {
        return Arrays.stream(comment.split("(?=<p>|<ul>|<pre>)|(?<=</ul>|</pre>)"))
            .map(String::strip)
            .filter(block -> !block.isEmpty())
            .map(block -> block.matches("(?s)<(ul|pre)>.*") ? html(block) : "<p>" + html(block.replace("<p>", "")) + "</p>")
            .toList();
    }

    /** The table of all modes falls apart into the mode's own line and what is common to them. */
    private static Formula numbered(String comment, String number) {
        List<String> common = new ArrayList<>();
        StringBuilder own = new StringBuilder();
        String at = null;
        for (String line : comment.split("\n")) {
            Matcher numbered = Pattern.compile(" ?(\\d+) \\S.*").matcher(line);
            at = numbered.matches() ? numbered.group(1) : line.startsWith(" ".repeat(BEHIND_NAME)) ? at : null;
            if (at == null && !line.isBlank()) {
                common.add(line);
            } else if (number.equals(at)) {
                own.append(line.substring(BEHIND_NAME).strip()).append(' ');
            }
        }
        return new Formula("<p>Mode " + number + ": <code>f = " + Page.escaped(own.toString().strip()) + "</code></p>",
            String.join("\n", blocks(String.join("\n", common))));
    }

    private static String comment(int before) {
        int start = SOURCE.lastIndexOf("/**", before) + 3;
        return SOURCE.substring(start, SOURCE.indexOf("*/", start)).lines()
            .map(line -> line.replaceFirst("^ *\\* ?", ""))
            .collect(joining("\n"))
            .strip();
    }

    /** The comment is HTML already, but for its tags in braces. */
    private static String html(String text) {
        StringBuilder html = new StringBuilder();
        int from = 0;
        for (int open = text.indexOf("{@"); open >= 0; open = text.indexOf("{@", from)) {
            int close = open;
            for (int depth = 1; depth > 0;) {
                char c = text.charAt(++close);
                depth += c == '{' ? 1 : c == '}' ? -1 : 0;
            }
            String[] tag = text.substring(open + 2, close).split("\\s", 2);
            boolean link = tag[0].equals("link");
            html.append(text, from, open).append(link && tag[1].equals("VelUIBitmapUtils") ? "<a href=\"#letters\">the letters</a>"
                : "<code>" + Page.escaped(link ? tag[1].replaceFirst("^#", "").replace('#', '.') : tag[1]) + "</code>");
            from = close + 1;
        }
        return html.append(text.substring(from)).toString();
    }
}
