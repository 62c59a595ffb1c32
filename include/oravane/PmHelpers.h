#ifndef ORAVANE_PMHELPERS_H
#define ORAVANE_PMHELPERS_H

/// Absolute value, smaller and larger of two, for the three number types of the library. With a NaN the
/// comparison is false: `PmMIN` and `PmMAX` then give their second argument, and `PmABS` gives the NaN.
inline int PmABS(int x) {
    return x < 0 ? -x : x;
}
inline float PmABS(float x) {
    return x < 0 ? -x : x;
}
inline double PmABS(double x) {
    return x < 0 ? -x : x;
}
inline int PmMIN(int a, int b) {
    return a < b ? a : b;
}
inline float PmMIN(float a, float b) {
    return a < b ? a : b;
}
inline double PmMIN(double a, double b) {
    return a < b ? a : b;
}
inline int PmMAX(int a, int b) {
    return a > b ? a : b;
}
inline float PmMAX(float a, float b) {
    return a > b ? a : b;
}
inline double PmMAX(double a, double b) {
    return a > b ? a : b;
}

#endif
