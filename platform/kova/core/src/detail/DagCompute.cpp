#include "detail/DagCompute.h"

#include "detail/Attribute.h"
#include "detail/Evaluator.h"
#include "detail/Node.h"

#include <kova/KTransformationMatrix.h>
#include <numbers>

namespace kova::detail {

namespace {

KStatus readVector(Node& node, const std::shared_ptr<Attribute>& attribute, KVector& out) {
    Value value;
    if (KStatus status = readValue(node, {{attribute, -1}}, value); !status) {
        return status;
    }
    out = KVector(value.numbers[0], value.numbers[1], value.numbers[2]);
    return KStatus();
}

KStatus localMatrix(Node& node, KMatrix& out) {
    const DagAttributes& dag = node.type->dag;
    if (!dag.matrix) {
        out = KMatrix();
        return KStatus();
    }
    KVector translate, rotate, scale;
    KStatus status = readVector(node, dag.translate, translate);
    if (status) {
        status = readVector(node, dag.rotate, rotate);
    }
    if (status) {
        status = readVector(node, dag.scale, scale);
    }
    if (!status) {
        return status;
    }
    KTransformationMatrix transform;
    transform.setTranslation(translate)
        .setRotation(rotate * (std::numbers::pi / 180.0))
        .setScale(scale);
    out = transform.asMatrix();
    return KStatus();
}

KStatus readMatrix(Node& node, const std::shared_ptr<Attribute>& attribute, int index,
                   KMatrix& out) {
    Value value;
    if (KStatus status = readValue(node, {{attribute, index}}, value); !status) {
        return status;
    }
    out = value.matrix;
    return KStatus();
}

void storeMatrix(Node& node, const std::shared_ptr<Attribute>& attribute, int index,
                 const KMatrix& matrix) {
    if (Value* slot = node.slot({{attribute, index}}, true)) {
        slot->matrix = matrix;
    }
}

// Number of instances: one per DAG parent, and one for a node at the root.
int instanceCount(const Node& node) {
    return std::max<int>(1, static_cast<int>(node.parents.size()));
}

} // namespace

bool isDagAttribute(const Node& node, const Attribute& attribute) {
    const DagAttributes& dag = node.type->dag;
    const Attribute* a = &attribute;
    return node.type->isDag() && (a == dag.parentMatrix.get() || a == dag.worldMatrix.get() ||
                                  a == dag.worldInverseMatrix.get() || a == dag.matrix.get());
}

KStatus computeDagAttribute(Node& node, const Attribute& attribute) {
    const DagAttributes& dag = node.type->dag;
    if (&attribute == dag.matrix.get()) {
        KMatrix local;
        KStatus status = localMatrix(node, local);
        if (status) {
            if (Value* slot = node.slot({{dag.matrix, -1}}, true)) {
                slot->matrix = local;
            }
        }
        return status;
    }
    const std::shared_ptr<Attribute>& target =
        &attribute == dag.parentMatrix.get()  ? dag.parentMatrix
        : &attribute == dag.worldMatrix.get() ? dag.worldMatrix
                                              : dag.worldInverseMatrix;
    for (int i = 0; i < instanceCount(node); ++i) {
        KMatrix result;
        KStatus status;
        if (target == dag.parentMatrix) {
            if (i < static_cast<int>(node.parents.size())) {
                Node& parent = *node.parents[static_cast<std::size_t>(i)];
                status = readMatrix(parent, parent.type->dag.worldMatrix, 0, result);
            }
        } else if (target == dag.worldMatrix) {
            KMatrix local, parent;
            status = localMatrix(node, local);
            if (status) {
                status = readMatrix(node, dag.parentMatrix, i, parent);
            }
            result = local * parent;
        } else {
            status = readMatrix(node, dag.worldMatrix, i, result);
            result = result.inverse();
        }
        if (!status) {
            return status;
        }
        storeMatrix(node, target, i, result);
    }
    return KStatus();
}

} // namespace kova::detail
