// Arbitrary graph objects and graph results through the output side of the plug-in:
// - `zelvaneMeshToKova`, looked up in the loaded plug-in, on objects of any shape with any
//   options: it must give mesh data (the empty mesh for an object that is not a mesh) and
//   throw nothing but the UV set numbering errors it documents;
// - a board whose graph hands back fuzzed values on its object, object-array, time,
//   scene-info and transform outputs, evaluated twice the way the board executor calls
//   `translateOutputValue` / `translateOutputData`; the objects that arrive in each object
//   output's ZelData are checked against the value, and "zelvaneGeoToKova" nodes turn them
//   into host meshes.

#include "FuzzCheck.h"
#include "FuzzHost.h"
#include "GraphObjectBuilder.h"

#include <board/BoardNode.h>
#include <board/PortDescription.h>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <dlfcn.h>
#include <kova/KDGModifier.h>
#include <kova/KDataHandle.h>
#include <kova/KFnDependencyNode.h>
#include <kova/KFnMesh.h>
#include <kova/KFnPluginData.h>
#include <kova/KPlug.h>
#include <kova/KScene.h>
#include <mesh_out/ZelvaneMeshToKova.h>
#include <optional>
#include <stdexcept>
#include <vector>
#include <zeldata/ZelData.h>
#include <zelvane/Geometry.h>
#include <zelvane/file/SceneInfo.h>
#include <zelvane/geometry/GraphTransforms.h>
#include <zelvane/simulation/Time.h>

