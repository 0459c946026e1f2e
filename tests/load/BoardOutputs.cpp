#include "BoardOutputs.h"

#include "ObjectDifference.h"

#include <board/BoardNode.h>
#include <kova/KDataHandle.h>
#include <kova/KFnDependencyNode.h>
#include <kova/KFnPluginData.h>
#include <kova/KPlug.h>
#include <zeldata/ZelData.h>

namespace {

KPlug plugOf(const KObject& node, const char* attribute) {
    return KFnDependencyNode(node).findPlug(attribute, false);
}

std::vector<Orsel::Ptr<Zelvane::Object>> objectsOn(const KPlug& plug) {
    const auto* data = dynamic_cast<const ZelData*>(KFnPluginData(plug.asKObject()).data());
    if (!data) {
        return {};
    }
    return {data->objects().begin(), data->objects().end()};
}

} // namespace

BoardOutputs evaluateBoard(const KObject& board, const KObject& writer) {
    BoardOutputs outputs;
    outputs.evaluated = static_cast<bool>(ZelvaneBoard::evaluate(board));
    outputs.meshObjects = objectsOn(plugOf(board, "meshesOut"));
    outputs.strandObjects = objectsOn(plugOf(board, "strandsOut"));
    const KPlug meshes = plugOf(writer, "kovaMesh");
    KDataHandle all;
    if (meshes.getValue(all)) {
        for (unsigned int i = 0; i < meshes.numElements(); ++i) {
            outputs.hostMeshes.push_back(
                hostMeshValues(meshes.elementByPhysicalIndex(i).asKObject()));
        }
    }
    return outputs;
}

std::string outputsDifference(const BoardOutputs& expected, const BoardOutputs& actual) {
    if (expected.evaluated != actual.evaluated) {
        return actual.evaluated ? "the evaluation ran" : "the evaluation failed";
    }
    if (std::string found =
            objectsDifference(expected.meshObjects, actual.meshObjects, "meshesOut");
        !found.empty()) {
        return found;
    }
    if (std::string found =
            objectsDifference(expected.strandObjects, actual.strandObjects, "strandsOut");
        !found.empty()) {
        return found;
    }
    if (expected.hostMeshes.size() != actual.hostMeshes.size()) {
        return "kovaMesh: " + std::to_string(actual.hostMeshes.size()) + " meshes instead of " +
               std::to_string(expected.hostMeshes.size());
    }
    for (std::size_t i = 0; i < expected.hostMeshes.size(); ++i) {
        if (std::string found = hostMeshDifference(expected.hostMeshes[i], actual.hostMeshes[i]);
            !found.empty()) {
            return "kovaMesh[" + std::to_string(i) + "] " + found;
        }
    }
    return {};
}
