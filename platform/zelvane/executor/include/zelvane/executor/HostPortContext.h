#pragma once

#include <functional>

class KPlug;
class KDataBlock;

namespace Orsel {
class MetadataItem;
class Value;
} // namespace Orsel

namespace ZelvaneGraph::Executor {

// What the executor hands a translation for one port during one evaluation: the host plug
// that represents the port, the data block of the node being evaluated, the port's options
// (null when the port has none) and the graph-side value to fill or to write back.
struct HostPortContext {
    KPlug* plug = nullptr;
    KDataBlock* dataBlock = nullptr;
    const Orsel::MetadataItem* options = nullptr;
    Orsel::Value* destination = nullptr;
    // Set when the executor itself knows how to produce this port's value (for example a
    // value cached from an earlier evaluation); a translation then calls it with the
    // destination instead of reading host data.
    std::function<void(Orsel::Value& destination)> ownReader;
};

} // namespace ZelvaneGraph::Executor
