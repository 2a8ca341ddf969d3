package android.graphics;

/**
 * Where one axis of a scaled picture takes its samples. Target i's centre lies at (i + 1/2) * from / to, a source pixel's at
 * its number and a half; in units of 1 / (2 to) both are whole.
 */
final class Axis {
    final int[] first;
    final int[] second;
    /** What the second of both counts, out of {@link #unit}. */
    private final long[] weight;
    private final long unit;

    Axis(int from, int to, boolean filter) {
        first = new int[to];
        second = new int[to];
        weight = new long[to];
        unit = 2L * to;
        for (int i = 0; i < to; ++i) {
            long centre = (2L * i + 1) * from;
            long position = filter ? centre - to : centre; // from the first pixel's centre, or from its edge
            long pixel = Math.floorDiv(position, unit);
            first[i] = (int) Math.max(0, pixel);
            second[i] = filter ? (int) Math.min(pixel + 1, from - 1) : first[i];
            weight[i] = filter ? Math.floorMod(position, unit) : 0;
        }
    }

    /** Four pixels' channels by their weights, rounded, a half up. */
    static int mixed(int[] upper, int[] lower, Axis columns, int x, Axis rows, int y) {
        int first = columns.first[x], second = columns.second[x];
        long right = columns.weight[x], left = columns.unit - right;
        long below = rows.weight[y], above = rows.unit - below;
        long whole = columns.unit * rows.unit;
        int mixed = 0;
        for (int shift = 0; shift < 32; shift += 8) {
            long sum = above * (left * (upper[first] >>> shift & 255) + right * (upper[second] >>> shift & 255))
                    + below * (left * (lower[first] >>> shift & 255) + right * (lower[second] >>> shift & 255));
            mixed |= (int) ((sum + whole / 2) / whole) << shift;
        }
        return mixed;
    }
}
