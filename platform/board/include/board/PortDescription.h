#pragma once

#include <orsel/MetadataItem.h>
#include <orsel/String.h>
#include <orsel/Type.h>
#include <zelvane/executor/PortDirection.h>

namespace ZelvaneBoard {

// One port of the graph a board carries.
struct PortDescription {
    Orsel::String name;
    ZelvaneGraph::Executor::PortDirection direction = ZelvaneGraph::Executor::PortDirection::Input;
    Orsel::Type type;
    Orsel::MetadataItem metadata;
};

} // namespace ZelvaneBoard
