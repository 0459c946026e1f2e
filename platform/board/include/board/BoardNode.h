#pragma once

#include <board/BoardExport.h>
#include <board/PortSpec.h>

#include <kova/KObject.h>
#include <kova/KPxNode.h>
#include <kova/KTypeId.h>

#include <mutex>
#include <optional>
#include <vector>

namespace ZelvaneBoard {

// Host node "zelvaneBoard": carries a graph. Its host attributes are created by the bound
// translations as graph ports are added.
class BOARD_API BoardNode : public KPxNode {
public:
    static constexpr const char* kTypeName = "zelvaneBoard";
    static const KTypeId kTypeId; // 0x81100

    static void* creator();
    static KStatus initialize();

    std::vector<PortSpec> ports() const;
    std::optional<PortSpec> port(const Orsel::String& name) const;

    // Records a port; false when the graph has a port of that name already.
    bool recordPort(const PortSpec& port);

    // The board behind a host node of this type, or null.
    static BoardNode* fromNode(const KObject& node);

private:
    mutable std::mutex mutex_;
    std::vector<PortSpec> ports_;
};

// Registers the board node type and the ZelData plug-in data type with the host under the
// given plug-in object, and removes them again.
BOARD_API KStatus registerBoardTypes(const KObject& plugin);
BOARD_API KStatus deregisterBoardTypes(const KObject& plugin);

// Adds a port to the graph of `board` and lets the bound translation that supports the
// port's type create the host attribute for it. Returns whether a host attribute was made:
// false for a duplicate port name, a type no translation supports, or a failing host call.
BOARD_API bool addPort(const KObject& board, const PortSpec& port);

} // namespace ZelvaneBoard
