#include "builtin/BuiltInTypes.h"
#include "detail/Attribute.h"
#include "detail/AttributeFactory.h"
#include "detail/NodeTypeFactory.h"

#include <kova/KDataBlock.h>
#include <kova/KPlug.h>

namespace kova::builtin {

namespace {

std::shared_ptr<detail::Attribute> color;
std::shared_ptr<detail::Attribute> outColor;

class LambertNode : public KPxNode {
public:
    static void* create() { return new LambertNode; }

    KStatus compute(const KPlug& plug, KDataBlock& block) override {
        if (plug != detail::objectOf(outColor)) {
            return KStatus(KStatus::kUnknownParameter);
        }
        KStatus status;
        const KDataHandle in = block.inputValue(detail::objectOf(color), &status);
        if (!status) {
            return status;
        }
        KDataHandle out = block.outputValue(detail::objectOf(outColor), &status);
        return status ? out.setNumbers(in.asNumbers(), 3) : status;
    }
};

} // namespace

std::shared_ptr<detail::NodeType> makeLambertType() {
    auto type =
        detail::newNodeType("lambert", KTypeId(0x4B560005), KPxNode::kDependNode, KFn::kLambert);
    type->creator = &LambertNode::create;
    type->classification = "drawdb/shader/surface/lambert";
    KStatus status;
    color = detail::makeNumericAttribute("color", "c", KFnNumericData::k3Float, 0.5, status);
    outColor = detail::makeNumericAttribute("outColor", "oc", KFnNumericData::k3Float, 0.0, status);
    outColor->writable = false;
    type->addAttribute(color);
    type->addAttribute(outColor);
    type->addAffects(*color, *outColor);
    return type;
}

} // namespace kova::builtin
