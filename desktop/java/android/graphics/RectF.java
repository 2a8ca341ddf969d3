package android.graphics;

/** A rectangle of float coordinates; right and bottom lie outside. Nothing keeps left below right but {@link #sort}. */
public class RectF {
    public float left;
    public float top;
    public float right;
    public float bottom;

    public RectF() {}

    public RectF(float left, float top, float right, float bottom) {
        set(left, top, right, bottom);
    }

    /** A copy; of null, an empty one. */
    public RectF(RectF r) {
        if (r != null) {
            set(r);
        }
    }

    /** A copy; of null, an empty one. */
    public RectF(Rect r) {
        if (r != null) {
            set(r);
        }
    }

    public void set(float left, float top, float right, float bottom) {
        this.left = left;
        this.top = top;
        this.right = right;
        this.bottom = bottom;
    }

    public void set(RectF src) {
        set(src.left, src.top, src.right, src.bottom);
    }

    public void set(Rect src) {
        set(src.left, src.top, src.right, src.bottom);
    }

    public void setEmpty() {
        set(0, 0, 0, 0);
    }

    public final boolean isEmpty() {
        return left >= right || top >= bottom;
    }

    public final float width() {
        return right - left;
    }

    public final float height() {
        return bottom - top;
    }

    public final float centerX() {
        return (left + right) * 0.5f;
    }

    public final float centerY() {
        return (top + bottom) * 0.5f;
    }

    public void offset(float dx, float dy) {
        set(left + dx, top + dy, right + dx, bottom + dy);
    }

    public void offsetTo(float newLeft, float newTop) {
        set(newLeft, newTop, right + (newLeft - left), bottom + (newTop - top));
    }

    /** Positive values make it smaller. */
    public void inset(float dx, float dy) {
        set(left + dx, top + dy, right - dx, bottom - dy);
    }

    /** An empty rectangle contains nothing. */
    public boolean contains(float x, float y) {
        return nonEmpty(left, top, right, bottom) && x >= left && x < right && y >= top && y < bottom;
    }

    public boolean contains(float left, float top, float right, float bottom) {
        return nonEmpty(this.left, this.top, this.right, this.bottom)
                && this.left <= left && this.top <= top && this.right >= right && this.bottom >= bottom;
    }

    public boolean contains(RectF r) {
        return contains(r.left, r.top, r.right, r.bottom);
    }

    public boolean intersects(float left, float top, float right, float bottom) {
        return this.left < right && left < this.right && this.top < bottom && top < this.bottom;
    }

    public static boolean intersects(RectF a, RectF b) {
        return a.intersects(b.left, b.top, b.right, b.bottom);
    }

    /** Becomes what both share; where they share nothing, false, and nothing changes. */
    public boolean intersect(float left, float top, float right, float bottom) {
        if (!intersects(left, top, right, bottom)) {
            return false;
        }
        set(Math.max(this.left, left), Math.max(this.top, top), Math.min(this.right, right), Math.min(this.bottom, bottom));
        return true;
    }

    public boolean intersect(RectF r) {
        return intersect(r.left, r.top, r.right, r.bottom);
    }

    /** Becomes what a and b share; where they share nothing, false, and nothing changes. */
    public boolean setIntersect(RectF a, RectF b) {
        if (!intersects(a, b)) {
            return false;
        }
        set(Math.max(a.left, b.left), Math.max(a.top, b.top), Math.min(a.right, b.right), Math.min(a.bottom, b.bottom));
        return true;
    }

    /** Grows to hold both; an empty one counts for nothing. */
    public void union(float left, float top, float right, float bottom) {
        if (!nonEmpty(left, top, right, bottom)) {
            return;
        }
        if (nonEmpty(this.left, this.top, this.right, this.bottom)) {
            set(Math.min(this.left, left), Math.min(this.top, top), Math.max(this.right, right), Math.max(this.bottom, bottom));
        } else {
            set(left, top, right, bottom);
        }
    }

    public void union(RectF r) {
        union(r.left, r.top, r.right, r.bottom);
    }

    /** Grows until its edges reach the point. */
    public void union(float x, float y) {
        set(Math.min(left, x), Math.min(top, y), Math.max(right, x), Math.max(bottom, y));
    }

    /** Swaps edges that lie the wrong way round. */
    public void sort() {
        set(Math.min(left, right), Math.min(top, bottom), Math.max(left, right), Math.max(top, bottom));
    }

    /** Each edge to the nearest whole number, a half up. */
    public void round(Rect dst) {
        dst.set(Math.round(left), Math.round(top), Math.round(right), Math.round(bottom));
    }

    /** The smallest rectangle of whole numbers that holds this one. */
    public void roundOut(Rect dst) {
        dst.set((int) Math.floor(left), (int) Math.floor(top), (int) Math.ceil(right), (int) Math.ceil(bottom));
    }

    @Override
    public boolean equals(Object other) {
        return other != null && getClass() == other.getClass() && same((RectF) other);
    }

    @Override
    public int hashCode() {
        return 31 * (31 * (31 * bits(left) + bits(top)) + bits(right)) + bits(bottom);
    }

    @Override
    public String toString() {
        return "RectF(" + left + ", " + top + ", " + right + ", " + bottom + ")";
    }

    public String toShortString() {
        return "[" + left + "," + top + "][" + right + "," + bottom + "]";
    }

    private boolean same(RectF r) {
        return left == r.left && top == r.top && right == r.right && bottom == r.bottom;
    }

    /** -0 equals 0, so both have the same bits here. */
    private static int bits(float edge) {
        return edge == 0 ? 0 : Float.floatToIntBits(edge);
    }

    // Not the opposite of isEmpty() where an edge is NaN: that is neither.
    private static boolean nonEmpty(float left, float top, float right, float bottom) {
        return left < right && top < bottom;
    }
}
