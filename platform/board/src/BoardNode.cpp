#include <algorithm>
#include <board/BoardExecutor.h>
#include <board/BoardNode.h>
#include <kova/KDataBlock.h>
#include <kova/KDataHandle.h>
#include <kova/KFnAttribute.h>
#include <kova/KFnDependencyNode.h>
#include <kova/KFnNumericAttribute.h>
#include <kova/KFnPlugin.h>
#include <kova/KGlobal.h>
#include <kova/KPlug.h>
#include <kova/detail/Guarded.h>
#include <zeldata/ZelData.h>
#include <zelvane/Object.h>

namespace ZelvaneBoard {

const KTypeId BoardNode::kTypeId(0x81100);
KObject BoardNode::aGeneration;
KObject BoardNode::aEvaluation;

namespace {

bool isObjectType(const Orsel::Type& type) {
    return type == Zelvane::objectType() ||
           (type.isArray() && type.elementType() == Zelvane::objectType());
}

KString hostName(const Orsel::String& name) {
    return KString(std::string_view(name));
}

} // namespace

void* BoardNode::creator() {
    return new BoardNode();
}

KStatus BoardNode::initialize() {
    KFnNumericAttribute fnNumeric;
    aGeneration = fnNumeric.create("generation", "gen", KFnNumericData::kInt, 0.0);
    aEvaluation = fnNumeric.create("evaluation", "ev", KFnNumericData::kInt, 0.0);
    fnNumeric.setWritable(false);
    for (const KObject& attribute : {aGeneration, aEvaluation}) {
        if (KStatus status = addAttribute(attribute); !status) {
            return status;
        }
    }
    if (KStatus status = attributeAffects(aGeneration, aEvaluation); !status) {
        return status;
    }
    // Output attributes are added with the ports; reading a stale one evaluates the graph.
    return computeDynamicOutputs();
}

KStatus BoardNode::compute(const KPlug& plug, KDataBlock& block) {
    if (plug != aEvaluation) {
        const auto output = port(Orsel::String(KFnAttribute(plug.attribute()).name().view()));
        if (!output || output->direction != ZelvaneGraph::Executor::PortDirection::Output) {
            return KStatus::kUnknownParameter;
        }
        evaluateGraph(block);
        return KStatus::kSuccess;
    }
    evaluateGraph(block);
    KDataHandle evaluated = block.outputValue(aEvaluation);
    evaluated.setInt(block.inputValue(aGeneration).asInt());
    evaluated.setClean();
    return KStatus::kSuccess;
}

void BoardNode::evaluateGraph(KDataBlock& block) {
    using ZelvaneGraph::Executor::HostPortContext;
    using ZelvaneGraph::Executor::PortDirection;
    KFnDependencyNode fnNode(thisKObject());
    const std::vector<PortDescription> descriptions = ports();

    PortValues inputs;
    for (const PortDescription& port : descriptions) {
        auto* translation = BoardExecutor::translationFor(port.type);
        KPlug hostPlug = fnNode.findPlug(hostName(port.name), false);
        if (port.direction != PortDirection::Input || !translation || hostPlug.isNull()) {
            continue;
        }
        Orsel::Value value;
        const HostPortContext context{
            &hostPlug, &block, port.metadata.empty() ? nullptr : &port.metadata, &value, nullptr};
        if (!translation->translateInputValue(port.type, value, context)) {
            // The translation that lists the port's type has failed it: the graph runs
            // without this input.
            KGlobal::displayWarning(KString("Board '" + name().str() + "': input '" +
                                            std::string(std::string_view(port.name)) +
                                            "' could not be translated"));
        } else if (!value.empty()) {
            inputs.emplace(std::string(std::string_view(port.name)), std::move(value));
        }
    }

    std::string error;
    PortValues outputs = graph_.run(inputs, &error);
    if (!error.empty()) {
        KGlobal::displayError(KString("Board '" + name().str() + "': " + error));
    }

    for (const PortDescription& port : descriptions) {
        auto* translation = BoardExecutor::translationFor(port.type);
        KPlug hostPlug = fnNode.findPlug(hostName(port.name), false);
        if (port.direction != PortDirection::Output || !translation || hostPlug.isNull()) {
            continue;
        }
        auto result = outputs.find(std::string(std::string_view(port.name)));
        const bool objects = isObjectType(port.type);
        if (result == outputs.end() && !objects) {
            continue; // nothing to write back
        }
        // An object output the graph left unset is written as nothing: no objects.
        Orsel::Value value = result != outputs.end() ? result->second
                             : port.type.isArray()
                                 ? Orsel::Value::fromOpaqueArray(port.type, nullptr)
                                 : Orsel::Value::fromClass(port.type, Orsel::Ptr<Orsel::Class>());
        const HostPortContext context{
            &hostPlug, &block, port.metadata.empty() ? nullptr : &port.metadata, &value, nullptr};
        const bool written = objects ? translation->translateOutputValue(value, context)
                                     : translation->translateOutputData(value, context);
        if (!written) {
            KGlobal::displayWarning(KString("Board '" + name().str() + "': output '" +
                                            std::string(std::string_view(port.name)) +
                                            "' could not be written back"));
        }
    }
}

std::vector<PortDescription> BoardNode::ports() const {
    std::lock_guard lock(mutex_);
    return ports_;
}

std::optional<PortDescription> BoardNode::port(const Orsel::String& name) const {
    std::lock_guard lock(mutex_);
    auto it = std::find_if(ports_.begin(), ports_.end(), [&](const PortDescription& candidate) {
        return candidate.name == name;
    });
    if (it == ports_.end()) {
        return std::nullopt;
    }
    return *it;
}

bool BoardNode::recordPort(const PortDescription& port) {
    std::lock_guard lock(mutex_);
    const bool taken =
        std::any_of(ports_.begin(), ports_.end(),
                    [&](const PortDescription& existing) { return existing.name == port.name; });
    if (taken) {
        return false;
    }
    ports_.push_back(port);
    return true;
}

BoardNode* BoardNode::fromNode(const KObject& node) {
    return dynamic_cast<BoardNode*>(KFnDependencyNode(node).userNode());
}

KStatus registerBoardTypes(const KObject& plugin) {
    KFnPlugin fnPlugin(plugin, "Norvatek", "1.0", "Any");
    KStatus status = fnPlugin.registerData(ZelData::kTypeName, ZelData::id, &ZelData::creator);
    if (!status) {
        return status;
    }
    status = fnPlugin.registerNode(BoardNode::kTypeName, BoardNode::kTypeId, &BoardNode::creator,
                                   &BoardNode::initialize, KPxNode::kDependNode);
    if (!status) {
        fnPlugin.deregisterData(ZelData::id);
    }
    return status;
}

KStatus deregisterBoardTypes(const KObject& plugin) {
    KFnPlugin fnPlugin(plugin);
    const KStatus nodeStatus = fnPlugin.deregisterNode(BoardNode::kTypeId);
    const KStatus dataStatus = fnPlugin.deregisterData(ZelData::id);
    return nodeStatus ? dataStatus : nodeStatus;
}

bool addPort(const KObject& board, const PortDescription& port) {
    BoardNode* node = BoardNode::fromNode(board);
    if (!node || !node->recordPort(port)) {
        return false;
    }
    ZelvaneGraph::Executor::TypeTranslation* translation = BoardExecutor::translationFor(port.type);
    if (!translation) {
        return false;
    }
    bool added = false;
    kova::detail::runGuarded(
        [&] {
            added =
                translation->portAdded(board, port.name, port.direction, port.type, port.metadata);
        },
        [&] {
            return KString("The translation adding port '" +
                           std::string(std::string_view(port.name)) + "' to board '" +
                           node->name().str() + "'");
        });
    return added;
}

KStatus evaluate(const KObject& board) {
    if (!BoardNode::fromNode(board)) {
        return KStatus(KStatus::kInvalidParameter, "not a board node");
    }
    KPlug generation(board, BoardNode::aGeneration);
    if (KStatus status = generation.setInt(generation.asInt() + 1); !status) {
        return status;
    }
    KStatus status;
    KPlug(board, BoardNode::aEvaluation).asInt(&status);
    return status;
}

} // namespace ZelvaneBoard
