#include "curve/NurbsCurveData.h"
#include "curve/NurbsCurveShape.h"
#include "detail/Report.h"

#include <algorithm>
#include <cmath>
#include <kova/KDagModifier.h>
#include <kova/KFailureInjection.h>
#include <kova/KFnDagNode.h>
#include <kova/KFnNurbsCurve.h>
#include <kova/KPlug.h>

using kova::detail::CurveGeometry;
using kova::detail::NurbsCurveData;
using kova::detail::report;

namespace {

KStatus invalid(const char* reason) {
    return KStatus(KStatus::kInvalidParameter, reason);
}

KStatus spaceStatus(KSpace::Space space) {
    return space > KSpace::kInvalid && space < KSpace::kLast ? KStatus() : invalid("unknown space");
}

KVector vectorOf(const kova::nurbs::Vec3& v) {
    return {v.x, v.y, v.z};
}

KPoint homogeneous(const kova::nurbs::ControlVertex& cv) {
    return {cv.x * cv.w, cv.y * cv.w, cv.z * cv.w, cv.w};
}

// The CVs of a new or edited curve from homogeneous points (or cartesian ones with weight 1
// when `rational` is off), flattened to z = 0 when `planar`.
std::vector<kova::nurbs::ControlVertex> controlVertices(const KPointArray& points, bool rational,
                                                        bool planar) {
    std::vector<kova::nurbs::ControlVertex> cvs;
    cvs.reserve(points.length());
    for (const KPoint& p : points) {
        auto cv = rational ? kova::nurbs::ControlVertex::fromHomogeneous(p.x, p.y, p.z, p.w)
                           : kova::nurbs::ControlVertex{p.x, p.y, p.z, 1.0};
        if (planar) {
            cv.z = 0.0;
        }
        cvs.push_back(cv);
    }
    return cvs;
}

// A new "nurbsCurve" shape fed by `data`, under `parent` (a transform) or under a new transform
// when `parent` is null. Returns the node to hand back (the new transform, else the shape) and
// sets `shape`.
KObject makeShape(const KObject& parent, const std::shared_ptr<NurbsCurveData>& data,
                  KObject& shape, KStatus& status) {
    KDagModifier modifier;
    const KObject made = modifier.createNode("nurbsCurve", parent, &status);
    if (status) {
        status = modifier.doIt();
    }
    if (!status) {
        return KObject();
    }
    shape = parent.isNull() ? KFnDagNode(made).child(0, &status) : made;
    if (status) {
        status = KPlug(shape, kova::curve::createAttribute()).setKObject(KObject(data));
    }
    if (!status) {
        KDGModifier undo;
        undo.deleteNode(made);
        undo.doIt();
        shape = KObject();
        return KObject();
    }
    return made;
}

} // namespace

KFnNurbsCurve::KFnNurbsCurve(const KObject& curve, KStatus* status) {
    report(status, setObject(curve));
}

KStatus KFnNurbsCurve::setObject(const KObject& curve) {
    object_ = KObject();
    takeSnapshot();
    if (KFailureInjection::shouldFail("KFnNurbsCurve::setObject")) {
        return KFailureInjection::failure("KFnNurbsCurve::setObject");
    }
    if (!curve.hasFn(KFn::kNurbsCurveData) && !curve.hasFn(KFn::kNurbsCurve)) {
        return invalid("the object is neither NURBS curve data nor a NURBS curve shape");
    }
    object_ = curve;
    takeSnapshot();
    return KStatus();
}

void KFnNurbsCurve::takeSnapshot() {
    snapshotData_ = kova::detail::nurbsCurveDataOf(object_);
    NurbsCurveData::Snapshot snapshot;
    if (snapshotData_) {
        snapshot = snapshotData_->snapshot();
    }
    snapshotGeneration_ = snapshot.generation;
    snapshotObject_ = std::move(snapshot.object);
    snapshotWorld_ = std::move(snapshot.world);
}

std::shared_ptr<NurbsCurveData> KFnNurbsCurve::curveData(KStatus* status) const {
    if (object_.isNull()) {
        report(status, invalid("no NURBS curve attached"));
        return nullptr;
    }
    if (auto data = kova::detail::nurbsCurveDataOf(object_)) {
        report(status, KStatus());
        return data;
    }
    KStatus result;
    const KObject data = KPlug(object_, kova::curve::worldSpaceAttribute())
                             .elementByLogicalIndex(0, &result)
                             .asKObject(&result);
    auto curve = result ? kova::detail::nurbsCurveDataOf(data) : nullptr;
    if (result && !curve) {
        result = invalid("the shape has no curve");
    }
    report(status, result);
    return curve;
}

