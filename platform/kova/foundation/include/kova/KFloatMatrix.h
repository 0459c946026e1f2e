#pragma once

#include <kova/KExport.h>
#include <kova/KFloatPoint.h>
#include <kova/KFloatVector.h>
#include <kova/KMathTolerance.h>
#include <kova/KMatrix.h>
#include <kova/KStatus.h>

// A 4x4 transformation matrix in single precision, in the same row-vector convention as
// KMatrix (p' = p * M, translation in row 3). Inversion is computed in double precision.
class KOVA_API KFloatMatrix {
public:
    float matrix[4][4]; // [row][column]

    // The identity.
    KFloatMatrix();
    explicit KFloatMatrix(const float values[4][4]);
    // Rounds each value to float.
    explicit KFloatMatrix(const double values[4][4]);
    explicit KFloatMatrix(const KMatrix& m);

    // Copies the 16 values out, row by row; fails with kInvalidParameter for a null target.
    KStatus get(float values[4][4]) const;
    KMatrix asMatrix() const;

    // Element at row r, column c; both must be 0..3 (not checked).
    float operator()(unsigned int r, unsigned int c) const { return matrix[r][c]; }
    float& operator()(unsigned int r, unsigned int c) { return matrix[r][c]; }

    // The inverse; a singular matrix has none and yields the identity.
    KFloatMatrix inverse() const;
    KFloatMatrix transpose() const;
    KFloatMatrix& setToIdentity();

    KFloatMatrix operator*(const KFloatMatrix& right) const;
    bool operator==(const KFloatMatrix& other) const;
    bool isEquivalent(const KFloatMatrix& other, float tolerance = kKovaFloatEpsilon) const;

    static const KFloatMatrix identity;
};

// p * M with the full homogeneous row (x, y, z, w); the result is not cartesianized.
KOVA_API KFloatPoint operator*(const KFloatPoint& point, const KFloatMatrix& m);
// v * M with the upper 3x3 only: directions are not translated.
KOVA_API KFloatVector operator*(const KFloatVector& vector, const KFloatMatrix& m);
