// The NDK's bitmap calls over the desktop android.graphics.Bitmap.

#include <android/bitmap.h>

#include <atomic>
#include <cstdint>
#include <cstdlib>

namespace {

// One class loader's Bitmap. A process has several where an IDE or a build tool loads classes anew, and all share this library.
// It is known weakly, so that a loader can go; its entry stays behind then and is no class's any more. The one that lasts as
// long as the JVM is held too, for that is faster to ask.
struct BitmapClass {
    jweak self;
    jclass held;
    jfieldID width, height, rowBytes, format, locks, lockAddress, pixels, pixelAddress, generation;
    const BitmapClass* older;
};

// An exception the caller already has must neither meet the JNI calls below, which forbid it, nor get lost; an unlock on the
// way out of a failed native is the usual case. What fails in here leaves no exception of its own.
class CallersException {
public:
    explicit CallersException(JNIEnv* env) : env_(env), pending_(env->ExceptionOccurred()) {
        if (pending_ != nullptr) env_->ExceptionClear();
    }
    ~CallersException() {
        if (pending_ == nullptr) return;
        env_->Throw(pending_);
        env_->DeleteLocalRef(pending_);
    }
    CallersException(const CallersException&) = delete;
    CallersException& operator=(const CallersException&) = delete;

private:
    JNIEnv* env_;
    jthrowable pending_;
};

void forget(JNIEnv* env, BitmapClass* made) {
    env->DeleteWeakGlobalRef(made->self);
    env->DeleteGlobalRef(made->held);
    std::free(made);
}

BitmapClass* newBitmapClass(JNIEnv* env, jclass type) {
    auto* const made = static_cast<BitmapClass*>(std::malloc(sizeof(BitmapClass)));
    if (made == nullptr) return nullptr;
    made->self = env->NewWeakGlobalRef(type);
    made->held = nullptr;

    const struct {
        jfieldID BitmapClass::* id;
        const char* name;
        const char* type;
    } fields[] = {
        {&BitmapClass::width, "width", "I"},
        {&BitmapClass::height, "height", "I"},
        {&BitmapClass::rowBytes, "rowBytes", "I"},
        {&BitmapClass::format, "format", "I"},
        {&BitmapClass::locks, "locks", "Ljava/nio/ByteBuffer;"},
        {&BitmapClass::lockAddress, "lockAddress", "J"},
        {&BitmapClass::pixels, "pixels", "Ljava/nio/ByteBuffer;"},
        {&BitmapClass::pixelAddress, "pixelAddress", "J"},
        {&BitmapClass::generation, "generation", "I"},
    };
    bool complete = made->self != nullptr;
    for (const auto& field : fields) {
        complete = complete && (made->*field.id = env->GetFieldID(type, field.name, field.type)) != nullptr;
    }
    const jfieldID lasts = complete ? env->GetStaticFieldID(type, "LASTS", "Z") : nullptr;
    if (lasts != nullptr && env->GetStaticBooleanField(type, lasts)) made->held = static_cast<jclass>(env->NewGlobalRef(type));
    if (lasts != nullptr) return made;
    forget(env, made);
    return nullptr;
}

const BitmapClass* known(JNIEnv* env, jclass type, const BitmapClass* entry) {
    while (entry != nullptr && !env->IsSameObject(type, entry->self)) entry = entry->older;
    return entry;
}

constinit std::atomic<const BitmapClass*> lasting{nullptr};

// Looked up by the first call of each class loader. Threads that race for one all look; the first to finish wins.
const BitmapClass* knownOrNew(JNIEnv* env, jclass type) {
    static constinit std::atomic<const BitmapClass*> newest{nullptr};
    const BitmapClass* first = newest.load(std::memory_order_acquire);
    if (const BitmapClass* const found = known(env, type, first)) return found;

    // The caller's, by its class loader: an object of any other class is no bitmap to it.
    const jclass callers = env->FindClass("android/graphics/Bitmap");
    BitmapClass* const made = callers != nullptr && env->IsSameObject(type, callers) ? newBitmapClass(env, type) : nullptr;
    env->ExceptionClear();
    env->DeleteLocalRef(callers);
    if (made == nullptr) return nullptr;
    do {
        if (const BitmapClass* const found = known(env, type, first)) {
            forget(env, made);
            return found;
        }
        made->older = first;
    } while (!newest.compare_exchange_weak(first, made, std::memory_order_acq_rel, std::memory_order_acquire));
    if (made->held != nullptr) lasting.store(made, std::memory_order_release);
    return made;
}

const BitmapClass* bitmapClass(JNIEnv* env, jobject bitmap) {
    const BitmapClass* const first = lasting.load(std::memory_order_acquire);
    if (first != nullptr && env->IsInstanceOf(bitmap, first->held)) return first;
    const jclass type = env->GetObjectClass(bitmap);
    const BitmapClass* const found = knownOrNew(env, type);
    env->DeleteLocalRef(type);
    return found;
}

// Reading a long field is far cheaper than asking a buffer for its address, so the bitmap keeps the answer.
void* bufferAddress(JNIEnv* env, jobject bitmap, jfieldID bufferField, jfieldID addressField) {
    const jlong known = env->GetLongField(bitmap, addressField);
    if (known != 0) return reinterpret_cast<void*>(known);

    const jobject buffer = env->GetObjectField(bitmap, bufferField);
    void* const address = env->GetDirectBufferAddress(buffer);
    env->DeleteLocalRef(buffer);
    env->SetLongField(bitmap, addressField, reinterpret_cast<jlong>(address));
    return address;
}

// The number of locks; Bitmap.recycle() sets the sign bit in the same word, so lock, unlock and recycle exclude each other.
std::atomic_ref<std::int32_t> lockWord(JNIEnv* env, jobject bitmap, const BitmapClass& type) {
    return std::atomic_ref(*static_cast<std::int32_t*>(bufferAddress(env, bitmap, type.locks, type.lockAddress)));
}

constexpr std::int32_t recycledAndUnlocked = INT32_MIN;

// Runs body(bitmap class, lock word) for a bitmap, and refuses anything else.
template <typename Body>
int withBitmap(JNIEnv* env, jobject bitmap, Body body) {
    if (env == nullptr || bitmap == nullptr) return ANDROID_BITMAP_RESULT_BAD_PARAMETER;
    const CallersException aside(env);
    const BitmapClass* const type = bitmapClass(env, bitmap);
    if (type == nullptr) return ANDROID_BITMAP_RESULT_BAD_PARAMETER;
    return body(*type, lockWord(env, bitmap, *type));
}

}  // namespace