KFnNurbsCurve::GeometryRef KFnNurbsCurve::geometry(const char* operation, KSpace::Space space,
                                                   KStatus* status) const {
    if (KFailureInjection::shouldFail(operation)) {
        report(status, KFailureInjection::failure(operation));
        return {};
    }
    if (!report(status, spaceStatus(space))) {
        return {};
    }
    GeometryRef geometry;
    if (snapshotData_ && object_.entity().get() == snapshotData_.get() &&
        snapshotData_->generation() == snapshotGeneration_) {
        geometry.curve = (space == KSpace::kWorld ? snapshotWorld_ : snapshotObject_).get();
    } else {
        const auto data = curveData(status);
        geometry.held = data ? data->geometry(space) : nullptr;
        geometry.curve = geometry.held.get();
    }
    if (geometry && !geometry->curve().evaluable()) {
        report(status, invalid("the curve data holds no curve"));
        return {};
    }
    return geometry;
}

KObject KFnNurbsCurve::create(const KPointArray& controlVertices, const KDoubleArray& knots,
                              unsigned int degree, Form form, bool create2D, bool createRational,
                              const KObject& parentOrOwner, KStatus* status) {
    if (KFailureInjection::shouldFail("KFnNurbsCurve::create")) {
        report(status, KFailureInjection::failure("KFnNurbsCurve::create"));
        return KObject();
    }
    auto owner = kova::detail::nurbsCurveDataOf(parentOrOwner);
    if (!owner && !parentOrOwner.isNull() && !parentOrOwner.hasFn(KFn::kTransform)) {
        report(status,
               invalid("the parent or owner must be NURBS curve data, a transform or null"));
        return KObject();
    }
    kova::nurbs::Curve curve(static_cast<int>(std::min(degree, 1000u)),
                             static_cast<kova::nurbs::Form>(form),
                             ::controlVertices(controlVertices, createRational, create2D),
                             std::vector<double>(knots.begin(), knots.end()));
    if (const std::string reason = curve.validate(); !reason.empty()) {
        report(status, KStatus(KStatus::kInvalidParameter, KString(reason)));
        return KObject();
    }
    if (owner) {
        owner->setCurve(std::move(curve));
        owner->componentTags.clear();
        object_ = parentOrOwner;
        takeSnapshot();
        report(status, KStatus());
        return object_;
    }
    auto data = std::make_shared<NurbsCurveData>();
    data->setCurve(std::move(curve));
    KStatus result;
    KObject shape;
    const KObject made = makeShape(parentOrOwner, data, shape, result);
    object_ = shape;
    takeSnapshot();
    report(status, result);
    return made;
}

int KFnNurbsCurve::numCVs(KStatus* status) const {
    const auto g = geometry("KFnNurbsCurve::numCVs", KSpace::kObject, status);
    return g ? g->curve().numCVs() : 0;
}

int KFnNurbsCurve::degree(KStatus* status) const {
    const auto g = geometry("KFnNurbsCurve::degree", KSpace::kObject, status);
    return g ? g->curve().degree() : 0;
}

KFnNurbsCurve::Form KFnNurbsCurve::form(KStatus* status) const {
    const auto g = geometry("KFnNurbsCurve::form", KSpace::kObject, status);
    return g ? static_cast<Form>(g->curve().form()) : kInvalid;
}

bool KFnNurbsCurve::isPeriodic(KStatus* status) const {
    const auto g = geometry("KFnNurbsCurve::isPeriodic", KSpace::kObject, status);
    return g && g->curve().form() == kova::nurbs::Form::Periodic;
}

int KFnNurbsCurve::numKnots(KStatus* status) const {
    const auto g = geometry("KFnNurbsCurve::numKnots", KSpace::kObject, status);
    return g ? static_cast<int>(g->curve().knots().size()) : 0;
}

KStatus KFnNurbsCurve::getKnots(KDoubleArray& knots) const {
    KStatus status;
    const auto g = geometry("KFnNurbsCurve::getKnots", KSpace::kObject, &status);
    if (!g) {
        return status;
    }
    const std::vector<double>& values = g->curve().knots();
    if (status = knots.setLength(static_cast<unsigned int>(values.size())); !status) {
        return status;
    }
    for (unsigned int i = 0; i < values.size(); ++i) {
        knots[i] = values[i];
    }
    return status;
}

KStatus KFnNurbsCurve::getKnotDomain(double& start, double& end) const {
    KStatus status;
    if (const auto g = geometry("KFnNurbsCurve::getKnotDomain", KSpace::kObject, &status)) {
        std::tie(start, end) = g->curve().knotDomain();
    }
    return status;
}

KStatus KFnNurbsCurve::getCVs(KPointArray& controlVertices, KSpace::Space space) const {
    KStatus status;
    const auto g = geometry("KFnNurbsCurve::getCVs", space, &status);
    if (!g) {
        return status;
    }
    const auto& cvs = g->curve().cvs();
    if (status = controlVertices.setLength(static_cast<unsigned int>(cvs.size())); !status) {
        return status;
    }
    for (unsigned int i = 0; i < cvs.size(); ++i) {
        controlVertices[i] = homogeneous(cvs[i]);
    }
    return status;
}

