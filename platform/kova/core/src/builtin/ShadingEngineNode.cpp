#include "builtin/BuiltInTypes.h"
#include "detail/Attribute.h"
#include "detail/AttributeFactory.h"
#include "detail/Node.h"
#include "detail/NodeTypeFactory.h"

#include <kova/KFnSet.h>

namespace kova::builtin {

namespace {

class ShadingEngineNode : public KPxNode {
public:
    static void* create() { return new ShadingEngineNode; }

    // Shading groups only take renderable members.
    void postConstructor() override {
        if (auto* node = detail::nodeOf(thisKObject()); node && node->set) {
            node->set->restriction = KFnSet::kRenderableOnly;
        }
    }
};

} // namespace

std::shared_ptr<detail::NodeType> makeShadingEngineType() {
    auto type = detail::newNodeType("shadingEngine", KTypeId(0x4B560004), KPxNode::kObjectSet,
                                    KFn::kShadingEngine);
    type->creator = &ShadingEngineNode::create;
    KStatus status;
    type->addAttribute(detail::makeMessageAttribute("surfaceShader", "ss", status));
    type->addAttribute(detail::makeMessageAttribute("displacementShader", "ds", status));
    return type;
}

} // namespace kova::builtin
