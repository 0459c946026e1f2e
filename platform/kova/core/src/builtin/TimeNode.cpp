#include "builtin/BuiltInTypes.h"
#include "detail/Attribute.h"
#include "detail/AttributeFactory.h"
#include "detail/NodeTypeFactory.h"

namespace kova::builtin {

namespace {

class TimeNode : public KPxNode {
public:
    static void* create() { return new TimeNode; }
};

} // namespace

std::shared_ptr<detail::NodeType> makeTimeType() {
    auto type = detail::newNodeType("time", KTypeId(0x4B560001), KPxNode::kDependNode, KFn::kTime);
    type->creator = &TimeNode::create;
    KStatus status;
    auto outTime = detail::makeUnitAttribute("outTime", "o", KFnUnitAttribute::kTime, 0.0, status);
    outTime->keyable = true;
    type->addAttribute(outTime);
    return type;
}

} // namespace kova::builtin
