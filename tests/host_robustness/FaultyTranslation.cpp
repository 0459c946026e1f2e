// A translation library with one fault, chosen by its build (FAULT names it; "None" for
// none): one of the operations that the board executor or the host calls throws, or
// returns failure. Everything else works like a small library: it handles "Object" ports, gives
// each a generic host attribute that takes meshes, translates an input into an empty object, and
// registers the host node "faultyNode" (its "input" times two on "output").

#include <kova/KDGModifier.h>
#include <kova/KDataBlock.h>
#include <kova/KDataHandle.h>
#include <kova/KFnGenericAttribute.h>
#include <kova/KFnNumericAttribute.h>
#include <kova/KFnPlugin.h>
#include <kova/KPluginStamp.h>
#include <kova/KPxNode.h>
#include <orsel/Value.h>
#include <stdexcept>
#include <string>
#include <string_view>
#include <zelvane/Object.h>
#include <zelvane/executor/TypeTranslation.h>

KOVA_PLUGIN_STAMP();

namespace {

using ZelvaneGraph::Executor::HostPortContext;
using ZelvaneGraph::Executor::PortDirection;

// The fault of this build, by name.
constexpr std::string_view kFault = FAULT;

constexpr unsigned int kNodeTypeId = 0x7E2001;

void throwIf(std::string_view fault, const char* operation) {
    if (kFault == fault) {
        throw std::runtime_error(std::string(operation) + " fails on purpose");
    }
}

class FaultyNode : public KPxNode {
public:
    static inline KObject input, output;

    static void* create() { return new FaultyNode; }
    static KStatus initialize() {
        KFnNumericAttribute fnNumeric;
        input = fnNumeric.create("input", "in", KFnNumericData::kDouble, 1.0);
        output = fnNumeric.create("output", "out", KFnNumericData::kDouble, 0.0);
        fnNumeric.setWritable(false);
        addAttribute(input);
        addAttribute(output);
        return attributeAffects(input, output);
    }
    KStatus compute(const KPlug& plug, KDataBlock& block) override {
        if (plug != output) {
            return KStatus::kUnknownParameter;
        }
        throwIf("ComputeThrows", "compute");
        if (kFault == "ComputeFails") {
            return KStatus(KStatus::kFailure, "compute fails on purpose");
        }
        block.outputValue(output).setDouble(2.0 * block.inputValue(input).asDouble());
        return KStatus::kSuccess;
    }
};

class FaultyTranslation : public ZelvaneGraph::Executor::TypeTranslation {
public:
    void release() override {
        delete this;
        throwIf("ReleaseThrows", "release");
    }

    void getSupportedTypeNames(Orsel::Array<Orsel::String>& names) const override {
        throwIf("SupportedTypesThrow", "getSupportedTypeNames");
        names.push_back(Zelvane::objectType().fullyQualifiedName());
    }

    bool translateInputValue(const Orsel::Type& portType, Orsel::Value& destination,
                             const HostPortContext&) const override {
        throwIf("InputThrows", "translateInputValue");
        if (kFault == "InputFails") {
            return false;
        }
        destination = Orsel::Value::fromClass(portType, Zelvane::createObject());
        return true;
    }

    bool translateOutputValue(const Orsel::Value&, const HostPortContext&) const override {
        throwIf("OutputThrows", "translateOutputValue");
        return kFault != "OutputFails";
    }

    bool portAdded(const KObject& node, const Orsel::String& portName, PortDirection direction,
                   const Orsel::Type&, const Orsel::MetadataItem&) const override {
        throwIf("PortAddedThrows", "portAdded");
        const std::string name{std::string_view(portName)};
        KFnGenericAttribute fnGeneric;
        const KObject attribute = fnGeneric.create(name.c_str(), name.c_str());
        fnGeneric.addDataAccept(KFnData::kMesh);
        fnGeneric.setWritable(direction == PortDirection::Input);
        KDGModifier modifier;
        modifier.addAttribute(node, attribute);
        return static_cast<bool>(modifier.doIt());
    }

    bool registerHostPlugins(const KObject& plugin) override {
        throwIf("RegisterThrows", "registerHostPlugins");
        return static_cast<bool>(KFnPlugin(plugin, "Faults", "1.0")
                                     .registerNode("faultyNode", KTypeId(kNodeTypeId),
                                                   &FaultyNode::create, &FaultyNode::initialize));
    }

    bool deregisterHostPlugins(const KObject& plugin) override {
        const bool done = static_cast<bool>(KFnPlugin(plugin).deregisterNode(KTypeId(kNodeTypeId)));
        throwIf("DeregisterThrows", "deregisterHostPlugins");
        return done;
    }
};

} // namespace

extern "C" __attribute__((visibility("default"))) ZelvaneGraph::Executor::TypeTranslation*
createZelvaneTypeTranslation() {
    throwIf("FactoryThrows", "createZelvaneTypeTranslation");
    return new FaultyTranslation;
}
