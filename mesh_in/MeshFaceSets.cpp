#include "mesh_in/HostIndexLists.h"
#include "mesh_in/MeshScope.h"
#include "mesh_in/MeshSteps.h"

#include <kova/KDagPath.h>
#include <kova/KFnSet.h>
#include <kova/KFnSingleIndexedComponent.h>
#include <kova/KIntArray.h>
#include <kova/KItDependencyGraph.h>
#include <kova/KSelectionList.h>
#include <utility>
#include <zelvane/geometry/GeoProperty.h>
#include <zelvane/geometry/Names.h>

// Every set that the mesh's node belongs to becomes a boolean property over points or faces,
// named after the set as it stands (a later set of the same name replaces an earlier one).
// Each member of the set on this mesh is stored as it comes, so when one set holds several
// component members of the mesh, the last one is what the property shows.
namespace ZelvanePlugin::MeshInput {
namespace {

// Task "copy set": `count` entries, true at the component's elements; the task owns the
// element list.
void startCopySet(MeshConversion& conversion, const FillableArray<bool>& membership,
                  std::size_t count, KIntArray&& elements) {
    conversion.groupA.run([membership, count, members = std::move(elements)] {
        MeshScope scope("copy set");
        fillMembership(members, count, *membership.writable);
    });
}

// Adds the properties of the members of `set` that are components of the converted mesh.
void addSetMembers(MeshConversion& conversion, const KFnSet& set, const Orsel::String& name) {
    using namespace Zelvane::Geometry;
    KSelectionList members;
    if (!set.getMembers(members, true)) {
        return;
    }
    for (unsigned int m = 0; m < members.length(); ++m) {
        KDagPath path;
        KObject component;
        if (!members.getDagPath(m, path, component) || !path.extendToShape() ||
            path.node() != conversion.node) {
            continue;
        }
        Orsel::String target;
        std::size_t count = 0;
        if (component.hasFn(KFn::kMeshVertComponent)) {
            target = sPointComp;
            count = conversion.pointCount;
        } else if (component.hasFn(KFn::kMeshPolygonComponent)) {
            target = sFaceComp;
            count = conversion.faceCount;
        } else {
            continue;
        }
        KIntArray elements;
        if (!KFnSingleIndexedComponent(component).getElements(elements)) {
            continue;
        }
        FillableArray<bool> membership = makeFillableArray<bool>();
        conversion.object.set(name, createGeoProperty(target, membership.shared));
        startCopySet(conversion, membership, count, std::move(elements));
    }
}

} // namespace

void addFaceSets(MeshConversion& conversion) {
    if (conversion.node.isNull()) {
        return;
    }
    for (KItDependencyGraph it(conversion.node, KFn::kSet, KItDependencyGraph::kDownstream);
         !it.isDone(); it.next()) {
        MeshScope scope("get set");
        const KFnSet set(it.currentItem());
        const KString setName = set.name();
        if (!conversion.acceptsChannel(setName)) {
            continue;
        }
        addSetMembers(conversion, set, Orsel::String(setName.asUTF8()));
    }
}

} // namespace ZelvanePlugin::MeshInput
