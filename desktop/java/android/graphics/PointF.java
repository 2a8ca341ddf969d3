package android.graphics;

/** A point of float coordinates. */
public class PointF {
    public float x;
    public float y;

    public PointF() {}

    public PointF(float x, float y) {
        set(x, y);
    }

    public PointF(Point p) {
        set(p.x, p.y);
    }

    public PointF(PointF p) {
        set(p);
    }

    public final void set(float x, float y) {
        this.x = x;
        this.y = y;
    }

    public final void set(PointF p) {
        set(p.x, p.y);
    }

    public final void negate() {
        set(-x, -y);
    }

    public final void offset(float dx, float dy) {
        set(x + dx, y + dy);
    }

    /** The distance from 0, 0. */
    public final float length() {
        return length(x, y);
    }

    public static float length(float x, float y) {
        return (float) Math.hypot(x, y);
    }

    public final boolean equals(float x, float y) {
        return this.x == x && this.y == y;
    }

    /** Unlike {@link #equals(float, float)} it tells 0 from -0, and NaN equals NaN. */
    @Override
    public boolean equals(Object other) {
        return other != null && getClass() == other.getClass()
                && Float.compare(x, ((PointF) other).x) == 0 && Float.compare(y, ((PointF) other).y) == 0;
    }

    @Override
    public int hashCode() {
        return 31 * Float.floatToIntBits(x) + Float.floatToIntBits(y);
    }

    @Override
    public String toString() {
        return "PointF(" + x + ", " + y + ")";
    }
}
