#include "mesh_out/WriteComponentTags.h"

#include "common/ProfilerCategories.h"
#include "mesh_out/GraphProperties.h"

#include <kova/KFnMeshData.h>
#include <kova/KFnSingleIndexedComponent.h>
#include <kova/KGlobal.h>
#include <kova/KProfilingScope.h>
#include <kova/KString.h>
#include <optional>
#include <vector>
#include <zelvane/geometry/GeoProperty.h>
#include <zelvane/geometry/Names.h>
#include <zelvane/utils/ChannelParser.h>

namespace ZelvanePlugin {
namespace {

namespace Geo = Zelvane::Geometry;

struct TagRecord {
    Orsel::String property;
    Orsel::Ptr<Orsel::Array<bool>> members;
    std::optional<KFn::Type> componentType; // none: the tag gets no contents
    std::size_t elementCount = 0;
};

std::vector<Orsel::String> booleanProperties(const Zelvane::Object& object) {
    std::vector<Orsel::String> names;
    for (const Orsel::String& name : object.propertyNames()) {
        if (geoPropertyData<bool>(object, name)) {
            names.push_back(name);
        }
    }
    return names;
}

Orsel::String hostTagName(const Zelvane::Object& object, const Orsel::String& property) {
    if (const Orsel::Ptr<Zelvane::Object> tag = object.getObject(property)) {
        if (const auto* dccName = tag->get<Orsel::String>(Geo::sDccName)) {
            return *dccName;
        }
    }
    std::string_view name = property.internal_string_view();
    if (name.ends_with(Geo::sComponentTagSuffix.internal_string_view())) {
        name.remove_suffix(Geo::sComponentTagSuffix.size());
    }
    if (name.starts_with(Geo::sComponentTagPrefix_point.internal_string_view())) {
        name.remove_prefix(Geo::sComponentTagPrefix_point.size());
    } else if (name.starts_with(Geo::sComponentTagPrefix_face.internal_string_view())) {
        name.remove_prefix(Geo::sComponentTagPrefix_face.size());
    }
    return Orsel::String(name);
}

// The members as a host component; the null object when the component can't be made.
KObject hostComponent(const TagRecord& tag) {
    KFnSingleIndexedComponent fnComponent;
    KStatus status;
    const KObject component = fnComponent.create(*tag.componentType, &status);
    const bool* member = tag.members->data();
    for (std::size_t i = 0; status && i < tag.elementCount; ++i) {
        if (member[i]) {
            status = fnComponent.addElement(static_cast<int>(i));
        }
    }
    return status ? component : KObject();
}

} // namespace

void writeComponentTags(const KObject& meshData, const Zelvane::Object& object,
                        const Orsel::String& componentTags, const GraphMeshTopology& topology,
                        MeshObjectValidation& validation) {
    const std::vector<Orsel::String> candidates = booleanProperties(object);
    if (candidates.empty()) {
        return;
    }
    KProfilingScope scope(meshConverterCategory(), kProfilerColor, "write component tags");
    ZEL::Utils::ChannelParser parser;
    parser.parses(componentTags); // a malformed expression accepts nothing; not reported

    std::vector<TagRecord> tags;
    for (const Orsel::String& name : candidates) {
        if (!parser.accepts(name)) {
            continue;
        }
        TagRecord tag{name, geoPropertyData<bool>(object, name), std::nullopt, 0};
        const Orsel::String component = Geo::getTargetComponent(object, name);
        if (component == Geo::sPointComp) {
            tag.componentType = KFn::kMeshVertComponent;
            tag.elementCount = topology.pointCount;
        } else if (component == Geo::sFaceComp) {
            tag.componentType = KFn::kMeshPolygonComponent;
            tag.elementCount = topology.faceCount;
        }
        if (!requireEntries(tag.members, tag.elementCount, name, "bool",
                            component == Geo::sPointComp ? "points" : "faces",
                            {MeshStep::tags, tags.size()}, validation)) {
            return;
        }
        tags.push_back(std::move(tag));
    }

    KFnMeshData fnData(meshData);
    for (const TagRecord& tag : tags) {
        const KObject contents = tag.componentType ? hostComponent(tag) : KObject();
        const KString name(hostTagName(object, tag.property).internal_string_view());
        if (!fnData.addComponentTag(name)) {
            KGlobal::displayError(KString("Could not add component tag named: ") + name);
        }
        if (!fnData.setComponentTagContents(name, contents)) {
            KGlobal::displayError(KString("Could not set component tag content for: ") + name);
        }
    }
}

} // namespace ZelvanePlugin
