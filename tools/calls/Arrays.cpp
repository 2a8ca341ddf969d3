#include "Arrays.h"

#include <algorithm>

namespace {

template <typename Array>
bool inside(Array& array, jsize start, jsize length) {
    const bool fits = start >= 0 && length >= 0 && std::size_t(start) + std::size_t(length) <= array.elements.size();
    array.overrun |= !fits;
    return fits;
}

template <typename Array, typename Object, typename Element>
void getRegion(JNIEnv*, Object object, jsize start, jsize length, Element* out) {
    Array& array = *reinterpret_cast<Array*>(object);
    if (inside(array, start, length)) std::copy_n(array.elements.begin() + start, length, out);
}

void setIntArrayRegion(JNIEnv*, jintArray object, jsize start, jsize length, const jint* in) {
    FakeIntArray& array = *reinterpret_cast<FakeIntArray*>(object);
    if (inside(array, start, length)) std::copy_n(in, length, array.elements.begin() + start);
}

}  // namespace

JNIEnv* fakeEnv() {
    static JNINativeInterface functions = [] {
        JNINativeInterface table{};
        table.GetIntArrayRegion = getRegion<FakeIntArray>;
        table.GetFloatArrayRegion = getRegion<FakeFloatArray>;
        table.SetIntArrayRegion = setIntArrayRegion;
        return table;
    }();
    static JNIEnv env{&functions};
    return &env;
}
