#include "mesh_in/HostIndexLists.h"
#include "mesh_in/MeshScope.h"
#include "mesh_in/MeshSteps.h"

#include <kova/KFnSingleIndexedComponent.h>
#include <kova/KIntArray.h>
#include <zelvane/geometry/Names.h>
#include <zelvane/geometry/PropertyLookup.h>
#include <zelvane/geometry/Tag.h>
#include <zelvane/utils/ChannelParser.h>

namespace ZelvanePlugin::MeshInput {
namespace {

// Categories of host component tags, by what the tag holds.
enum TagCategory { kVertexTag = 2, kEdgeTag = 3, kFaceTag = 4 };

// The membership of a tag over `count` elements: all true for a complete component, else
// true at the listed elements. Null when the listed elements can't be read.
Orsel::MutablePtr<Orsel::Array<bool>> tagMembership(const KObject& contents, std::size_t count) {
    auto membership = Orsel::make<Orsel::Array<bool>>();
    KStatus status;
    const KFnSingleIndexedComponent component(contents, &status);
    if (status && component.isComplete()) {
        membership->resize(count, true);
        return membership;
    }
    KIntArray elements;
    if (!status || !component.getElements(elements)) {
        return {};
    }
    fillMembership(elements, count, *membership);
    return membership;
}

} // namespace

void addComponentTags(MeshConversion& conversion, const KFnGeometryData& geometry) {
    using namespace Zelvane::Geometry;
    // Tags have a filter of their own; the channel filter selects UV, colour and face sets.
    ZEL::Utils::ChannelParser tagFilter;
    tagFilter.parses(conversion.options.componentTagFilter);
    KStringArray tags;
    if (!geometry.componentTags(tags)) {
        return;
    }
    for (unsigned int i = 0; i < tags.length(); ++i) {
        MeshScope scope("convert component tag");
        const KString& tagName = tags[i];
        if (!tagFilter.accepts(tagName.asChar())) {
            continue;
        }
        KStatus status;
        const int category = geometry.componentTagCategory(tagName, &status);
        if (!status || category == kEdgeTag) {
            continue;
        }
        // Tags of another category have no target and no elements; they get no name and
        // are not stored.
        Orsel::String target;
        std::size_t count = 0;
        if (category == kVertexTag) {
            target = sPointComp;
            count = conversion.pointCount;
        } else if (category == kFaceTag) {
            target = sFaceComp;
            count = conversion.faceCount;
        }
        const KObject contents = geometry.componentTagContents(tagName, &status);
        if (!status) {
            continue;
        }
        Orsel::MutablePtr<Orsel::Array<bool>> membership = tagMembership(contents, count);
        if (!membership) {
            continue;
        }
        Orsel::MutablePtr<Zelvane::Object> tag = Zelvane::createObject();
        populateTag(target, std::move(membership), *tag);
        tag->set(sDccName, Orsel::String(tagName.asUTF8()));
        const Orsel::String name =
            getUniqueGeoPropName(createTagName(target, tagName.view()), conversion.object);
        conversion.object.set(name, std::move(tag));
    }
}

} // namespace ZelvanePlugin::MeshInput
