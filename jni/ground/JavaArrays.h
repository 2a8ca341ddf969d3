// The first elements of a Java array: zeros where it is null or too short (then the exception of the copy is left to the
// caller).
#pragma once

#include <jni.h>

namespace LEVEL {

template <int count>
struct Ints {
    jint at[count] = {};

    Ints() = default;
    Ints(JNIEnv* env, jintArray array, int length = count) {
        if (array) env->functions->GetIntArrayRegion(env, array, 0, length, at);
    }
    void writeTo(JNIEnv* env, jintArray array) const {
        if (array) env->functions->SetIntArrayRegion(env, array, 0, count, at);
    }
};

template <int count>
struct Floats {
    jfloat at[count] = {};

    Floats(JNIEnv* env, jfloatArray array) {
        if (array) env->functions->GetFloatArrayRegion(env, array, 0, count, at);
    }
};

}  // namespace LEVEL
