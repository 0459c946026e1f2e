#include "curves_in/CurveErrorReport.h"

#include "plugin/StringResources.h"

#include <kova/KFnAttribute.h>
#include <kova/KFnDependencyNode.h>
#include <kova/KGlobal.h>
#include <kova/KPlugArray.h>
#include <kova/KStringResource.h>

namespace ZelvanePlugin::CurvesInput {

namespace {

KPlug plugAt(const std::vector<KPlug>& plugs, std::uint64_t index) {
    return index < plugs.size() ? plugs[index] : KPlug();
}

// The first plug feeding `input`, or a null plug.
KPlug firstSource(const KPlug& input) {
    KPlugArray sources;
    if (input.isNull() || !input.connectedTo(sources, true, false) || sources.length() == 0) {
        return KPlug();
    }
    return sources[0];
}

KString nodeName(const KPlug& plug) {
    return plug.isNull() ? KString() : KFnDependencyNode(plug.node()).name();
}

KString attributeName(const KPlug& plug) {
    return plug.isNull() ? KString() : KFnAttribute(plug.attribute()).name();
}

KString resource(const KStringResourceId& id) {
    KStatus status; // an unregistered string falls back to its default text
    return KStringResource::getString(id, status);
}

} // namespace

void reportCurveFailure(const std::vector<KPlug>& plugs, bool plugsAreSources,
                        const KPlug& inputPlug, std::uint64_t curve,
                        const KStringResourceId& reason) {
    KPlug curvePlug;
    KPlug input;
    if (plugsAreSources) {
        curvePlug = plugAt(plugs, curve);
        input = inputPlug;
    } else {
        input = plugAt(plugs, curve);
        curvePlug = firstSource(input);
    }
    KString message;
    message.format(resource(Strings::kCouldNotTranslateCurve), nodeName(curvePlug),
                   attributeName(input), nodeName(input));
    message += resource(reason);
    KGlobal::displayError(message);
}

} // namespace ZelvanePlugin::CurvesInput
