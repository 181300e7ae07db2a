#include "effects/Trig.h"

#include <cmath>

namespace {

// Minimax coefficients on [-pi/4, pi/4] (the classic fdlibm kernels).
constexpr double S1 = -1.66666666666666324348e-01, S2 = 8.33333333332248946124e-03, S3 = -1.98412698298579493134e-04,
                 S4 = 2.75573137070700676789e-06, S5 = -2.50507602534068634195e-08, S6 = 1.58969099521155010221e-10;
constexpr double C1 = 4.16666666666666019037e-02, C2 = -1.38888888888741095749e-03, C3 = 2.48015872894767294178e-05,
                 C4 = -2.75573143513906633035e-07, C5 = 2.08757232129817482790e-09, C6 = -1.13596475577881948265e-11;

// pi / 2 in two parts, the first with its low bits clear, so n * part1 is exact.
constexpr double kHalfPi1 = 1.57079632673412561417e+00, kHalfPi1Tail = 6.07710050650619224932e-11;
constexpr double kTwoOverPi = 6.36619772367581382433e-01;

double KernelSin(double x) {
    const double z = x * x;
    return x + x * z * (S1 + z * (S2 + z * (S3 + z * (S4 + z * (S5 + z * S6)))));
}

double KernelCos(double x) {
    const double z = x * x;
    const double r = z * (C1 + z * (C2 + z * (C3 + z * (C4 + z * (C5 + z * C6)))));
    return 1.0 - (0.5 * z - z * r);
}

// x = r + n * pi / 2 with |r| <= pi / 4; returns n mod 4.
int Reduce(double x, double& r) {
    const double n = std::floor(x * kTwoOverPi + 0.5);
    r = (x - n * kHalfPi1) - n * kHalfPi1Tail;
    return int(static_cast<long long>(n) & 3);
}

} // namespace

double PortableSin(double x) {
    double r;
    switch (Reduce(x, r)) {
    case 0: return KernelSin(r);
    case 1: return KernelCos(r);
    case 2: return -KernelSin(r);
    default: return -KernelCos(r);
    }
}

double PortableCos(double x) {
    double r;
    switch (Reduce(x, r)) {
    case 0: return KernelCos(r);
    case 1: return -KernelSin(r);
    case 2: return -KernelCos(r);
    default: return KernelSin(r);
    }
}
