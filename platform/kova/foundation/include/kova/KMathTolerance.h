#pragma once

// Default absolute tolerance of the isEquivalent comparisons of the math types.
inline constexpr double kKovaDoubleEpsilon = 1.0e-10;
inline constexpr float kKovaFloatEpsilon = 1.0e-5f;