namespace {

using ZelFuzz::check;

using ZelvaneGraph::Executor::PortDirection;
using Converter = KObject (*)(const Zelvane::Object&, const ZelvaneMeshToKovaOpts&);

Converter gConvert = nullptr;

void convertChecked(const Zelvane::Object& object, const ZelvaneMeshToKovaOpts& options) {
    try {
        const KObject data = gConvert(object, options);
        check(data.hasFn(KFn::kMeshData), "the conversion gave no mesh data");
        if (!Zelvane::Object::isA(object, *Zelvane::Geometry::getMeshPrototype())) {
            const KFnMesh mesh(data);
            check(mesh.numVertices() == 0 && mesh.numPolygons() == 0,
                  "an object that is not a mesh gave a mesh that is not empty");
        }
    } catch (const std::invalid_argument& e) {
        check(std::strcmp(e.what(), "invalid stoi argument") == 0, "an unexpected exception");
    } catch (const std::out_of_range& e) {
        check(std::strcmp(e.what(), "stoi argument out of range") == 0, "an unexpected exception");
    }
}

struct OutputPort {
    const char* name;
    Orsel::Type type;
};

// The objects an object output must hold after the graph gave it `value`: the value's
// objects in order (null: a new empty object). Nothing when the output holds no objects.
std::optional<std::vector<const Zelvane::Object*>> expectedObjects(const Orsel::Value& value) {
    const Orsel::Type& type = value.type();
    const Orsel::Type& named = type.isArray() ? type.elementType() : type;
    if (named != Zelvane::objectType()) {
        return std::nullopt;
    }
    std::vector<const Zelvane::Object*> objects;
    if (!type.isArray()) {
        objects.push_back(value.getOrselClass<Zelvane::Object>().get());
        return objects;
    }
    if (const auto entries = value.getOpaqueArray()) {
        for (const Orsel::Ptr<Orsel::Class>& entry : *entries) {
            if (const auto object = Orsel::dynamicPtrCast<Zelvane::Object>(entry)) {
                objects.push_back(object.get());
            }
        }
    }
    return objects;
}

void checkObjectOutput(const KObject& board, const OutputPort& port, const Orsel::Value& value) {
    const KPlug plug = KFnDependencyNode(board).findPlug(port.name, false);
    const auto* data = dynamic_cast<const ZelData*>(KFnPluginData(plug.asKObject()).data());
    const auto expected = expectedObjects(value);
    if (!expected) {
        check(!data || data->empty(), "an output of another type kept objects");
        return;
    }
    check(data && data->size() == expected->size(), "an object output holds other objects");
    for (std::size_t i = 0; i < expected->size(); ++i) {
        const Zelvane::Object* object = data->objects()[i].get();
        check((*expected)[i] ? object == (*expected)[i] : object && object->propertyCount() == 0,
              "an object output holds other objects");
    }
}

// Host meshes of a "zelvaneGeoToKova" node: each element, when evaluated, is mesh data.
void pullMeshes(const KObject& node) {
    const KPlug meshes = KFnDependencyNode(node).findPlug("kovaMesh", false);
    KDataHandle handle;
    if (!meshes.getValue(handle)) {
        return; // a failed compute (a documented UV numbering error) leaves it unevaluated
    }
    meshes.destructHandle(handle);
    for (unsigned int i = 0; i < meshes.numElements(); ++i) {
        check(meshes.elementByPhysicalIndex(i).asKObject().hasFn(KFn::kMeshData),
              "a kovaMesh element holds no mesh data");
    }
}

KObject geoToKova(const KObject& board, const char* output, ZelFuzz::GraphObjectBuilder& build,
                  FuzzedDataProvider& input) {
    KFnDependencyNode fnNode;
    const KObject node = fnNode.create("zelvaneGeoToKova");
    fnNode.findPlug("transferNormals", false).setBool(input.ConsumeBool());
    fnNode.findPlug("properties", false)
        .setString(KString(build.expression().internal_string_view()));
    fnNode.findPlug("componentTags", false)
        .setString(KString(build.expression().internal_string_view()));
    KDGModifier modifier;
    modifier.connect(KFnDependencyNode(board).findPlug(output, false),
                     fnNode.findPlug("zelvaneGeo", false));
    modifier.doIt();
    return node;
}

void evaluateBoard(FuzzedDataProvider& input, ZelFuzz::GraphObjectBuilder& build) {
    KScene::reset();
    KFnDependencyNode fnNode;
    const KObject board = fnNode.create(ZelvaneBoard::BoardNode::kTypeName, "board1");
    const Orsel::Type object = Zelvane::objectType();
    const OutputPort ports[] = {
        {"one", object},
        {"many", Orsel::Type::arrayOf(object)},
        {"time", Zelvane::Simulation::timeType()},
        {"info", Zelvane::File::Project::sceneInfoType()},
        {"transforms", Zelvane::Geometry::Transform::graphTransformsType()}};
    for (const OutputPort& port : ports) {
        ZelvaneBoard::PortDescription description{port.name, PortDirection::Output, port.type, {}};
        if (input.ConsumeBool()) {
            description.metadata.setChild("noShape", "1");
        }
        ZelvaneBoard::addPort(board, description);
    }
    const KObject meshesOfOne = geoToKova(board, "one", build, input);
    const KObject meshesOfMany = geoToKova(board, "many", build, input);

    // Two evaluations: the second must leave nothing of the first behind.
    for (int round = 0; round < 2; ++round) {
        ZelvaneBoard::PortValues values;
        for (const OutputPort& port : ports) {
            if (input.ConsumeBool()) {
                values.emplace(port.name, build.value());
            }
        }
        ZelvaneBoard::BoardNode::fromNode(board)->graph().setBody(
            [values](const ZelvaneBoard::PortValues&) { return values; });
        ZelvaneBoard::evaluate(board);
        for (const OutputPort& port : {ports[0], ports[1]}) {
            const auto given = values.find(port.name);
            checkObjectOutput(
                board, port,
                given != values.end()
                    ? given->second
                    : (port.type.isArray()
                           ? Orsel::Value::fromOpaqueArray(port.type, nullptr)
                           : Orsel::Value::fromClass(port.type, Orsel::Ptr<Orsel::Class>())));
        }
        pullMeshes(meshesOfOne);
        pullMeshes(meshesOfMany);
    }
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    ZelFuzz::setUpHost();
    void* library = ZelFuzz::pluginLibrary();
    gConvert = reinterpret_cast<Converter>(
        dlsym(library, "_Z17zelvaneMeshToKovaRKN7Zelvane6ObjectERK21ZelvaneMeshToKovaOpts"));
    check(gConvert != nullptr, "the plug-in exports no zelvaneMeshToKova");
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    ZelFuzz::GraphObjectBuilder build(input);
    ZelvaneMeshToKovaOpts options;
    options.transferNormals = input.ConsumeBool();
    options.properties = build.expression();
    options.componentTags = build.expression();
    convertChecked(*build.object(2), options);
    evaluateBoard(input, build);
    return 0;
}
