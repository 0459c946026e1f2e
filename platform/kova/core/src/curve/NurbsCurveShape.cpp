#include "curve/NurbsCurveShape.h"

#include "curve/NurbsCurveData.h"
#include "detail/Attribute.h"
#include "detail/AttributeFactory.h"
#include "detail/NodeTypeFactory.h"

#include <kova/KArrayDataBuilder.h>
#include <kova/KArrayDataHandle.h>
#include <kova/KDataBlock.h>
#include <kova/KPlug.h>

namespace kova::curve {

namespace {

std::shared_ptr<detail::Attribute> create;
std::shared_ptr<detail::Attribute> local;
std::shared_ptr<detail::Attribute> worldSpace;
std::shared_ptr<detail::Attribute> worldMatrix;

class NurbsCurveShapeNode : public KPxNode {
public:
    static void* make() { return new NurbsCurveShapeNode; }

    KStatus compute(const KPlug& plug, KDataBlock& block) override {
        const bool toLocal = plug == detail::objectOf(local);
        if (!toLocal && plug != detail::objectOf(worldSpace)) {
            return KStatus(KStatus::kUnknownParameter);
        }
        KStatus status;
        const KObject input = block.inputValue(detail::objectOf(create), &status).data();
        if (!status) {
            return status;
        }
        return toLocal ? writeLocal(block, input) : writeWorld(plug, block, input);
    }

private:
    static KStatus writeLocal(KDataBlock& block, const KObject& input) {
        KStatus status;
        KDataHandle out = block.outputValue(detail::objectOf(local), &status);
        if (status) {
            status = out.set(input);
        }
        if (status) {
            status = block.setClean(detail::objectOf(local));
        }
        return status;
    }

    static KStatus writeWorld(const KPlug& plug, KDataBlock& block, const KObject& input) {
        KStatus status;
        const KPlug matrixPlug =
            KPlug(plug.node(), detail::objectOf(worldMatrix)).elementByLogicalIndex(0, &status);
        const KMatrix world = status ? block.inputValue(matrixPlug, &status).asMatrix() : KMatrix();
        if (!status) {
            return status;
        }
        KObject output;
        if (const auto data = detail::nurbsCurveDataOf(input)) {
            output = KObject(data->withWorldMatrix(world));
        }
        KArrayDataHandle array = block.outputArrayValue(detail::objectOf(worldSpace), &status);
        KArrayDataBuilder builder;
        if (status) {
            builder = KArrayDataBuilder(detail::objectOf(worldSpace), &status);
        }
        KDataHandle element;
        if (status) {
            element = builder.addElement(0, &status);
        }
        if (status) {
            status = element.set(output);
        }
        if (status) {
            status = array.set(builder);
        }
        if (status) {
            status = block.setClean(detail::objectOf(worldSpace));
        }
        return status;
    }
};

} // namespace

std::shared_ptr<detail::NodeType> makeNurbsCurveType() {
    auto type = detail::newNodeType("nurbsCurve", KTypeId(0x4B560020), KPxNode::kSurfaceShape,
                                    KFn::kNurbsCurve);
    type->creator = &NurbsCurveShapeNode::make;
    KStatus status;
    create = detail::makeTypedAttribute("create", "cr", KFnData::kNurbsCurve, KTypeId(), nullptr,
                                        status);
    local =
        detail::makeTypedAttribute("local", "l", KFnData::kNurbsCurve, KTypeId(), nullptr, status);
    worldSpace = detail::makeTypedAttribute("worldSpace", "ws", KFnData::kNurbsCurve, KTypeId(),
                                            nullptr, status);
    for (const auto* output : {&local, &worldSpace}) {
        (*output)->writable = false;
        (*output)->storable = false;
    }
    worldSpace->array = true;
    worldSpace->usesArrayDataBuilder = true;
    worldSpace->worldSpace = true;
    worldMatrix = type->dag.worldMatrix;
    type->addAttribute(create);
    type->addAttribute(local);
    type->addAttribute(worldSpace);
    type->addAffects(*create, *local);
    type->addAffects(*create, *worldSpace);
    type->addAffects(*worldMatrix, *worldSpace);
    return type;
}

KObject createAttribute() {
    return detail::objectOf(create);
}

KObject worldSpaceAttribute() {
    return detail::objectOf(worldSpace);
}

} // namespace kova::curve
