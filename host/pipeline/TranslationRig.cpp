#include "TranslationRig.h"

#include <board/BoardNode.h>
#include <board/Graph.h>
#include <fmt/format.h>
#include <kova/KDGModifier.h>
#include <kova/KDataHandle.h>
#include <kova/KFnDagNode.h>
#include <kova/KFnDependencyNode.h>
#include <kova/KFnGenericAttribute.h>
#include <kova/KPlug.h>
#include <kova/KPlugArray.h>
#include <zelvane/inputbypath/OptionKeys.h>

namespace KovaHost {

using ZelvaneBoard::PortValues;
using ZelvaneGraph::Executor::PortDirection;

// The board's inputs as the graph last saw them.
struct TranslationRig::Captured {
    PortValues inputs;
};

namespace {

const Orsel::Type& objectArrayType() {
    static const Orsel::Type type = Orsel::Type::arrayOf(Zelvane::objectType());
    return type;
}

KPlug plugOf(const KObject& node, const char* attribute) {
    return KFnDependencyNode(node).findPlug(attribute, false);
}

// An output port that shows no display shape: the rig writes meshes back itself. Its host
// attribute is a single plug whose ZelData carries all the objects of the array the graph
// gives it, which is what a "zelvaneGeoToKova" node reads.
ZelvaneBoard::PortDescription outputPort(const char* name) {
    Orsel::MetadataItem metadata;
    metadata.setChild(Orsel::String(ZelvaneBoardInputByPath::Keys::kNoShape), Orsel::String("1"));
    return {Orsel::String(name), PortDirection::Output, Zelvane::objectType(), metadata};
}

// An array attribute for curves made before the "curves" port, so that the object port reads
// all of its elements as one merged strand object.
bool addMergedCurveAttribute(const KObject& board) {
    KFnGenericAttribute fnGeneric;
    const KObject attribute = fnGeneric.create("curves", "curves");
    fnGeneric.setArray(true);
    fnGeneric.setReadable(false);
    fnGeneric.addDataAccept(KFnData::kNurbsCurve);
    KDGModifier modifier;
    modifier.addAttribute(board, attribute);
    return !attribute.isNull() && modifier.doIt();
}

ZelvaneBoard::Graph roundTripGraph() {
    ZelvaneBoard::Graph graph;
    graph.addOperator("meshes", "passThrough");
    graph.connect("meshes", "meshes.in");
    graph.connect("meshes.out", "meshesOut");
    graph.addOperator("tubes", "strandsToTubes");
    graph.connect("curves", "tubes.strands");
    graph.connect("radius", "tubes.radius");
    graph.connect("sides", "tubes.sides");
    graph.connect("tubes.meshes", "tubes");
    return graph;
}

std::vector<Orsel::Ptr<Zelvane::Object>> objectsOf(const PortValues& values, const char* port) {
    std::vector<Orsel::Ptr<Zelvane::Object>> objects;
    auto it = values.find(port);
    if (it == values.end()) {
        return objects;
    }
    if (auto array = it->second.getOpaqueArray()) {
        for (const auto& entry : *array) {
            objects.push_back(Orsel::dynamicPtrCast<Zelvane::Object>(entry));
        }
    } else if (auto object = it->second.getOrselClass<Zelvane::Object>()) {
        objects.push_back(std::move(object));
    }
    return objects;
}

KObject makeWriter(const char* name, const RigOptions& options) {
    KFnDependencyNode fnNode;
    const KObject writer = fnNode.create("zelvaneGeoToKova", name);
    if (!writer.isNull()) {
        plugOf(writer, "transferNormals").setBool(options.transferNormals);
        plugOf(writer, "properties").setString(options.properties.c_str());
        plugOf(writer, "componentTags").setString(options.componentTags.c_str());
    }
    return writer;
}

bool connectPlugs(const KPlug& source, const KPlug& destination) {
    KDGModifier modifier;
    return modifier.connect(source, destination) && modifier.doIt();
}

} // namespace

bool TranslationRig::build(const std::vector<KObject>& meshShapes,
                           const std::vector<KObject>& curveShapes, const RigOptions& options,
                           std::string& error) {
    KFnDependencyNode fnNode;
    board_ = fnNode.create(ZelvaneBoard::BoardNode::kTypeName, "kovaBoard");
    ZelvaneBoard::BoardNode* board = ZelvaneBoard::BoardNode::fromNode(board_);
    if (!board) {
        error = "cannot create a board node";
        return false;
    }
    meshSources_ = meshShapes;
    hasCurves_ = !curveShapes.empty();
    const bool ported =
        ZelvaneBoard::addPort(board_, {Orsel::String("meshes"), PortDirection::Input,
                                       objectArrayType(), options.portOptions}) &&
        addMergedCurveAttribute(board_) &&
        ZelvaneBoard::addPort(board_, {Orsel::String("curves"), PortDirection::Input,
                                       Zelvane::objectType(), options.portOptions}) &&
        ZelvaneBoard::addPort(board_, outputPort("meshesOut")) &&
        ZelvaneBoard::addPort(board_, outputPort("tubes"));
    if (!ported) {
        error = "the plug-in did not make the board's ports (is it bound?)";
        return false;
    }

    captured_ = std::make_shared<Captured>();
    const Orsel::Value radius =
        Orsel::Value::make(Orsel::Type::builtin(Orsel::TypeKind::Float), options.tubeRadius);
    const Orsel::Value sides =
        Orsel::Value::make(Orsel::Type::builtin(Orsel::TypeKind::Int32), options.tubeSides);
    board->graph().setBody(
        [graph = roundTripGraph(), captured = captured_, radius, sides](const PortValues& inputs) {
            captured->inputs = inputs;
            PortValues withShape = inputs;
            withShape.emplace("radius", radius);
            withShape.emplace("sides", sides);
            return graph.run(withShape);
        });

    const KPlug meshes = plugOf(board_, "meshes");
    for (std::size_t i = 0; i < meshShapes.size(); ++i) {
        const KPlug world = plugOf(meshShapes[i], "worldMesh").elementByLogicalIndex(0);
        if (!connectPlugs(world, meshes.elementByLogicalIndex(static_cast<unsigned>(i)))) {
            error = fmt::format("cannot connect {}", world.name().str());
            return false;
        }
    }
    const KPlug curves = plugOf(board_, "curves");
    for (std::size_t i = 0; i < curveShapes.size(); ++i) {
        const KPlug world = plugOf(curveShapes[i], "worldSpace").elementByLogicalIndex(0);
        if (!connectPlugs(world, curves.elementByLogicalIndex(static_cast<unsigned>(i)))) {
            error = fmt::format("cannot connect {}", world.name().str());
            return false;
        }
    }

    meshWriter_ = makeWriter("meshWriter", options);
    tubeWriter_ = makeWriter("tubeWriter", options);
    if (meshWriter_.isNull() || tubeWriter_.isNull() ||
        !connectPlugs(plugOf(board_, "meshesOut"), plugOf(meshWriter_, "zelvaneGeo")) ||
        !connectPlugs(plugOf(board_, "tubes"), plugOf(tubeWriter_, "zelvaneGeo"))) {
        error = "cannot create the zelvaneGeoToKova nodes (is the plug-in bound?)";
        return false;
    }
    return true;
}

bool TranslationRig::translateInputs(RigResult& result, std::string& error) {
    if (!ZelvaneBoard::evaluate(board_)) {
        error = "the board's evaluation failed";
        return false;
    }
    result.meshObjects = objectsOf(captured_->inputs, "meshes");
    const auto strands = objectsOf(captured_->inputs, "curves");
    result.strands = hasCurves_ && !strands.empty() ? strands.front() : nullptr;
    return true;
}

bool TranslationRig::writeBack(RigResult& result, std::string& error) {
    if (meshNames_.empty()) {
        // The results take the names of the meshes they come from; the sources give theirs up.
        for (const KObject& shape : meshSources_) {
            KFnDagNode fnShape(shape);
            KFnDependencyNode fnTransform(fnShape.parentCount() > 0 ? fnShape.parent(0) : shape);
            const std::string name = fnTransform.name().str();
            meshNames_.push_back(name);
            fnTransform.setName((name + "Source").c_str());
        }
        meshNames_.push_back("zelMesh");
    }
    result.meshShapes.clear();
    result.tubeShapes.clear();
    return collectShapes(meshWriter_, meshNames_, result.meshShapes, error) &&
           collectShapes(tubeWriter_, {"curveTubes"}, result.tubeShapes, error);
}

// Gives every mesh the writer produces a shape of its own (made on the first run, reused on
// later ones) and evaluates it.
bool TranslationRig::collectShapes(const KObject& writer, const std::vector<std::string>& names,
                                   std::vector<KObject>& shapes, std::string& error) {
    const KPlug meshes = plugOf(writer, "kovaMesh");
    KDataHandle all;
    if (!meshes.getValue(all)) {
        error = fmt::format("{} did not compute", KFnDependencyNode(writer).name().str());
        return false;
    }
    for (unsigned int i = 0; i < meshes.numElements(); ++i) {
        const KPlug element = meshes.elementByPhysicalIndex(i);
        KPlugArray fed;
        element.destinations(fed);
        KObject shape;
        if (fed.length() > 0) {
            shape = fed[0].node();
        } else {
            KFnDagNode fnDag;
            const std::string name =
                i < names.size() ? names[i] : fmt::format("{}{}", names.back(), i + 1);
            const KObject transform = fnDag.create("transform", name.c_str(), KObject::kNullObj);
            shape = fnDag.create("mesh", (name + "Shape").c_str(), transform);
            if (shape.isNull() || !connectPlugs(element, plugOf(shape, "inMesh"))) {
                error = fmt::format("cannot make a shape for {}", element.name().str());
                return false;
            }
        }
        KDataHandle mesh;
        if (!plugOf(shape, "outMesh").getValue(mesh)) {
            error = fmt::format("{} did not evaluate", KFnDependencyNode(shape).name().str());
            return false;
        }
        shapes.push_back(shape);
    }
    return true;
}

} // namespace KovaHost
