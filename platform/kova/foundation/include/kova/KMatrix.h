#pragma once

#include <kova/KExport.h>
#include <kova/KMathTolerance.h>
#include <kova/KPoint.h>
#include <kova/KStatus.h>
#include <kova/KVector.h>

// A 4x4 transformation matrix in double precision, in the row-vector convention of the host:
// a point is transformed as p' = p * M, the translation sits in row 3, and A * B applies A
// first, then B.
class KOVA_API KMatrix {
public:
    double matrix[4][4]; // [row][column]

    // The identity.
    KMatrix();
    explicit KMatrix(const double values[4][4]);

    // Copies the 16 values out, row by row; fails with kInvalidParameter for a null target.
    KStatus get(double values[4][4]) const;

    // Element at row r, column c; both must be 0..3 (not checked).
    double operator()(unsigned int r, unsigned int c) const { return matrix[r][c]; }
    double& operator()(unsigned int r, unsigned int c) { return matrix[r][c]; }

    // The inverse; a singular matrix (see isSingular) has none and yields the identity.
    KMatrix inverse() const;
    KMatrix transpose() const;
    double det4x4() const;
    // True when the determinant vanishes relative to the size of the entries.
    bool isSingular() const;
    KMatrix& setToIdentity();

    KMatrix operator*(const KMatrix& right) const;
    KMatrix& operator*=(const KMatrix& right);
    bool operator==(const KMatrix& other) const;
    bool isEquivalent(const KMatrix& other, double tolerance = kKovaDoubleEpsilon) const;

    static const KMatrix identity;
};

// p * M with the full homogeneous row (x, y, z, w); the result is not cartesianized.
KOVA_API KPoint operator*(const KPoint& point, const KMatrix& m);
// v * M with the upper 3x3 only: directions are not translated.
KOVA_API KVector operator*(const KVector& vector, const KMatrix& m);
