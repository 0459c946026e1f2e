#include "commands/BuiltInCommands.h"
#include "detail/CommandArgs.h"
#include "detail/Connect.h"
#include "detail/PlugParser.h"

namespace kova::commands {

namespace {

KStatus twoPlugs(const detail::CommandArgs& parsed, KPlug& source, KPlug& destination) {
    if (parsed.positional().size() != 2) {
        return KStatus(KStatus::kInvalidParameter, "expected a source and a destination plug");
    }
    KStatus status;
    source = detail::parsePlug(parsed.positional()[0], status);
    if (status) {
        destination = detail::parsePlug(parsed.positional()[1], status);
    }
    return status;
}

} // namespace

KStatus connectAttr(const Args& args, KStringArray&) {
    detail::CommandArgs parsed;
    KPlug source, destination;
    KStatus status = parsed.parse(args, {{"force", "f", 0}});
    if (status) {
        status = twoPlugs(parsed, source, destination);
    }
    return status ? detail::connectPlugs(source, destination, parsed.has("force")) : status;
}

KStatus disconnectAttr(const Args& args, KStringArray&) {
    detail::CommandArgs parsed;
    KPlug source, destination;
    KStatus status = parsed.parse(args, {});
    if (status) {
        status = twoPlugs(parsed, source, destination);
    }
    return status ? detail::disconnectPlugs(source, destination) : status;
}

} // namespace kova::commands
