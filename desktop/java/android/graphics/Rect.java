package android.graphics;

import java.util.regex.Matcher;
import java.util.regex.Pattern;

/** A rectangle of whole coordinates; right and bottom lie outside. Nothing keeps left below right but {@link #sort}. */
public final class Rect {
    private static final Pattern FLAT = Pattern.compile("(-?\\d+) (-?\\d+) (-?\\d+) (-?\\d+)");

    public int left;
    public int top;
    public int right;
    public int bottom;

    public Rect() {}

    public Rect(int left, int top, int right, int bottom) {
        set(left, top, right, bottom);
    }

    /** A copy; of null, an empty one. */
    public Rect(Rect r) {
        if (r != null) {
            set(r);
        }
    }

    public void set(int left, int top, int right, int bottom) {
        this.left = left;
        this.top = top;
        this.right = right;
        this.bottom = bottom;
    }

    public void set(Rect src) {
        set(src.left, src.top, src.right, src.bottom);
    }

    public void setEmpty() {
        set(0, 0, 0, 0);
    }

    public boolean isEmpty() {
        return left >= right || top >= bottom;
    }

    public int width() {
        return right - left;
    }

    public int height() {
        return bottom - top;
    }

    /** Rounded down. */
    public int centerX() {
        return left + right >> 1;
    }

    /** Rounded down. */
    public int centerY() {
        return top + bottom >> 1;
    }

    public float exactCenterX() {
        return (left + right) * 0.5f;
    }

    public float exactCenterY() {
        return (top + bottom) * 0.5f;
    }

    public void offset(int dx, int dy) {
        set(left + dx, top + dy, right + dx, bottom + dy);
    }

    public void offsetTo(int newLeft, int newTop) {
        offset(newLeft - left, newTop - top);
    }

    /** Positive values make it smaller. */
    public void inset(int dx, int dy) {
        inset(dx, dy, dx, dy);
    }

    public void inset(int left, int top, int right, int bottom) {
        set(this.left + left, this.top + top, this.right - right, this.bottom - bottom);
    }

    /** An empty rectangle contains nothing. */
    public boolean contains(int x, int y) {
        return !isEmpty() && x >= left && x < right && y >= top && y < bottom;
    }

    public boolean contains(int left, int top, int right, int bottom) {
        return !isEmpty() && this.left <= left && this.top <= top && this.right >= right && this.bottom >= bottom;
    }

    public boolean contains(Rect r) {
        return contains(r.left, r.top, r.right, r.bottom);
    }

    public boolean intersects(int left, int top, int right, int bottom) {
        return this.left < right && left < this.right && this.top < bottom && top < this.bottom;
    }

    public static boolean intersects(Rect a, Rect b) {
        return a.intersects(b.left, b.top, b.right, b.bottom);
    }

    /** Becomes what both share; where they share nothing, false, and nothing changes. */
    public boolean intersect(int left, int top, int right, int bottom) {
        if (!intersects(left, top, right, bottom)) {
            return false;
        }
        set(Math.max(this.left, left), Math.max(this.top, top), Math.min(this.right, right), Math.min(this.bottom, bottom));
        return true;
    }

    public boolean intersect(Rect r) {
        return intersect(r.left, r.top, r.right, r.bottom);
    }

    /** Becomes what a and b share; where they share nothing, false, and nothing changes. */
    public boolean setIntersect(Rect a, Rect b) {
        if (!intersects(a, b)) {
            return false;
        }
        set(Math.max(a.left, b.left), Math.max(a.top, b.top), Math.min(a.right, b.right), Math.min(a.bottom, b.bottom));
        return true;
    }

    /** Grows to hold both; an empty one counts for nothing. */
    public void union(int left, int top, int right, int bottom) {
        if (left >= right || top >= bottom) {
            return;
        }
        if (isEmpty()) {
            set(left, top, right, bottom);
        } else {
            set(Math.min(this.left, left), Math.min(this.top, top), Math.max(this.right, right), Math.max(this.bottom, bottom));
        }
    }

    public void union(Rect r) {
        union(r.left, r.top, r.right, r.bottom);
    }

    /** Grows until its edges reach the point. */
    public void union(int x, int y) {
        set(Math.min(left, x), Math.min(top, y), Math.max(right, x), Math.max(bottom, y));
    }

    /** Swaps edges that lie the wrong way round. */
    public void sort() {
        set(Math.min(left, right), Math.min(top, bottom), Math.max(left, right), Math.max(top, bottom));
    }

    @Override
    public boolean equals(Object other) {
        return other instanceof Rect r && left == r.left && top == r.top && right == r.right && bottom == r.bottom;
    }

    @Override
    public int hashCode() {
        return 31 * (31 * (31 * left + top) + right) + bottom;
    }

    @Override
    public String toString() {
        return "Rect(" + left + ", " + top + " - " + right + ", " + bottom + ")";
    }

    public String toShortString() {
        return "[" + left + "," + top + "][" + right + "," + bottom + "]";
    }

    /** The four numbers with a space between them, for {@link #unflattenFromString}. */
    public String flattenToString() {
        return left + " " + top + " " + right + " " + bottom;
    }

    /** Null for what {@link #flattenToString} never makes. */
    public static Rect unflattenFromString(String str) {
        Matcher flat = FLAT.matcher(str == null ? "" : str);
        return !flat.matches() ? null : new Rect(Integer.parseInt(flat.group(1)), Integer.parseInt(flat.group(2)),
                Integer.parseInt(flat.group(3)), Integer.parseInt(flat.group(4)));
    }
}
