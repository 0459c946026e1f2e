#pragma once

#include <kova/KExport.h>
#include <kova/KObject.h>
#include <kova/KObjectArray.h>
#include <kova/KString.h>

// The process's scene: one per process, created on first use with its default nodes,
// "time1" (type "time", attribute "outTime") and "initialShadingGroup" (type
// "shadingEngine"). Node names are unique in the whole scene; a requested name that is taken
// gets the first free number in place of its trailing digits ("cube" -> "cube1").
// reset() deletes every node and recreates the defaults, for tests and the command line;
// registered node and data types stay.
class KOVA_API KScene {
public:
    static KScene& current();
    static void reset();

    // Every node, in creation order.
    KObjectArray nodes() const;
    // The node named `name` (or the full DAG path), or the null object.
    KObject findNode(const KString& name) const;
    unsigned int nodeCount() const;

private:
    KScene() = default;
};
