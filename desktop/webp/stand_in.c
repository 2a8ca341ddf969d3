// Stands in for libwebp.so.7 where the reader is linked, so that no build needs it for any processor. It is never loaded.
void WebPGetInfo(void);
void WebPDecodeRGBAInto(void);
void WebPGetInfo(void) {}
void WebPDecodeRGBAInto(void) {}
