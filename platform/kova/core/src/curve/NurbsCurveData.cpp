#include "curve/NurbsCurveData.h"

#include <sstream>

namespace kova::detail {

NurbsCurveData::NurbsCurveData()
    : GeometryData(KFn::kNurbsCurveData, KFnData::kNurbsCurve),
      object_(std::make_shared<const CurveGeometry>(nurbs::Curve())), world_(object_) {}

std::shared_ptr<DataObject> NurbsCurveData::clone() const {
    std::lock_guard lock(mutex_);
    auto copy = std::make_shared<NurbsCurveData>();
    copy->object_ = object_;
    copy->world_ = world_;
    copy->matrix_ = matrix_;
    copy->componentTags = componentTags.deepCopy();
    return copy;
}

KString NurbsCurveData::toText() const {
    const nurbs::Curve& curve = geometry(KSpace::kObject)->curve();
    std::ostringstream out;
    out.precision(17);
    out << curve.degree() << ' ' << static_cast<int>(curve.form()) << ' ' << curve.knots().size();
    for (double knot : curve.knots()) {
        out << ' ' << knot;
    }
    out << ' ' << curve.cvs().size();
    for (const nurbs::ControlVertex& cv : curve.cvs()) {
        out << ' ' << cv.x << ' ' << cv.y << ' ' << cv.z << ' ' << cv.w;
    }
    return KString(out.str());
}

int NurbsCurveData::elementCount(KFn::Type componentType) const {
    return componentType == KFn::kCurveCVComponent ? geometry(KSpace::kObject)->curve().numCVs()
                                                   : -1;
}

std::shared_ptr<const CurveGeometry> NurbsCurveData::geometry(KSpace::Space space) const {
    std::lock_guard lock(mutex_);
    return space == KSpace::kWorld ? world_ : object_;
}

NurbsCurveData::Snapshot NurbsCurveData::snapshot() const {
    std::lock_guard lock(mutex_);
    return {generation_.load(std::memory_order_relaxed), object_, world_};
}

void NurbsCurveData::setCurve(nurbs::Curve curve) {
    auto object = std::make_shared<const CurveGeometry>(std::move(curve));
    auto world = matrix_ ? object->transformed(*matrix_) : object;
    std::lock_guard lock(mutex_);
    object_ = std::move(object);
    world_ = std::move(world);
    generation_.fetch_add(1, std::memory_order_release);
}

std::optional<KMatrix> NurbsCurveData::worldMatrix() const {
    std::lock_guard lock(mutex_);
    return matrix_;
}

std::shared_ptr<NurbsCurveData> NurbsCurveData::withWorldMatrix(const KMatrix& world) const {
    auto copy = std::static_pointer_cast<NurbsCurveData>(clone());
    copy->matrix_ = world;
    copy->world_ = copy->object_->transformed(world);
    return copy;
}

} // namespace kova::detail
