#pragma once

/// Elementary functions, correctly rounded: each result is the double nearest the true value (ties to even), and so
/// the same on every machine, whatever its instruction set, compiler or C library. `src` calls no other; roots,
/// remainders and roundings of the standard library are exact already.
///
/// Range: all doubles. Infinities, NaN, signed zeros, subnormals and arguments out of the domain give what Annex F of
/// the C standard says; no flag or errno is promised.
///
/// Method: tables and short Taylor series in pairs of doubles give about 66 bits; if these leave the last place open,
/// in one call of some thousand, longer series give 75 to 94 bits in less than a microsecond, and what they leave open
/// is worked out anew with 256 bits. No argument of a function of one variable
/// comes nearer a rounding boundary than some 2^-118 of its value; ties that are exact (powers, hypotenuses) are
/// recognised within 2^-200.
///
/// The forms for spans work on several numbers at a time and give the same bits. Results may stand where the arguments
/// stood; both spans have the same length.

#include <complex>
#include <span>

namespace vkm {

/// Sine, cosine and tangent of x radians.
double sin(double x);
double cos(double x);
double tan(double x);
void sin_cos(double x, double& sine, double& cosine);
void sin(std::span<const double> x, std::span<double> result);
void cos(std::span<const double> x, std::span<double> result);
void tan(std::span<const double> x, std::span<double> result);
void sin_cos(std::span<const double> x, std::span<double> sines, std::span<double> cosines);

/// Sine in single precision, within 0.5001 units in its last place.
float sin(float x);
void sin(std::span<const float> x, std::span<float> result);

/// Inverse sine in [-pi/2, pi/2] and inverse cosine in [0, pi]; NaN for |x| > 1.
double asin(double x);
double acos(double x);
void asin(std::span<const double> x, std::span<double> result);
void acos(std::span<const double> x, std::span<double> result);

/// Angle in [-pi, pi] of the point (x, y).
double atan2(double y, double x);

/// e^x.
double exp(double x);
void exp(std::span<const double> x, std::span<double> result);

/// e^z, each part correctly rounded to within one unit in the last place: e^x cos y + i e^x sin y of rounded factors.
std::complex<double> exp(const std::complex<double>& z);

/// Natural and decimal logarithm; -infinity at 0, NaN below.
double log(double x);
double log10(double x);
void log(std::span<const double> x, std::span<double> result);

/// x^y; NaN for x < 0 unless y is whole.
double pow(double x, double y);
void pow(std::span<const double> x, double y, std::span<double> result);

/// sqrt(x^2 + y^2) without overflow on the way.
double hypot(double x, double y);
void hypot(std::span<const double> x, std::span<const double> y, std::span<double> result);

/// |z|.
inline double abs(const std::complex<double>& z) { return hypot(z.real(), z.imag()); }

}  // namespace vkm
