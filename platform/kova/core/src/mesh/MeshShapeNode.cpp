#include "builtin/BuiltInTypes.h"
#include "detail/Attribute.h"
#include "detail/AttributeFactory.h"
#include "detail/NodeTypeFactory.h"
#include "mesh/MeshShape.h"

#include <kova/KArrayDataBuilder.h>
#include <kova/KArrayDataHandle.h>
#include <kova/KDataBlock.h>
#include <kova/KPlug.h>
#include <kova/detail/MeshData.h>

namespace kova::mesh {

namespace {

std::shared_ptr<detail::Attribute> inMesh;
std::shared_ptr<detail::Attribute> outMesh;
std::shared_ptr<detail::Attribute> worldMesh;

// Passes the input mesh on, shared: "outMesh" and element 0 of "worldMesh" hold the very
// data object of "inMesh", so that edits through KFnMesh on the shape reach every reader.
class MeshShapeNode : public KPxNode {
public:
    static void* create() { return new MeshShapeNode; }

    KStatus compute(const KPlug& plug, KDataBlock& block) override {
        const bool out = plug == detail::objectOf(outMesh);
        if (!out && plug != detail::objectOf(worldMesh)) {
            return KStatus(KStatus::kUnknownParameter);
        }
        KStatus status;
        KObject mesh = block.inputValue(detail::objectOf(inMesh), &status).asMesh();
        if (!status) {
            return status;
        }
        if (mesh.isNull()) {
            mesh = KObject(std::make_shared<detail::MeshData>());
        }
        if (out) {
            KDataHandle handle = block.outputValue(detail::objectOf(outMesh), &status);
            status = status ? handle.set(mesh) : status;
        } else {
            KArrayDataHandle array = block.outputArrayValue(detail::objectOf(worldMesh), &status);
            KArrayDataBuilder builder = status ? array.builder(&status) : KArrayDataBuilder();
            KDataHandle element = status ? builder.addElement(0, &status) : KDataHandle();
            status = status ? element.set(mesh) : status;
            status = status ? array.set(builder) : status;
        }
        if (status) {
            block.setClean(plug);
        }
        return status;
    }
};

} // namespace

KObject inMeshAttribute() {
    return detail::objectOf(inMesh);
}

KObject outMeshAttribute() {
    return detail::objectOf(outMesh);
}

} // namespace kova::mesh

namespace kova::builtin {

std::shared_ptr<detail::NodeType> makeMeshType() {
    using namespace kova::mesh;
    auto type =
        detail::newNodeType("mesh", KTypeId(0x4B560010), KPxNode::kSurfaceShape, KFn::kMesh);
    type->creator = &MeshShapeNode::create;
    KStatus status;
    inMesh = detail::makeTypedAttribute("inMesh", "i", KFnData::kMesh, KTypeId(),
                                        std::make_shared<detail::MeshData>(), status);
    outMesh =
        detail::makeTypedAttribute("outMesh", "o", KFnData::kMesh, KTypeId(), nullptr, status);
    worldMesh =
        detail::makeTypedAttribute("worldMesh", "w", KFnData::kMesh, KTypeId(), nullptr, status);
    for (const auto* output : {&outMesh, &worldMesh}) {
        (*output)->writable = false;
        (*output)->storable = false;
    }
    worldMesh->array = true;
    worldMesh->usesArrayDataBuilder = true;
    worldMesh->worldSpace = true;
    type->addAttribute(inMesh);
    type->addAttribute(outMesh);
    type->addAttribute(worldMesh);
    type->addAffects(*inMesh, *outMesh);
    type->addAffects(*inMesh, *worldMesh);
    return type;
}

} // namespace kova::builtin
