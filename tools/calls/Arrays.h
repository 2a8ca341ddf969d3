// What stands in for Java's arrays: vectors, behind a JNIEnv that knows the three array functions that the library uses.
#pragma once

#include <jni.h>

#include <vector>

template <typename Element, typename Object>
struct FakeArray {
    std::vector<Element> elements;
    bool overrun = false;  // a region copy went beyond the array: Java throws, nothing is copied

    Object object() { return reinterpret_cast<Object>(this); }
};
using FakeIntArray = FakeArray<jint, jintArray>;
using FakeFloatArray = FakeArray<jfloat, jfloatArray>;

JNIEnv* fakeEnv();
