#include "mesh_out/ZelvaneGeoToKova.h"

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
