#include "mesh_out/ZelvaneGeoToKova.h"

#include "mesh_out/ZelvaneMeshToKova.h"

#include <kova/KArrayDataBuilder.h>
#include <kova/KArrayDataHandle.h>
#include <kova/KDataHandle.h>
#include <kova/KFnNumericAttribute.h>
#include <kova/KFnPlugin.h>
#include <kova/KFnStringData.h>
#include <kova/KFnTypedAttribute.h>
#include <zeldata/ZelData.h>
#include <zelvane/geometry/Names.h>

const KTypeId ZelvaneGeoToKova::kTypeId(0x81123);

KObject ZelvaneGeoToKova::aTransferNormals;
KObject ZelvaneGeoToKova::aProperties;
KObject ZelvaneGeoToKova::aZelvaneGeo;
KObject ZelvaneGeoToKova::aComponentTags;
KObject ZelvaneGeoToKova::aKovaMesh;

void* ZelvaneGeoToKova::creator() {
    return new ZelvaneGeoToKova();
}

namespace {

void makeInput(KFnAttribute& attribute) {
    attribute.setStorable(true);
    attribute.setWritable(true);
    attribute.setKeyable(true);
}

KObject stringDefault(const char* text) {
    KFnStringData fnString;
    return fnString.create(KString(text));
}

} // namespace

KStatus ZelvaneGeoToKova::initialize() {
    KFnNumericAttribute fnNumeric;
    KFnTypedAttribute fnTyped;

    aTransferNormals = fnNumeric.create("transferNormals", "tn", KFnNumericData::kBoolean, 0.0);
    makeInput(fnNumeric);

    aProperties = fnTyped.create("properties", "pr", KFnData::kString,
                                 stringDefault(Zelvane::Geometry::sPointColor.c_str()));
    makeInput(fnTyped);

    aZelvaneGeo = fnTyped.create("zelvaneGeo", "zg", ZelData::id, KObject::kNullObj);
    makeInput(fnTyped);

    aComponentTags = fnTyped.create("componentTags", "ct", KFnData::kString, stringDefault("*"));
    makeInput(fnTyped);

    aKovaMesh = fnTyped.create("kovaMesh", "km", KFnData::kMesh, KObject::kNullObj);
    fnTyped.setStorable(true);
    fnTyped.setWritable(false);
    fnTyped.setKeyable(false);
    fnTyped.setConnectable(true);
    fnTyped.setArray(true);
    fnTyped.setUsesArrayDataBuilder(true);

    for (const KObject* attribute :
         {&aTransferNormals, &aProperties, &aZelvaneGeo, &aComponentTags, &aKovaMesh}) {
        if (!addAttribute(*attribute)) {
            return KStatus::kFailure;
        }
    }
    // "properties" deliberately affects nothing: changing the filter alone does not dirty
    // the output.
    for (const KObject* input : {&aTransferNormals, &aZelvaneGeo, &aComponentTags}) {
        if (!attributeAffects(*input, aKovaMesh)) {
            return KStatus::kFailure;
        }
    }
    return KStatus::kSuccess;
}

KStatus ZelvaneGeoToKova::compute(const KPlug& plug, KDataBlock& block) {
    if (plug != aKovaMesh) {
        return KStatus::kUnknownParameter;
    }
    KStatus status;
    const KDataHandle input = block.inputValue(aZelvaneGeo, &status);
    const auto* zelData = status ? dynamic_cast<const ZelData*>(input.asPluginData()) : nullptr;
    if (zelData == nullptr) {
        return KStatus::kFailure;
    }
    // Own references, so that the objects live through the conversions whatever happens to
    // the input data meanwhile; released on every way out.
    const Orsel::Array<Orsel::Ptr<Zelvane::Object>> objects = zelData->objects();

    KDataHandle output = block.outputValue(aKovaMesh, &status);
    if (!status) {
        return KStatus::kFailure;
    }
    KArrayDataHandle meshes(output, &status);
    if (!status) {
        return KStatus::kFailure;
    }

    // Options that can't be read fail the evaluation rather than fall back to defaults.
    KStatus normalsRead;
    KStatus propertiesRead;
    KStatus tagsRead;
    const KDataHandle transferNormals = block.inputValue(aTransferNormals, &normalsRead);
    const KDataHandle properties = block.inputValue(aProperties, &propertiesRead);
    const KDataHandle componentTags = block.inputValue(aComponentTags, &tagsRead);
    if (!normalsRead || !propertiesRead || !tagsRead) {
        return KStatus::kFailure;
    }
    ZelvaneMeshToKovaOpts options;
    options.transferNormals = transferNormals.asBool();
    options.properties = Orsel::String(properties.asString().view());
    options.componentTags = Orsel::String(componentTags.asString().view());

    // A null entry converts like any object that is not a mesh.
    static const Zelvane::Object noObject;
    KArrayDataBuilder builder = meshes.builder(&status);
    const auto count = static_cast<unsigned int>(objects.size());
    for (unsigned int i = 0; i < count; ++i) {
        if (!status) {
            return KStatus::kFailure;
        }
        KDataHandle element = builder.addElement(i, &status);
        if (status) {
            const Zelvane::Object& object = objects[i] ? *objects[i] : noObject;
            status = element.set(zelvaneMeshToKova(object, options));
        }
    }
    if (!status) {
        return KStatus::kFailure;
    }
    const unsigned int previous = builder.elementCount();
    for (unsigned int i = count; i < previous; ++i) {
        if (!builder.removeElement(i)) {
            return KStatus::kFailure;
        }
    }
    return meshes.set(builder);
}

KStatus ZelvaneGeoToKova::registerWith(const KObject& plugin) {
    KFnPlugin fnPlugin(plugin, "Norvatek", "1.0", "Any");
    const KStatus status =
        fnPlugin.registerNode(kTypeName, kTypeId, &creator, &initialize, KPxNode::kDependNode);
    if (!status) {
        status.perror(KString("registerNode::") + kTypeName);
    }
    return status;
}

KStatus ZelvaneGeoToKova::deregisterFrom(const KObject& plugin) {
    KFnPlugin fnPlugin(plugin, "Unknown", "Unknown", "Any");
    const KStatus status = fnPlugin.deregisterNode(kTypeId);
    if (!status) {
        status.perror(KString("deregisterNode::") + kTypeName);
    }
    return status;
}
