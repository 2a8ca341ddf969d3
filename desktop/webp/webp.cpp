// WebP for BitmapFactory, by Debian's libwebp. A library of its own, so that the others can be loaded where there is no
// libwebp.

#include <jni.h>

#include <cstddef>
#include <cstdint>

extern "C" {

// libwebp's own: the first gives 0 for what is no WebP, the second null for what it cannot decode.
int WebPGetInfo(const std::uint8_t* data, std::size_t size, int* width, int* height);
std::uint8_t* WebPDecodeRGBAInto(const std::uint8_t* data, std::size_t size, std::uint8_t* rgba, std::size_t rgbaSize,
                                 int stride);
}

namespace {

struct Bytes {
    Bytes(JNIEnv* env, jobject buffer)
        : begin(static_cast<std::uint8_t*>(env->GetDirectBufferAddress(buffer))),
          size(static_cast<std::size_t>(env->GetDirectBufferCapacity(buffer))) {}
    std::uint8_t* begin;
    std::size_t size;
};

}  // namespace

extern "C" {

JNIEXPORT jlong JNICALL Java_android_graphics_Webp_size(JNIEnv* env, jclass, jobject data) {
    const Bytes file(env, data);
    int width = 0;
    int height = 0;
    if (WebPGetInfo(file.begin, file.size, &width, &height) == 0) return 0;
    return static_cast<jlong>(width) << 32 | height;
}

JNIEXPORT jboolean JNICALL Java_android_graphics_Webp_decode(JNIEnv* env, jclass, jobject data, jobject pixels, jint rowBytes) {
    const Bytes file(env, data);
    const Bytes rgba(env, pixels);
    const bool isDecoded = WebPDecodeRGBAInto(file.begin, file.size, rgba.begin, rgba.size, rowBytes) != nullptr;
    return isDecoded ? JNI_TRUE : JNI_FALSE;
}

}  // extern "C"
