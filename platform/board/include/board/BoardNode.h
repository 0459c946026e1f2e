#pragma once

#include <board/BoardExport.h>
#include <board/Graph.h>
#include <board/PortDescription.h>
#include <kova/KObject.h>
#include <kova/KPxNode.h>
#include <kova/KTypeId.h>
#include <mutex>
#include <optional>
#include <vector>

namespace ZelvaneBoard {

// Host node "zelvaneBoard": carries a graph. Its host attributes are created by the bound
// translations as graph ports are added.
//
// Evaluation runs in the node's compute: every input port is translated from its host
// attribute, the graph runs, and every output port's value is written into its host attribute
// through the translation (object ports as a ZelData). It runs when a read-only output
// attribute (an object output) is read after any input changed, and when the static output
// "evaluation" ("ev") is read after the static input "generation" ("gen") changed, which is
// what evaluate() does; "evaluation" then holds the generation evaluated. Different boards may
// be evaluated on different threads at once.
//
// A port whose translation fails is reported as a warning: the graph runs without that input,
// and that output keeps its old value. A translation that throws fails the whole evaluation,
// which the host reports.
class BOARD_API BoardNode : public KPxNode {
public:
    static constexpr const char* kTypeName = "zelvaneBoard";
    static const KTypeId kTypeId; // 0x81100
    static KObject aGeneration;
    static KObject aEvaluation;

    static void* creator();
    static KStatus initialize();

    KStatus compute(const KPlug& plug, KDataBlock& block) override;

    // Edited while no evaluation runs.
    Graph& graph() { return graph_; }

    std::vector<PortDescription> ports() const;
    std::optional<PortDescription> port(const Orsel::String& name) const;

    // Records a port; false when the graph has a port of that name already.
    bool recordPort(const PortDescription& port);

    // The board behind a host node of this type, or null.
    static BoardNode* fromNode(const KObject& node);

private:
    void evaluateGraph(KDataBlock& block);

    mutable std::mutex mutex_;
    std::vector<PortDescription> ports_;
    Graph graph_;
};

// Registers the board node type and the ZelData plug-in data type with the host under the
// given plug-in object, and removes them again.
BOARD_API KStatus registerBoardTypes(const KObject& plugin);
BOARD_API KStatus deregisterBoardTypes(const KObject& plugin);

// Adds a port to the graph of `board` and lets the bound translation that supports the
// port's type create the host attribute for it. Returns whether a host attribute was made:
// false for a duplicate port name, a type no translation supports, or a failing host call or
// translation (a translation that throws is reported through the host's messages).
BOARD_API bool addPort(const KObject& board, const PortDescription& port);

// Evaluates the graph of `board` now (even when nothing changed) and returns whether the
// evaluation ran; the results are then in the output attributes.
BOARD_API KStatus evaluate(const KObject& board);

} // namespace ZelvaneBoard
