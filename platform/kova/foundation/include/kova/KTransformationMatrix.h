#pragma once

#include <kova/KExport.h>
#include <kova/KMatrix.h>
#include <kova/KVector.h>

// Translation, rotation and scale kept apart and composed into a KMatrix on request.
// The composed matrix scales first, then rotates about X, then Y, then Z (angles in radians,
// right-handed), then translates: M = S * Rx * Ry * Rz * T in the row-vector convention.
class KOVA_API KTransformationMatrix {
public:
    KTransformationMatrix() = default;

    const KVector& translation() const { return translation_; }
    KTransformationMatrix& setTranslation(const KVector& translation);
    // Euler angles in radians about X, Y and Z, applied in that order.
    const KVector& rotation() const { return rotation_; }
    KTransformationMatrix& setRotation(const KVector& radians);
    const KVector& scale() const { return scale_; }
    KTransformationMatrix& setScale(const KVector& scale);

    KMatrix asMatrix() const;

private:
    KVector translation_;
    KVector rotation_;
    KVector scale_{1.0, 1.0, 1.0};
};