KStatus KFnNurbsCurve::getCV(unsigned int index, KPoint& controlVertex, KSpace::Space space) const {
    KStatus status;
    const auto g = geometry("KFnNurbsCurve::getCV", space, &status);
    if (!g) {
        return status;
    }
    if (index >= g->curve().cvs().size()) {
        return invalid("CV index out of range");
    }
    controlVertex = homogeneous(g->curve().cvs()[index]);
    return status;
}

KStatus KFnNurbsCurve::setCVs(const KPointArray& controlVertices, KSpace::Space space) {
    KStatus status;
    const auto g = geometry("KFnNurbsCurve::setCVs", KSpace::kObject, &status);
    if (!g || !(status = spaceStatus(space))) {
        return status;
    }
    const kova::nurbs::Curve& old = g->curve();
    if (controlVertices.length() != static_cast<unsigned int>(old.numCVs())) {
        return invalid("the number of CVs must stay the same");
    }
    auto data = curveData(&status);
    auto edited = std::make_shared<const CurveGeometry>(kova::nurbs::Curve(
        old.degree(), old.form(), ::controlVertices(controlVertices, true, false), old.knots()));
    const auto world = data->worldMatrix();
    if (space == KSpace::kWorld && world) {
        edited = edited->transformed(world->inverse());
    }
    kova::nurbs::Curve curve = edited->curve();
    if (const std::string reason = curve.validate(); !reason.empty()) {
        return KStatus(KStatus::kInvalidParameter, KString(reason));
    }
    if (kova::detail::nurbsCurveDataOf(object_)) {
        data->setCurve(std::move(curve));
        return status;
    }
    // A shape gets new input data: a copy of its input with the new curve, tags kept.
    KPlug input(object_, kova::curve::createAttribute());
    const auto source = kova::detail::nurbsCurveDataOf(input.asKObject(&status));
    if (!source) {
        return status ? invalid("the shape has no curve") : status;
    }
    auto replacement = std::static_pointer_cast<NurbsCurveData>(source->clone());
    replacement->setCurve(std::move(curve));
    return input.setKObject(KObject(replacement));
}

KStatus KFnNurbsCurve::getPointAtParam(double param, KPoint& point, KSpace::Space space) const {
    KStatus status;
    const auto g = geometry("KFnNurbsCurve::getPointAtParam", space, &status);
    if (!g) {
        return status;
    }
    if (std::isnan(param)) {
        return invalid("the parameter is not a number");
    }
    const kova::nurbs::Vec3 p = g->curve().pointAt(param);
    point = KPoint(p.x, p.y, p.z, 1.0);
    return status;
}

KVector KFnNurbsCurve::tangent(double param, KSpace::Space space, KStatus* status) const {
    const auto g = geometry("KFnNurbsCurve::tangent", space, status);
    if (!g) {
        return KVector();
    }
    if (std::isnan(param)) {
        report(status, invalid("the parameter is not a number"));
        return KVector();
    }
    return vectorOf(g->curve().tangentAt(param));
}

KVector KFnNurbsCurve::normal(double param, KSpace::Space space, KStatus* status) const {
    const auto g = geometry("KFnNurbsCurve::normal", space, status);
    if (!g) {
        return KVector();
    }
    if (std::isnan(param)) {
        report(status, invalid("the parameter is not a number"));
        return KVector();
    }
    const KVector first = vectorOf(g->curve().derivativeAt(param, 1));
    const KVector second = vectorOf(g->curve().derivativeAt(param, 2));
    const KVector direction = first.normal();
    KVector normal = second - direction * (second * direction);
    // Relative to the size of the second derivative, so straight pieces count as straight.
    if (direction == KVector() || !(normal.length() > 1e-12 * second.length())) {
        report(status, invalid("the curve has no normal at this parameter"));
        return KVector();
    }
    return normal.normal();
}

double KFnNurbsCurve::length(double tolerance, KStatus* status) const {
    const auto g = geometry("KFnNurbsCurve::length", KSpace::kWorld, status);
    if (!g) {
        return 0.0;
    }
    return tolerance >= kova::nurbs::Curve::kMaxTolerance ? g->arcLength().totalLength()
                                                          : g->curve().length(tolerance);
}

double KFnNurbsCurve::findParamFromLength(double length, KStatus* status) const {
    const auto g = geometry("KFnNurbsCurve::findParamFromLength", KSpace::kWorld, status);
    return g ? g->arcLength().paramAt(length) : 0.0;
}

double KFnNurbsCurve::findLengthFromParam(double param, KStatus* status) const {
    const auto g = geometry("KFnNurbsCurve::findLengthFromParam", KSpace::kWorld, status);
    if (!g) {
        return 0.0;
    }
    if (std::isnan(param)) {
        report(status, invalid("the parameter is not a number"));
        return 0.0;
    }
    return g->arcLength().lengthAt(param);
}
