#pragma once

#include <cstdint>
#include <kova/KDoubleArray.h>
#include <kova/KExport.h>
#include <kova/KFnBase.h>
#include <kova/KPoint.h>
#include <kova/KPointArray.h>
#include <kova/KSpace.h>
#include <kova/KVector.h>
#include <memory>

namespace kova::detail {
class CurveGeometry;
class NurbsCurveData;
} // namespace kova::detail

// Function set of NURBS curves. It attaches to NURBS curve data (KFn::kNurbsCurveData) or to a
// "nurbsCurve" shape node (KFn::kNurbsCurve); on a shape it works on the curve of the shape's
// "worldSpace[0]" output.
//
// Conventions:
// - Knots are the host's: numCVs + degree - 1 of them (the textbook vector without its first
//   and last knot). The knot domain is [knot[degree - 1], knot[numCVs - 1]]; parameters outside
//   it are clamped to it.
// - CVs are handed out and taken in homogeneous form (w*x, w*y, w*z, w), w being the weight
//   (1 for non-rational curves). Points on the curve are cartesian, with w = 1.
// - A periodic curve (kPeriodic) stores its overlap: its last `degree` CVs repeat the first
//   ones, and numCVs counts them.
// - Spaces: kWorld maps through the world matrix the data carries (the data of a shape's
//   "worldSpace" output carries the shape's world matrix); curve data that carries none, and
//   every other space, is object space. Points map as points, tangents as derivatives of the
//   mapped curve (for an affine matrix: as vectors). Lengths, and the parameters found from
//   lengths, are always measured in world space, so a scaling transform scales them.
// - Ends of the domain, joints at knots of multiplicity `degree` and degree-1 curves evaluate
//   exactly (the point there is the CV itself).
//
// Every call below except the constructors is a failure-injection point named after it
// ("KFnNurbsCurve::numCVs", ...); the constructors and setObject share "KFnNurbsCurve::setObject".
// A failing call returns its status (or sets `status`) and an empty or zero result.
class KOVA_API KFnNurbsCurve : public KFnBase {
public:
    enum Form { kInvalid = 0, kOpen = 1, kClosed = 2, kPeriodic = 3, kLast = 4 };

    KFnNurbsCurve() = default;
    explicit KFnNurbsCurve(const KObject& curve, KStatus* status = nullptr);

    KFn::Type functionType() const override { return KFn::kNurbsCurve; }
    // Attaches to curve data or a "nurbsCurve" shape; fails with kInvalidParameter (and
    // detaches) for anything else.
    KStatus setObject(const KObject& curve);

    // Makes a curve of `degree` from `controlVertices` and `knots` (host convention) and
    // validates it; an invalid curve fails with kInvalidParameter and the reason, and nothing is
    // made. With `createRational` the CVs are homogeneous (w = weight, which must be positive);
    // without it their w is ignored and the weights are 1. With `create2D` the z coordinates are
    // set to 0. `parentOrOwner` decides where the curve goes:
    // - NURBS curve data: the curve replaces the data's curve (its component tags are dropped)
    //   and the data is returned;
    // - a transform: a new "nurbsCurve" shape under it, fed by new curve data, is returned;
    // - the null object: a new transform with such a shape under it; the transform is returned.
    // The function set attaches to the data or to the new shape.
    KObject create(const KPointArray& controlVertices, const KDoubleArray& knots,
                   unsigned int degree, Form form, bool create2D, bool createRational,
                   const KObject& parentOrOwner = KObject::kNullObj, KStatus* status = nullptr);

    int numCVs(KStatus* status = nullptr) const;
    int degree(KStatus* status = nullptr) const;
    Form form(KStatus* status = nullptr) const;
    bool isPeriodic(KStatus* status = nullptr) const;
    // numCVs + degree - 1.
    int numKnots(KStatus* status = nullptr) const;
    KStatus getKnots(KDoubleArray& knots) const;
    KStatus getKnotDomain(double& start, double& end) const;

    // Homogeneous CVs (see above).
    KStatus getCVs(KPointArray& controlVertices, KSpace::Space space = KSpace::kObject) const;
    KStatus getCV(unsigned int index, KPoint& controlVertex,
                  KSpace::Space space = KSpace::kObject) const;
    // Replaces the CVs (homogeneous, as many as there are, weights positive), keeping knots,
    // degree and form; the curve must stay valid. World-space CVs are mapped back through the
    // inverse world matrix. On a shape, the shape gets new input data.
    KStatus setCVs(const KPointArray& controlVertices, KSpace::Space space = KSpace::kObject);

    // The point at `param` (clamped to the domain), cartesian with w = 1. NaN fails.
    KStatus getPointAtParam(double param, KPoint& point,
                            KSpace::Space space = KSpace::kObject) const;
    // The first derivative dC/dt at `param`, not normalised: its length is the parametric
    // speed, and it is zero where the curve stands still.
    KVector tangent(double param, KSpace::Space space = KSpace::kObject,
                    KStatus* status = nullptr) const;
    // The unit principal normal at `param`: the part of the second derivative perpendicular to
    // the tangent, normalised. Fails where the curve is straight or stands still.
    KVector normal(double param, KSpace::Space space = KSpace::kObject,
                   KStatus* status = nullptr) const;

    // The arc length of the whole curve, to a relative `tolerance`. Tolerances of 1e-7 and
    // coarser (the customary 1e-3) are served from a table integrated once per curve at 1e-7;
    // finer ones integrate anew.
    double length(double tolerance = 1e-3, KStatus* status = nullptr) const;
    // The parameter at arc length `length` from the start of the domain: lengths <= 0 give the
    // start, lengths >= length() the end. From the table: the parameter whose tabulated length is
    // `length`, to full precision, the tabulated lengths being good to 1e-7 relative.
    double findParamFromLength(double length, KStatus* status = nullptr) const;
    // The arc length from the start of the domain to `param` (clamped to the domain).
    double findLengthFromParam(double param, KStatus* status = nullptr) const;

private:
    // A curve looked up for one call: borrowed from the snapshot below, or held for the call.
    struct GeometryRef {
        std::shared_ptr<const kova::detail::CurveGeometry> held;
        const kova::detail::CurveGeometry* curve = nullptr;

        explicit operator bool() const { return curve != nullptr; }
        const kova::detail::CurveGeometry* operator->() const { return curve; }
    };

    // The curve data worked on, or null with the reason in `status`.
    std::shared_ptr<kova::detail::NurbsCurveData> curveData(KStatus* status) const;
    // The attached curve in `space` for the call `operation` (its failure-injection point),
    // or null with the reason in `status`.
    GeometryRef geometry(const char* operation, KSpace::Space space, KStatus* status) const;
    // Keeps the curve of attached curve data in both spaces with the data's generation, so that
    // calls can use it without a lookup while the data keeps that generation (samplers make
    // several calls per point). An edited curve is looked up again; a shape, whose curve follows
    // its evaluation, is looked up on every call.
    void takeSnapshot();

    std::shared_ptr<kova::detail::NurbsCurveData> snapshotData_;
    std::shared_ptr<const kova::detail::CurveGeometry> snapshotObject_;
    std::shared_ptr<const kova::detail::CurveGeometry> snapshotWorld_;
    std::uint64_t snapshotGeneration_ = 0;
};
