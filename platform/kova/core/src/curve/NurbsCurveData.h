#pragma once

#include "curve/CurveGeometry.h"

#include <atomic>
#include <cstdint>
#include <kova/KMatrix.h>
#include <kova/KSpace.h>
#include <kova/detail/GeometryData.h>
#include <memory>
#include <mutex>
#include <optional>

namespace kova::detail {

// NURBS curve data: a curve in object space, its component tags (CV tags, category 2) and,
// for data produced by a shape's world-space output, the shape's world matrix.
//
// World space is the object-space curve mapped by that matrix; data that carries no matrix
// (made with KFnNurbsCurveData::create, or a shape's "local" output) has world space equal to
// object space. The curve itself is immutable and shared by clones; setCurve swaps it whole,
// so readers holding the previous one keep a consistent curve.
class KOVA_API NurbsCurveData : public GeometryData {
public:
    NurbsCurveData();

    std::shared_ptr<DataObject> clone() const override;
    KString toText() const override;
    // The CV count for CV components; -1 for other kinds.
    int elementCount(KFn::Type componentType) const override;

    // The curve in `space`: world space for KSpace::kWorld, object space otherwise.
    std::shared_ptr<const CurveGeometry> geometry(KSpace::Space space) const;
    // The curve in both spaces, read together with the generation they belong to.
    struct Snapshot {
        std::uint64_t generation = 0;
        std::shared_ptr<const CurveGeometry> object;
        std::shared_ptr<const CurveGeometry> world;
    };
    Snapshot snapshot() const;
    // Counts the replacements of the curve: a snapshot is current while this equals its
    // generation. One atomic load, for readers that keep a snapshot.
    std::uint64_t generation() const { return generation_.load(std::memory_order_acquire); }
    // Replaces the curve (given in object space).
    void setCurve(nurbs::Curve curve);
    // The world matrix the data carries, if any.
    std::optional<KMatrix> worldMatrix() const;
    // A copy (sharing the curve, with its own copy of the tags) that carries `world`.
    std::shared_ptr<NurbsCurveData> withWorldMatrix(const KMatrix& world) const;

private:
    mutable std::mutex mutex_;
    std::atomic<std::uint64_t> generation_{0};
    std::shared_ptr<const CurveGeometry> object_;
    std::shared_ptr<const CurveGeometry> world_; // equals object_ without a world matrix
    std::optional<KMatrix> matrix_;
};

// The curve data behind `object`, or null.
inline std::shared_ptr<NurbsCurveData> nurbsCurveDataOf(const KObject& object) {
    return sharedEntityAs<NurbsCurveData>(object.entity());
}

} // namespace kova::detail
