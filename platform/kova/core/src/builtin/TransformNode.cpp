#include "builtin/BuiltInTypes.h"
#include "detail/NodeTypeFactory.h"

namespace kova::builtin {

namespace {

// The host computes the DAG attributes itself; the node adds nothing.
class TransformNode : public KPxNode {
public:
    static void* create() { return new TransformNode; }
};

} // namespace

std::shared_ptr<detail::NodeType> makeTransformType() {
    auto type = detail::newNodeType("transform", KTypeId(0x4B560002), KPxNode::kTransformNode,
                                    KFn::kTransform);
    type->creator = &TransformNode::create;
    return type;
}

} // namespace kova::builtin
