// One method of each class.
#include <KorvGraphics2D.h>
#include <KorvImageFilter.h>
#include <KorvPSBlendingMode.h>

extern "C" int Java_org_example_Consumer_decorate(JNIEnv* env, jclass, jobject icon, jobject texture) {
    return KorvGraphics2D::BitmapMultiply(env, icon, texture) + KorvImageFilter::BitmapSepia(env, icon, 0.5f) +
           KorvPSBlendingMode::TkPSBlendingMode(env, icon, texture, 3);
}
