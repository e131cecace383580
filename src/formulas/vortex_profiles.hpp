#pragma once

/// Profiles of two classical vortices.
///
/// Lamb-Oseen: a line vortex of circulation Gamma that spreads by the viscosity nu; r distance from its axis, t time.
/// Hill: a spherical vortex of radius a and strength A in cylindrical coordinates (r, z). The powers of the Hill
/// expressions are the theory's own and not those of the textbooks. SI units.

namespace vkm {

double lamb_oseen_velocity(double Gamma, double r, double nu, double t);
double lamb_oseen_vorticity(double Gamma, double r, double nu, double t);
double hill_streamfunction(double A, double r, double z, double a);
double hill_vorticity(double A, double r, double z, double a);
double hill_circulation(double A, double a);
double hill_velocity(double A, double a);

}  // namespace vkm
