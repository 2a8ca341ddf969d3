// C17, 7.12.
#pragma once

#define INFINITY (__builtin_inff())

extern "C" {
double atan(double);
double exp2(double);
double fabs(double);
double fma(double, double, double);
double fmod(double, double);
double sin(double);
double tan(double);
float fabsf(float);
float fmaf(float, float, float);
float nextafterf(float, float);
float sqrtf(float);
float truncf(float);
void sincosf(float, float* sine, float* cosine);  // not in the standard
}
