#include <board/BoardNode.h>

#include <board/BoardExecutor.h>

#include <zeldata/ZelData.h>

#include <kova/KFnDependencyNode.h>
#include <kova/KFnPlugin.h>

#include <algorithm>

namespace ZelvaneBoard {

const KTypeId BoardNode::kTypeId(0x81100);

void* BoardNode::creator() { return new BoardNode(); }

KStatus BoardNode::initialize() { return KStatus::kSuccess; }

std::vector<PortSpec> BoardNode::ports() const {
    std::lock_guard lock(mutex_);
    return ports_;
}

std::optional<PortSpec> BoardNode::port(const Orsel::String& name) const {
    std::lock_guard lock(mutex_);
    auto it = std::find_if(ports_.begin(), ports_.end(),
                           [&](const PortSpec& candidate) { return candidate.name == name; });
    if (it == ports_.end()) {
        return std::nullopt;
    }
    return *it;
}

bool BoardNode::recordPort(const PortSpec& port) {
    std::lock_guard lock(mutex_);
    const bool taken = std::any_of(ports_.begin(), ports_.end(), [&](const PortSpec& existing) {
        return existing.name == port.name;
    });
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

bool addPort(const KObject& board, const PortSpec& port) {
    BoardNode* node = BoardNode::fromNode(board);
    if (!node || !node->recordPort(port)) {
        return false;
    }
    ZelvaneGraph::Executor::TypeTranslation* translation = BoardExecutor::translationFor(port.type);
    if (!translation) {
        return false;
    }
    return translation->portAdded(board, port.name, port.direction, port.type, port.metadata);
}

} // namespace ZelvaneBoard
