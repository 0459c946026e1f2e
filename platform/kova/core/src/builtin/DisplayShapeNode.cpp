#include "builtin/BuiltInTypes.h"
#include "detail/Attribute.h"
#include "detail/AttributeFactory.h"
#include "detail/NodeTypeFactory.h"

#include <kova/KDataBlock.h>
#include <kova/KPlug.h>
#include <kova/KPxData.h>

namespace kova::builtin {

namespace {

std::shared_ptr<detail::Attribute> inputSurface;
std::shared_ptr<detail::Attribute> displayType;
std::shared_ptr<detail::Attribute> displayName;

const char* kindName(KFnData::Type type) {
    switch (type) {
    case KFnData::kMesh:
        return "mesh";
    case KFnData::kNurbsCurve:
        return "nurbsCurve";
    case KFnData::kDoubleArray:
        return "doubleArray";
    case KFnData::kVectorArray:
        return "vectorArray";
    default:
        return "";
    }
}

// Reports what arrives at "inputSurface": "displayType" is its data kind (kPlugin for
// plug-in data, kInvalid for nothing) and "displayName" the kind's name, or the plug-in data
// type's name.
class DisplayShapeNode : public KPxNode {
public:
    static void* create() { return new DisplayShapeNode; }

    KStatus compute(const KPlug& plug, KDataBlock& block) override {
        if (plug != detail::objectOf(displayType) && plug != detail::objectOf(displayName)) {
            return KStatus(KStatus::kUnknownParameter);
        }
        KStatus status;
        const KDataHandle in = block.inputValue(detail::objectOf(inputSurface), &status);
        if (!status) {
            return status;
        }
        KFnData::Type kind = in.type();
        KString name(kindName(kind));
        if (const KPxData* data = in.asPluginData()) {
            kind = KFnData::kPlugin;
            name = data->name();
        }
        KDataHandle type = block.outputValue(detail::objectOf(displayType), &status);
        if (status) {
            status = type.setInt(kind);
        }
        KDataHandle text = block.outputValue(detail::objectOf(displayName), &status);
        if (status) {
            status = text.setString(name);
        }
        if (status) {
            block.setClean(detail::objectOf(displayType));
            block.setClean(detail::objectOf(displayName));
        }
        return status;
    }
};

} // namespace

std::shared_ptr<detail::NodeType> makeDisplayShapeType() {
    auto type = detail::newNodeType("zelShape", KTypeId(0x4B560006), KPxNode::kSurfaceShape,
                                    KFn::kDisplayShape);
    type->creator = &DisplayShapeNode::create;
    KStatus status;
    inputSurface = detail::makeGenericAttribute("inputSurface", "is", status);
    inputSurface->acceptedTypes = {KFnData::kMesh, KFnData::kNurbsCurve, KFnData::kDoubleArray,
                                   KFnData::kVectorArray, KFnData::kPlugin};
    displayType =
        detail::makeNumericAttribute("displayType", "dt", KFnNumericData::kInt, 0.0, status);
    displayName = detail::makeTypedAttribute("displayName", "dn", KFnData::kString, KTypeId(),
                                             nullptr, status);
    for (const auto* output : {&displayType, &displayName}) {
        (*output)->writable = false;
        (*output)->storable = false;
    }
    type->addAttribute(inputSurface);
    type->addAttribute(displayType);
    type->addAttribute(displayName);
    type->addAffects(*inputSurface, *displayType);
    type->addAffects(*inputSurface, *displayName);
    return type;
}

} // namespace kova::builtin
