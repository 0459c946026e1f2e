#pragma once

#include <kova/KDGModifier.h>
#include <kova/KExport.h>

// A KDGModifier that also creates DAG nodes and changes their parents.
class KOVA_API KDagModifier : public KDGModifier {
public:
    KDagModifier() = default;

    // A DAG node of `typeName` under `parent` (a transform; null: the root). A shape type
    // without a parent also gets a new parent transform, and the transform is returned: the
    // transform takes the type's default name ("zelShape1") and the shape the transform's
    // name with "Shape" put before its number ("zelShapeShape1").
    KObject createNode(const KString& typeName, const KObject& parent = KObject::kNullObj,
                       KStatus* status = nullptr);
    // Makes `node` a child of `newParent` only (null: a root).
    KStatus reparentNode(const KObject& node, const KObject& newParent = KObject::kNullObj);
};
