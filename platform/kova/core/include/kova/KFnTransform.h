#pragma once

#include <kova/KExport.h>
#include <kova/KFnDagNode.h>
#include <kova/KSpace.h>
#include <kova/KVector.h>

// Function set of transforms: translation, rotation (radians, X then Y then Z) and scale.
// The node's "rotate" attribute holds the same angles in degrees.
class KOVA_API KFnTransform : public KFnDagNode {
public:
    KFnTransform() = default;
    explicit KFnTransform(const KObject& node, KStatus* status = nullptr);
    explicit KFnTransform(const KDagPath& path, KStatus* status = nullptr);

    KFn::Type functionType() const override { return KFn::kTransform; }

    // kTransform / kObject: the local translation; kWorld: the position of the node's origin
    // in world space.
    KVector getTranslation(KSpace::Space space, KStatus* status = nullptr) const;
    // Only kTransform and kObject are supported for setting.
    KStatus setTranslation(const KVector& translation, KSpace::Space space);
    KStatus getRotation(double radians[3]) const;
    KStatus setRotation(const double radians[3]);
    KStatus getScale(double scale[3]) const;
    KStatus setScale(const double scale[3]);
};
