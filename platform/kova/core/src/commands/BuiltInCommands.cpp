#include "commands/BuiltInCommands.h"

namespace kova::commands {

void registerBuiltInCommands(detail::CommandRegistry& registry) {
    registry.add("createNode", &createNode);
    registry.add("connectAttr", &connectAttr);
    registry.add("disconnectAttr", &disconnectAttr);
    registry.add("setAttr", &setAttr);
    registry.add("getAttr", &getAttr);
    registry.add("rename", &rename);
    registry.add("delete", &deleteNodes);
    registry.add("ls", &ls);
    registry.add("sets", &sets);
}

} // namespace kova::commands
