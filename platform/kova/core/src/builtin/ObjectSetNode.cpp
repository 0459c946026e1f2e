#include "builtin/BuiltInTypes.h"
#include "detail/NodeTypeFactory.h"

namespace kova::builtin {

namespace {

// Membership is kept by the host (see KFnSet); the node itself has nothing to compute.
class ObjectSetNode : public KPxNode {
public:
    static void* create() { return new ObjectSetNode; }
};

} // namespace

std::shared_ptr<detail::NodeType> makeObjectSetType() {
    auto type =
        detail::newNodeType("objectSet", KTypeId(0x4B560003), KPxNode::kObjectSet, KFn::kSet);
    type->creator = &ObjectSetNode::create;
    return type;
}

} // namespace kova::builtin
