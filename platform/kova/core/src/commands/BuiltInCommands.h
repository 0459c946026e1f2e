#pragma once

#include "detail/CommandRegistry.h"

// The host's own commands. Each takes its argument words and appends its result words.
namespace kova::commands {

using Args = std::vector<detail::CommandToken>;

// createNode TYPE [-name N] [-parent P]: creates a node (a shape without a parent gets a new
// parent transform) and returns its name.
KStatus createNode(const Args& args, KStringArray& result);
// connectAttr [-force] SOURCE DESTINATION / disconnectAttr SOURCE DESTINATION.
KStatus connectAttr(const Args& args, KStringArray& result);
KStatus disconnectAttr(const Args& args, KStringArray& result);
// setAttr PLUG VALUE... [-type doubleArray|vectorArray|matrix|string].
KStatus setAttr(const Args& args, KStringArray& result);
// getAttr PLUG: the value as words (numbers, a string, 16 matrix values, array data as its
// length followed by its values).
KStatus getAttr(const Args& args, KStringArray& result);
// rename OLD NEW: returns the name the node got.
KStatus rename(const Args& args, KStringArray& result);
// delete NODE...
KStatus deleteNodes(const Args& args, KStringArray& result);
// ls [PATTERN...] [-type TYPE]: the names of matching nodes in scene order.
KStatus ls(const Args& args, KStringArray& result);
// sets -name N [-empty] [MEMBER...]: a new set; sets -edit -forceElement SET MEMBER...: adds
// members, taking them out of other renderable sets; sets -edit -remove SET MEMBER....
KStatus sets(const Args& args, KStringArray& result);

void registerBuiltInCommands(detail::CommandRegistry& registry);

} // namespace kova::commands
