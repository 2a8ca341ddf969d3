package android.graphics;

/** A point of whole coordinates. */
public class Point {
    public int x;
    public int y;

    public Point() {}

    public Point(int x, int y) {
        set(x, y);
    }

    public Point(Point src) {
        set(src.x, src.y);
    }

    public void set(int x, int y) {
        this.x = x;
        this.y = y;
    }

    public final void negate() {
        set(-x, -y);
    }

    public final void offset(int dx, int dy) {
        set(x + dx, y + dy);
    }

    public final boolean equals(int x, int y) {
        return this.x == x && this.y == y;
    }

    @Override
    public boolean equals(Object other) {
        return other != null && getClass() == other.getClass() && equals(((Point) other).x, ((Point) other).y);
    }

    @Override
    public int hashCode() {
        return 31 * x + y;
    }

    @Override
    public String toString() {
        return "Point(" + x + ", " + y + ")";
    }
}
