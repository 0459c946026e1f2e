#pragma once

#include <kova/KDataBlock.h>
#include <kova/KObject.h>
#include <kova/KPlug.h>
#include <kova/KPxNode.h>
#include <kova/KStatus.h>
#include <kova/KTypeId.h>

// Host node "zelvaneGeoToKova": takes a list of graph objects on "zelvaneGeo" and produces one
// host mesh per object on the array output "kovaMesh".
class ZelvaneGeoToKova : public KPxNode {
public:
    static constexpr const char* kTypeName = "zelvaneGeoToKova";
    static const KTypeId kTypeId; // 0x81123

    static KObject aTransferNormals; // "transferNormals" / "tn"
    static KObject aProperties;      // "properties" / "pr"
    static KObject aZelvaneGeo;      // "zelvaneGeo" / "zg"
    static KObject aComponentTags;   // "componentTags" / "ct"
    static KObject aKovaMesh;        // "kovaMesh" / "km"

    static void* creator();
    static KStatus initialize();

    // Computes "kovaMesh": one mesh per object of the ZelData on "zelvaneGeo" (converted by
    // zelvaneMeshToKova with the node's options), surplus elements of the previous evaluation
    // removed. Any other plug gives kUnknownParameter (5); a failed host call gives kFailure (1).
    KStatus compute(const KPlug& plug, KDataBlock& block) override;

    // Registers the node type with the host plug-in object; failures are printed with
    // "registerNode::zelvaneGeoToKova" and returned.
    static KStatus registerWith(const KObject& plugin);
    // Removes the node type; failures are printed with "deregisterNode::zelvaneGeoToKova".
    static KStatus deregisterFrom(const KObject& plugin);
};