JNIEXPORT int AndroidBitmap_getInfo(JNIEnv* env, jobject jbitmap, AndroidBitmapInfo* info) {
    return withBitmap(env, jbitmap, [=](const BitmapClass& type, std::atomic_ref<std::int32_t> locks) {
        if (locks.load() < 0) return ANDROID_BITMAP_RESULT_JNI_EXCEPTION;
        if (info != nullptr) {
            info->width = static_cast<std::uint32_t>(env->GetIntField(jbitmap, type.width));
            info->height = static_cast<std::uint32_t>(env->GetIntField(jbitmap, type.height));
            info->stride = static_cast<std::uint32_t>(env->GetIntField(jbitmap, type.rowBytes));
            info->format = env->GetIntField(jbitmap, type.format);
            info->flags = 0;
        }
        return ANDROID_BITMAP_RESULT_SUCCESS;
    });
}

JNIEXPORT int AndroidBitmap_lockPixels(JNIEnv* env, jobject jbitmap, void** addrPtr) {
    return withBitmap(env, jbitmap, [=](const BitmapClass& type, std::atomic_ref<std::int32_t> locks) {
        std::int32_t count = locks.load();
        do {
            if (count < 0) return ANDROID_BITMAP_RESULT_JNI_EXCEPTION;
        } while (!locks.compare_exchange_weak(count, count + 1));
        if (addrPtr != nullptr) *addrPtr = bufferAddress(env, jbitmap, type.pixels, type.pixelAddress);
        return ANDROID_BITMAP_RESULT_SUCCESS;
    });
}

JNIEXPORT int AndroidBitmap_unlockPixels(JNIEnv* env, jobject jbitmap) {
    return withBitmap(env, jbitmap, [=](const BitmapClass& type, std::atomic_ref<std::int32_t> locks) {
        // The pixels may have been written: the next who asks gets another generation.
        env->SetIntField(jbitmap, type.generation, 0);
        std::int32_t count = locks.load();
        do {
            if (count == 0 || count == recycledAndUnlocked) return ANDROID_BITMAP_RESULT_BAD_PARAMETER;
        } while (!locks.compare_exchange_weak(count, count - 1));
        if (count - 1 == recycledAndUnlocked) env->SetObjectField(jbitmap, type.pixels, nullptr);
        return ANDROID_BITMAP_RESULT_SUCCESS;
    });
}
