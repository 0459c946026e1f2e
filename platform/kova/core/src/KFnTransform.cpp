#include "detail/Attribute.h"
#include "detail/Node.h"

#include <kova/KDataHandle.h>
#include <kova/KFailureInjection.h>
#include <kova/KFnTransform.h>
#include <kova/KPlug.h>
#include <numbers>

using kova::detail::Node;

namespace {

constexpr double kDegrees = 180.0 / std::numbers::pi;

// The plug of one of the transform attributes of the attached node.
KPlug transformPlug(const KObject& object,
                    std::shared_ptr<kova::detail::Attribute> kova::detail::DagAttributes::*member) {
    Node* node = kova::detail::nodeOf(object);
    if (node == nullptr || !node->type->isTransform()) {
        return KPlug();
    }
    return KPlug(node->shared(), {{node->type->dag.*member, -1}});
}

KStatus readTriple(const KPlug& plug, double out[3], double scale) {
    KDataHandle handle;
    if (plug.isNull() || out == nullptr) {
        return KStatus(KStatus::kInvalidParameter, "no transform attached");
    }
    KStatus status = plug.getValue(handle);
    const double* numbers = handle.asNumbers();
    for (int i = 0; i < 3; ++i) {
        out[i] = numbers[i] * scale;
    }
    return status;
}

KStatus writeTriple(KPlug plug, const double in[3], double scale) {
    if (plug.isNull() || in == nullptr) {
        return KStatus(KStatus::kInvalidParameter, "no transform attached, or no values");
    }
    const double values[3] = {in[0] * scale, in[1] * scale, in[2] * scale};
    return plug.setNumbers(values, 3);
}

} // namespace

KFnTransform::KFnTransform(const KObject& node, KStatus* status) : KFnDagNode() {
    attach(node, status);
}

KFnTransform::KFnTransform(const KDagPath& path, KStatus* status) : KFnDagNode(path, status) {
    attach(path.node(), status);
}

KVector KFnTransform::getTranslation(KSpace::Space space, KStatus* status) const {
    double t[3] = {0.0, 0.0, 0.0};
    KStatus result =
        readTriple(transformPlug(object_, &kova::detail::DagAttributes::translate), t, 1.0);
    KVector translation(t[0], t[1], t[2]);
    if (result && space == KSpace::kWorld) {
        const KMatrix world = dagPath(&result).inclusiveMatrix();
        translation = KVector(world(3, 0), world(3, 1), world(3, 2));
    }
    if (status != nullptr) {
        *status = result;
    }
    return translation;
}

KStatus KFnTransform::setTranslation(const KVector& translation, KSpace::Space space) {
    if (KFailureInjection::shouldFail("KFnTransform::setTranslation")) {
        return KFailureInjection::failure("KFnTransform::setTranslation");
    }
    if (space == KSpace::kWorld) {
        return KStatus(KStatus::kNotImplemented, "set translations in transform space");
    }
    const double t[3] = {translation.x, translation.y, translation.z};
    return writeTriple(transformPlug(object_, &kova::detail::DagAttributes::translate), t, 1.0);
}

KStatus KFnTransform::getRotation(double radians[3]) const {
    return readTriple(transformPlug(object_, &kova::detail::DagAttributes::rotate), radians,
                      1.0 / kDegrees);
}

KStatus KFnTransform::setRotation(const double radians[3]) {
    if (KFailureInjection::shouldFail("KFnTransform::setRotation")) {
        return KFailureInjection::failure("KFnTransform::setRotation");
    }
    return writeTriple(transformPlug(object_, &kova::detail::DagAttributes::rotate), radians,
                       kDegrees);
}

KStatus KFnTransform::getScale(double scale[3]) const {
    return readTriple(transformPlug(object_, &kova::detail::DagAttributes::scale), scale, 1.0);
}

KStatus KFnTransform::setScale(const double scale[3]) {
    if (KFailureInjection::shouldFail("KFnTransform::setScale")) {
        return KFailureInjection::failure("KFnTransform::setScale");
    }
    return writeTriple(transformPlug(object_, &kova::detail::DagAttributes::scale), scale, 1.0);
}
