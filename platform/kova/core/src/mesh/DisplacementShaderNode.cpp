#include "builtin/BuiltInTypes.h"
#include "detail/Attribute.h"
#include "detail/AttributeFactory.h"
#include "detail/NodeTypeFactory.h"

#include <kova/KDataBlock.h>
#include <kova/KPlug.h>

namespace kova::builtin {

namespace {

std::shared_ptr<detail::Attribute> displacement;
std::shared_ptr<detail::Attribute> scale;
std::shared_ptr<detail::Attribute> outDisplacement;

class DisplacementShaderNode : public KPxNode {
public:
    static void* create() { return new DisplacementShaderNode; }

    KStatus compute(const KPlug& plug, KDataBlock& block) override {
        if (plug != detail::objectOf(outDisplacement)) {
            return KStatus(KStatus::kUnknownParameter);
        }
        KStatus status;
        const double amount = block.inputValue(detail::objectOf(displacement), &status).asDouble();
        const double factor =
            status ? block.inputValue(detail::objectOf(scale), &status).asDouble() : 0.0;
        KDataHandle out =
            status ? block.outputValue(detail::objectOf(outDisplacement), &status) : KDataHandle();
        return status ? out.setDouble(amount * factor) : status;
    }
};

} // namespace

std::shared_ptr<detail::NodeType> makeDisplacementShaderType() {
    auto type = detail::newNodeType("displacementShader", KTypeId(0x4B560011), KPxNode::kDependNode,
                                    KFn::kShaderNode);
    type->creator = &DisplacementShaderNode::create;
    type->classification = "drawdb/shader/displacement/displacementShader";
    KStatus status;
    displacement =
        detail::makeNumericAttribute("displacement", "d", KFnNumericData::kFloat, 0.0, status);
    scale = detail::makeNumericAttribute("scale", "sc", KFnNumericData::kFloat, 1.0, status);
    outDisplacement =
        detail::makeNumericAttribute("outDisplacement", "od", KFnNumericData::kFloat, 0.0, status);
    outDisplacement->writable = false;
    type->addAttribute(displacement);
    type->addAttribute(scale);
    type->addAttribute(outDisplacement);
    type->addAffects(*displacement, *outDisplacement);
    type->addAffects(*scale, *outDisplacement);
    return type;
}

} // namespace kova::builtin
