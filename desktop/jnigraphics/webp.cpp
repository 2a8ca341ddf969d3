// WebP for BitmapFactory, by a libwebp that need not be there.

#include <dlfcn.h>
#include <jni.h>

#include <cstddef>
#include <cstdint>

namespace {

// The library's own functions: the first gives 0 for what is no WebP, the second null for what it cannot decode.
using GetInfo = int(const std::uint8_t* data, std::size_t size, int* width, int* height);
using DecodeRGBAInto = std::uint8_t*(const std::uint8_t* data, std::size_t size, std::uint8_t* rgba, std::size_t rgbaSize,
                                     int stride);

template <typename Function>
Function* function(jlong library, const char* name) {
    return reinterpret_cast<Function*>(dlsym(reinterpret_cast<void*>(library), name));
}

struct Bytes {
    Bytes(JNIEnv* env, jobject buffer)
        : begin(static_cast<std::uint8_t*>(env->GetDirectBufferAddress(buffer))),
          size(static_cast<std::size_t>(env->GetDirectBufferCapacity(buffer))) {}
    std::uint8_t* begin;
    std::size_t size;
};

}  // namespace

extern "C" {

// Stays open for good; without both functions it is as good as none.
JNIEXPORT jlong JNICALL Java_android_graphics_Webp_openLibrary(JNIEnv*, jclass) {
    const auto library = reinterpret_cast<jlong>(dlopen("libwebp.so.7", RTLD_NOW | RTLD_LOCAL));
    if (library == 0 || function<GetInfo>(library, "WebPGetInfo") == nullptr) return 0;
    return function<DecodeRGBAInto>(library, "WebPDecodeRGBAInto") == nullptr ? 0 : library;
}

JNIEXPORT jlong JNICALL Java_android_graphics_Webp_size(JNIEnv* env, jclass, jlong library, jobject data) {
    const Bytes file(env, data);
    int width = 0;
    int height = 0;
    if (function<GetInfo>(library, "WebPGetInfo")(file.begin, file.size, &width, &height) == 0) return 0;
    return static_cast<jlong>(width) << 32 | height;
}

JNIEXPORT jboolean JNICALL Java_android_graphics_Webp_decode(JNIEnv* env, jclass, jlong library, jobject data, jobject pixels,
                                                             jint rowBytes) {
    const Bytes file(env, data);
    const Bytes rgba(env, pixels);
    const auto decode = function<DecodeRGBAInto>(library, "WebPDecodeRGBAInto");
    return decode(file.begin, file.size, rgba.begin, rgba.size, rowBytes) != nullptr ? JNI_TRUE : JNI_FALSE;
}

}  // extern "C"
