package android.graphics;

import java.util.Locale;
import java.util.Map;

/** Colour ints: straight alpha, red, green and blue from the highest byte to the lowest. */
public class Color {
    public static final int BLACK = 0xFF000000;
    public static final int DKGRAY = 0xFF444444;
    public static final int GRAY = 0xFF888888;
    public static final int LTGRAY = 0xFFCCCCCC;
    public static final int WHITE = 0xFFFFFFFF;
    public static final int RED = 0xFFFF0000;
    public static final int GREEN = 0xFF00FF00;
    public static final int BLUE = 0xFF0000FF;
    public static final int YELLOW = 0xFFFFFF00;
    public static final int CYAN = 0xFF00FFFF;
    public static final int MAGENTA = 0xFFFF00FF;
    public static final int TRANSPARENT = 0;

    private static final Map<String, Integer> NAMES = Map.ofEntries(
            Map.entry("black", BLACK), Map.entry("white", WHITE), Map.entry("red", RED), Map.entry("green", GREEN),
            Map.entry("blue", BLUE), Map.entry("yellow", YELLOW), Map.entry("cyan", CYAN), Map.entry("aqua", CYAN),
            Map.entry("magenta", MAGENTA), Map.entry("fuchsia", MAGENTA), Map.entry("lime", GREEN),
            Map.entry("darkgray", DKGRAY), Map.entry("darkgrey", DKGRAY), Map.entry("gray", GRAY), Map.entry("grey", GRAY),
            Map.entry("lightgray", LTGRAY), Map.entry("lightgrey", LTGRAY), Map.entry("silver", 0xFFC0C0C0),
            Map.entry("maroon", 0xFF800000), Map.entry("navy", 0xFF000080), Map.entry("olive", 0xFF808000),
            Map.entry("purple", 0xFF800080), Map.entry("teal", 0xFF008080));

    private Color() {}

    public static int alpha(int color) {
        return color >>> 24;
    }

    public static int red(int color) {
        return color >> 16 & 255;
    }

    public static int green(int color) {
        return color >> 8 & 255;
    }

    public static int blue(int color) {
        return color & 255;
    }

    /** Opaque; channels of 0 to 255, which nothing checks. */
    public static int rgb(int red, int green, int blue) {
        return argb(255, red, green, blue);
    }

    /** Opaque; channels of 0 to 1, which nothing checks. */
    public static int rgb(float red, float green, float blue) {
        return argb(1, red, green, blue);
    }

    /** Channels of 0 to 255, which nothing checks. */
    public static int argb(int alpha, int red, int green, int blue) {
        return alpha << 24 | red << 16 | green << 8 | blue;
    }

    /** Channels of 0 to 1, which nothing checks, rounded to the nearest byte. */
    public static int argb(float alpha, float red, float green, float blue) {
        return argb(toByte(alpha), toByte(red), toByte(green), toByte(blue));
    }

    /** The relative luminance of an sRGB colour, 0 to 1, without regard to its alpha. */
    public static float luminance(int color) {
        return (float) (0.2126 * linear(red(color)) + 0.7152 * linear(green(color)) + 0.0722 * linear(blue(color)));
    }

    /** The colour of {@code #RRGGBB}, {@code #AARRGGBB} or a name, in letters of either case. */
    public static int parseColor(String colorString) {
        if (colorString.charAt(0) == '#') {
            int digits = colorString.length() - 1;
            int color = (int) Long.parseLong(colorString.substring(1), 16);
            if (digits != 6 && digits != 8) {
                throw new IllegalArgumentException("Unknown color");
            }
            return digits == 6 ? color | BLACK : color;
        }
        Integer color = NAMES.get(colorString.toLowerCase(Locale.ROOT));
        if (color == null) {
            throw new IllegalArgumentException("Unknown color");
        }
        return color;
    }

    /** Into hsv: the hue in degrees, below 360, the saturation and the value, both 0 to 1. */
    public static void RGBToHSV(int red, int green, int blue, float[] hsv) {
        checkHsv(hsv);
        int top = Math.max(red, Math.max(green, blue));
        int range = top - Math.min(red, Math.min(green, blue));
        float hue = 0;
        if (range != 0) {
            float sixth = red == top ? (float) (green - blue) / range
                    : green == top ? 2 + (float) (blue - red) / range : 4 + (float) (red - green) / range;
            hue = sixth < 0 ? sixth * 60 + 360 : sixth * 60;
        }
        hsv[0] = hue;
        hsv[1] = top == 0 ? 0 : (float) range / top;
        hsv[2] = top / 255f;
    }

    /** As {@link #RGBToHSV}, of a colour whose alpha is ignored. */
    public static void colorToHSV(int color, float[] hsv) {
        RGBToHSV(red(color), green(color), blue(color), hsv);
    }

    /** The opaque colour of a hue in degrees, saturation and value; what is out of range is pinned. */
    public static int HSVToColor(float[] hsv) {
        return HSVToColor(255, hsv);
    }

    /** As {@link #HSVToColor(float[])}, with an alpha of 0 to 255, which nothing checks. */
    public static int HSVToColor(int alpha, float[] hsv) {
        checkHsv(hsv);
        // 360 degrees are 0 again, so that both ends of the range are pinned to 0.
        float sixths = hsv[0] < 0 || hsv[0] >= 360 ? 0 : hsv[0] / 60;
        float s = Math.max(0, Math.min(hsv[1], 1)), v = Math.max(0, Math.min(hsv[2], 1));
        int sector = (int) sixths;
        float f = sixths - sector;
        int top = toByte(v), low = toByte((1 - s) * v);
        int falling = toByte((1 - s * f) * v), rising = toByte((1 - s * (1 - f)) * v);
        return switch (sector) {
            case 0 -> argb(alpha, top, rising, low);
            case 1 -> argb(alpha, falling, top, low);
            case 2 -> argb(alpha, low, top, rising);
            case 3 -> argb(alpha, low, falling, top);
            case 4 -> argb(alpha, rising, low, top);
            default -> argb(alpha, top, low, falling);
        };
    }

    private static void checkHsv(float[] hsv) {
        if (hsv.length < 3) {
            throw new RuntimeException("3 components required for hsv");
        }
    }

    private static int toByte(float channel) {
        return (int) (channel * 255 + 0.5f);
    }

    /** The sRGB curve: a line near black, a power of 2.4 above. */
    private static double linear(int channel) {
        double c = channel / 255.0;
        return c <= 0.04045 ? c / 12.92 : Math.pow((c + 0.055) / 1.055, 2.4);
    }
}
