package com.velmora.display.fennic.cli;

import java.io.PrintStream;
import java.util.ArrayList;
import java.util.List;

/** Text in aligned columns: a heading that starts with '>' is a column of numbers, aligned at the right. */
final class Table {
    private final boolean[] right;
    private final List<String[]> rows = new ArrayList<>();

    Table(String... headings) {
        right = new boolean[headings.length];
        for (int i = 0; i < headings.length; ++i) {
            right[i] = headings[i].startsWith(">");
            headings[i] = headings[i].substring(right[i] ? 1 : 0);
        }
        rows.add(headings);
    }

    void add(String... cells) {
        rows.add(cells);
    }

    void print(PrintStream out) {
        int[] widths = new int[right.length];
        for (String[] row : rows) {
            for (int i = 0; i < row.length; ++i) {
                widths[i] = Math.max(widths[i], row[i].length());
            }
        }
        StringBuilder text = new StringBuilder();
        for (String[] row : rows) {
            StringBuilder line = new StringBuilder();
            for (int i = 0; i < row.length; ++i) {
                String gap = " ".repeat(widths[i] - row[i].length());
                line.append(right[i] ? gap + row[i] : row[i] + gap).append("  ");
            }
            text.append(line.toString().stripTrailing()).append('\n');
        }
        out.print(text);
    }
}
