package android.graphics;

import static org.junit.jupiter.api.Assertions.*;

import java.util.function.Predicate;
import java.util.stream.IntStream;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.CsvSource;

class GeometryTest {
    /** What two rectangles share, null if nothing, and what holds both; Rect and RectF alike. */
    @ParameterizedTest
    @CsvSource({
        "0 0 4 4, 2 2 6 6,   2 2 4 4,  0 0 6 6", "0 0 4 4, 4 0 6 4, ,         0 0 6 4",  "0 0 4 4, 1 1 2 2,  1 1 2 2, 0 0 4 4",
        "0 0 4 4, 9 9 9 12,  ,         0 0 4 4", "3 3 3 9, -2 0 1 1, ,        -2 0 1 1",
        "4 4 0 0, 1 1 2 2,   ,         1 1 2 2", "-5 -5 -1 -1, -3 -3 3 3, -3 -3 -1 -1, -5 -5 3 3",
    })
    void rectanglesMeet(String a, String b, String shared, String both) {
        Rect one = Rect.unflattenFromString(a), other = Rect.unflattenFromString(b), met = new Rect(7, 7, 7, 7);
        assertEquals(shared != null, Rect.intersects(one, other));
        assertEquals(shared != null, met.setIntersect(one, other));
        assertEquals(shared != null ? shared : "7 7 7 7", met.flattenToString());
        RectF met2 = new RectF(one), union2 = new RectF(one);
        assertEquals(shared != null, met2.intersect(new RectF(other)));
        assertEquals(new RectF(Rect.unflattenFromString(shared != null ? shared : a)), met2);
        assertEquals(shared != null, new Rect(one).intersect(other));
        assertEquals(!one.isEmpty() && other.equals(met), one.contains(other));
        assertEquals(one.contains(other), new RectF(one).contains(new RectF(other)));
        union2.union(new RectF(other));
        one.union(other);
        assertEquals(both, one.flattenToString());
        assertEquals(new RectF(one), union2);
        assertEquals(one, Rect.unflattenFromString(one.flattenToString()));
        assertEquals(new Rect(one).hashCode(), one.hashCode());
    }

    @Test
    void rectanglesMoveAndAnswer() {
        var rect = new Rect(1, 2, 4, 9);
        assertEquals("3 7 2 5 2.5 5.5", rect.width() + " " + rect.height() + " " + rect.centerX() + " " + rect.centerY() + " "
            + rect.exactCenterX() + " " + rect.exactCenterY());
        assertEquals(-1, new Rect(-2, 0, 1, 0).centerX(), "rounded down");
        assertTrue(rect.contains(1, 2) && !rect.contains(4, 2) && !rect.contains(1, 9) && !rect.contains(0, 5));
        rect.offset(1, -1);
        rect.inset(1, 2);
        assertEquals("Rect(3, 3 - 4, 6)[3,3][4,6]", rect + rect.toShortString());
        rect.offsetTo(0, 0);
        rect.union(-1, 5);
        rect.inset(0, 0, 9, 0);
        rect.sort();
        assertEquals(new Rect(-8, 0, -1, 5), rect);
        for (String bad : new String[] {null, "", "1 2 3", "1 2 3 4 ", "1,2,3,4", "1 2 3 x"})
            assertNull(Rect.unflattenFromString(bad));
        assertEquals(new Rect(), new Rect((Rect) null));
        var floats = new RectF(0.5f, -0.5f, 1.5f, 2.4f);
        floats.round(rect);
        assertEquals(new Rect(1, 0, 2, 2), rect);
        floats.roundOut(rect);
        assertEquals(new Rect(0, -1, 2, 3), rect);
        floats.offsetTo(0, 1);
        floats.inset(0.25f, 0);
        assertEquals("RectF(0.25, 1.0, 0.75, 3.9)[0.25,1.0][0.75,3.9]", floats + floats.toShortString());
        assertTrue(floats.contains(0.25f, 1) && !floats.contains(0.75f, 1) && floats.centerX() == 0.5f);
        assertEquals(new RectF(0f, 0, 1, 1), new RectF(-0f, 0, 1, 1));
        assertTrue(!floats.isEmpty() && new RectF((Rect) null).isEmpty());
        var point = new Point(3, -4);
        point.offset(1, 1);
        point.negate();
        assertEquals("Point(-4, 3) true", point + " " + point.equals(new Point(point)));
        assertEquals("PointF(-4.0, 3.0) 5.0", new PointF(point) + " " + new PointF(point).length());
        assertFalse(new PointF(0f, 0).equals(new PointF(-0f, 0)) || point.equals(3, 4) || point.equals(null));
    }

    @ParameterizedTest
    @CsvSource({"#123456, FF123456", "#8fA0b0C0, 8FA0B0C0", "red, FFFF0000", "DarkGrey, FF444444", "lime, FF00FF00"})
    void namesAreColors(String name, String color) {
        assertEquals(color, BitmapTest.hex(Color.parseColor(name)));
    }

    /** Hue, saturation and value of a colour, and the colour of them again. */
    @ParameterizedTest
    @CsvSource({"FF0000, 0, 1, 1", "FFFF00, 60, 1, 1", "00FF00, 120, 1, 1", "00FFFF, 180, 1, 1", "0000FF, 240, 1, 1",
        "808080, 0, 0, .50196", "000000, 0, 0, 0", "FF0080, 329.882, 1, 1", "804020, 20, .75, .50196"})
    void huesAreColors(String color, float h, float s, float v) {
        float[] hsv = new float[3];
        int rgb = Integer.parseInt(color, 16);
        Color.colorToHSV(rgb, hsv);
        assertArrayEquals(new float[] {h, s, v}, hsv, 1e-3f);
        assertEquals(rgb | 0x7F000000, Color.HSVToColor(0x7F, hsv));
    }

    @Test
    void colorsComeBack() {
        float[] hsv = new float[3];
        assertTrue(IntStream.range(0, 1 << 24).filter(i -> i % 251 == 0).allMatch(rgb -> {
            Color.colorToHSV(rgb, hsv);
            return Color.HSVToColor(hsv) == (rgb | Color.BLACK) && hsv[0] >= 0 && hsv[0] < 360;
        }));
        assertEquals(Color.RED, Color.HSVToColor(new float[] {400, 2, 9}), "pinned");
        assertEquals("0.0 1.0", Color.luminance(Color.BLACK) + " " + Color.luminance(0x00FFFFFF));
        assertEquals(0.2126f + 0.0722f * 0.21586f, Color.luminance(0xFFFF0080), 1e-5f);
        assertEquals(0x80FF4001, Color.argb(0.5f, 1f, 0.25f, 0.004f));
        Predicate<String> unknown = name -> assertThrows(IllegalArgumentException.class, () -> Color.parseColor(name)) != null;
        assertTrue(unknown.test("#123") && unknown.test("#1234567") && unknown.test("#12345G") && unknown.test("reddish"));
        assertThrows(RuntimeException.class, () -> Color.HSVToColor(new float[2]));
    }
}
