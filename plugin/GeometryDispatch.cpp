#include "plugin/GeometryDispatch.h"

#include "curves_in/KovaCurvesToObject.h"
#include "mesh_in/KovaMeshToObject.h"
#include "mesh_in/MeshMaterials.h"
#include "plugin/ArrayConverters.h"

#include <kova/KArrayDataHandle.h>
#include <kova/KDataHandle.h>
#include <kova/KFnData.h>
#include <kova/KFnDependencyNode.h>
#include <kova/KPlug.h>
#include <kova/KPlugArray.h>
#include <vector>
#include <zeldata/ZelData.h>
#include <zelvane/geometry/Names.h>

namespace {

using ObjectList = Orsel::Array<Orsel::Ptr<Zelvane::Object>>;

// Kind-specific converters; the mesh and curve converters live in their own subsystems.
void appendMeshObject(const KPlug& source, const KDataHandle& handle,
                      const Orsel::MetadataItem& options, ObjectList& results) {
    MeshOptions meshOptions;
    meshOptions.parse(options); // a malformed option keeps its default
    KDataHandle meshHandle = handle;
    Orsel::MutablePtr<Zelvane::Object> object = kovaMeshToObject(source, meshHandle, meshOptions);
    if (object) {
        ZelvanePlugin::readMaterials(source.node(), object);
        results.push_back(std::move(object));
    }
}

// A curve source becomes a strand object of its own, named in messages by its plug and the
// input it feeds.
void appendCurveObject(const KPlug& source, const KDataHandle& handle,
                       const Orsel::MetadataItem& options, const KPlug& destination,
                       ObjectList& results) {
    ZelvaneBoardInputByPath::CurveOptions curveOptions;
    curveOptions.parse(options); // a malformed option keeps its default
    Orsel::MutablePtr<Zelvane::Object> object =
        kovaCurvesToObject({source}, {handle}, curveOptions, true, destination);
    if (object) {
        ZelvanePlugin::readMaterials(source.node(), object);
        results.push_back(std::move(object));
    }
}

// One strand object of all the curves of an array port; `plugs` are the port's elements.
Orsel::MutablePtr<Zelvane::Object> mergedCurvesObject(const std::vector<KPlug>& plugs,
                                                      const std::vector<KDataHandle>& handles,
                                                      const Orsel::MetadataItem& options) {
    ZelvaneBoardInputByPath::CurveOptions curveOptions;
    curveOptions.parse(options); // a malformed option keeps its default
    return kovaCurvesToObject(plugs, handles, curveOptions, false, KPlug());
}

// An object naming a host node: a material or an operator the graph refers to.
Orsel::Ptr<Zelvane::Object> referenceObject(const Orsel::String& property, const KString& name) {
    Orsel::MutablePtr<Zelvane::Object> reference = Zelvane::createObject();
    reference->set(property, Zelvane::PropertyValue(Orsel::String(name.view())));
    return Orsel::Ptr<Zelvane::Object>(std::move(reference));
}

// Objects carried by a ZelData are shared with the graph as they are.
void appendSharedObjects(const KDataHandle& handle, ObjectList& results) {
    if (handle.data().isNull() || handle.typeId() != ZelData::id) {
        return;
    }
    auto* data = dynamic_cast<ZelData*>(handle.asPluginData());
    if (!data || data->empty()) {
        return;
    }
    data->setShared(1);
    results.reserve(results.size() + data->size());
    for (const Orsel::Ptr<Zelvane::Object>& object : data->objects()) {
        results.push_back(object);
    }
}

// A message connection from a shader or an operator node becomes a reference to it; the
// node type's classification must begin with the kind's prefix.
void appendReference(const KPlug& source, ObjectList& results) {
    KFnDependencyNode fnNode(source.node());
    const KString classification = fnNode.classification();
    if (classification.view().starts_with("drawdb/shader")) {
        results.push_back(referenceObject(Zelvane::Geometry::sMaterialReferenceID, fnNode.name()));
    } else if (classification.view().starts_with("operator")) {
        results.push_back(referenceObject(Zelvane::Geometry::sOperatorReferenceID, fnNode.name()));
    }
}

void dispatchSource(const KPlug& source, const KDataHandle& handle,
                    const Orsel::MetadataItem& options, const KPlug& destination,
                    ObjectList& results) {
    switch (handle.type()) {
    case KFnData::kDoubleArray:
        results.push_back(kovaDoubleArrayToObject(source, handle));
        break;
    case KFnData::kVectorArray:
        results.push_back(kovaVectorArrayToObject(source, handle));
        break;
    case KFnData::kMesh:
        appendMeshObject(source, handle, options, results);
        break;
    case KFnData::kNurbsCurve:
        appendCurveObject(source, handle, options, destination, results);
        break;
    case KFnData::kInvalid:
        if (source.attribute().hasFn(KFn::kMessageAttribute)) {
            appendReference(source, results);
        } else {
            appendSharedObjects(handle, results);
        }
        break;
    default:
        break;
    }
}

// Appends the objects of every source feeding `destination`, in the host's order. Unreadable
// sources are skipped; null results of the array converters are kept as null entries.
void dispatchSources(const KPlug& destination, const Orsel::MetadataItem& options,
                     ObjectList& results) {
    KPlugArray sources;
    destination.connectedTo(sources, true, false);
    for (unsigned int i = 0; i < sources.length(); ++i) {
        const KPlug& source = sources[i];
        KDataHandle handle;
        if (!source.getValue(handle)) {
            continue;
        }
        dispatchSource(source, handle, options, destination, results);
        source.destructHandle(handle);
    }
}

} // namespace

Orsel::MutablePtr<Zelvane::Object> kovaGeoToZelvane(const KPlug& plug,
                                                    const KDataHandle& /*handle*/,
                                                    const Orsel::MetadataItem& options) {
    ObjectList results;
    dispatchSources(plug, options, results);
    if (results.empty()) {
        return Zelvane::createObject();
    }
    // The first source wins; a shared object is copied so the host's one never changes.
    return Orsel::MutablePtr<Zelvane::Object>::fromShared(std::move(results[0]));
}

Orsel::MutablePtr<ObjectList> kovaGeoToZelvane(const KPlug& plug, KArrayDataHandle& handle,
                                               const Orsel::MetadataItem& options) {
    auto results = Orsel::make<ObjectList>();
    const unsigned int count = handle.elementCount();
    results->reserve(count);
    for (unsigned int i = 0; i < count; ++i) {
        dispatchSources(plug.elementByPhysicalIndex(i), options, *results);
        handle.next();
    }
    return results;
}

Orsel::MutablePtr<Zelvane::Object> kovaGeoToZelvaneMerged(const KPlug& plug,
                                                          KArrayDataHandle& handle,
                                                          const Orsel::MetadataItem& options) {
    std::vector<KPlug> plugs;
    std::vector<KDataHandle> handles;
    bool allCurves = true;
    const unsigned int count = handle.elementCount();
    for (unsigned int i = 0; i < count; ++i) {
        if (!handle.jumpToArrayElement(i)) {
            return {}; // an element that can't be read is no curve
        }
        handles.push_back(handle.inputValue());
        plugs.push_back(plug.elementByPhysicalIndex(i));
        allCurves = allCurves && handles.back().type() == KFnData::kNurbsCurve;
    }
    if (!allCurves) {
        return {};
    }
    return mergedCurvesObject(plugs, handles, options);
}
