#include "plugin/GeometryDispatch.h"
#include "plugin/PortTypes.h"
#include "plugin/SourceGuard.h"
#include "plugin/TimeValues.h"
#include "plugin/ZelvaneObjectTranslation.h"

#include <kova/KArrayDataHandle.h>
#include <kova/KDataBlock.h>
#include <kova/KDataHandle.h>
#include <kova/KPlug.h>
#include <zelvane/geometry/GraphTransforms.h>

using ZelvaneGraph::Executor::HostPortContext;

namespace {

// Options of ports that have no metadata: every converter's defaults.
const Orsel::MetadataItem gNoOptions;

Orsel::Value objectValue(const Orsel::Type& portType, Orsel::MutablePtr<Zelvane::Object> object,
                         bool asArray) {
    if (!asArray) {
        return Orsel::Value::fromClass(portType, std::move(object));
    }
    auto objects = Orsel::make<Orsel::Array<Orsel::Ptr<Zelvane::Object>>>();
    objects->push_back(Orsel::Ptr<Zelvane::Object>(std::move(object)));
    return Orsel::Value::fromOpaqueArray(portType, std::move(objects));
}

// The object port's value: its sources are read under the source guard, then converted.
void translateObjects(const Orsel::Type& portType, Orsel::Value& destination,
                      const HostPortContext& context) {
    const KPlug& plug = *context.plug;
    const Orsel::MetadataItem& options = context.options ? *context.options : gNoOptions;
    const bool oneLevelArray = ZelvanePlugin::isOneLevelArray(portType);
    ZelvanePlugin::SourceGuard::Keys sources = ZelvanePlugin::SourceGuard::sourcesOf(plug);

    if (!plug.isArray()) {
        KDataHandle handle;
        {
            ZelvanePlugin::SourceGuard guard(std::move(sources));
            handle = context.dataBlock->inputValue(plug);
        }
        if (auto object = kovaGeoToZelvane(plug, handle, options)) {
            destination = objectValue(portType, std::move(object), oneLevelArray);
        }
        return;
    }
    KArrayDataHandle handle;
    {
        ZelvanePlugin::SourceGuard guard(std::move(sources));
        handle = context.dataBlock->inputArrayValue(plug);
    }
    if (oneLevelArray) {
        if (auto objects = kovaGeoToZelvane(plug, handle, options)) {
            destination = Orsel::Value::fromOpaqueArray(portType, std::move(objects));
        }
    } else if (auto merged = kovaGeoToZelvaneMerged(plug, handle, options)) {
        destination = Orsel::Value::fromClass(portType, std::move(merged));
    }
}

Zelvane::Geometry::Transform::GraphTransforms transformsOf(const KDataHandle& compound) {
    const KFloatMatrix matrix = compound.child(0).asFloatMatrix();
    Zelvane::Geometry::Transform::GraphTransforms transforms{};
    for (unsigned int i = 0; i < 16; ++i) {
        transforms.matrix[i] = matrix(i / 4, i % 4);
    }
    return transforms;
}

} // namespace

bool ZelvaneObjectTranslation::translateInputValue(const Orsel::Type& portType,
                                                   Orsel::Value& destination,
                                                   const HostPortContext& context) const {
    using namespace ZelvanePlugin;
    const PortKind kind = classifyPortType(portType);
    if (kind == PortKind::Unsupported || !context.plug) {
        return false;
    }
    // An executor that produces an object port's value itself is handed the destination; no
    // host data is read.
    if (kind == PortKind::Object && context.ownReader) {
        context.ownReader(destination);
        return true;
    }
    if (!context.dataBlock) {
        return false;
    }
    if (kind == PortKind::Object) {
        translateObjects(portType, destination, context);
        return true;
    }
    // Time, transforms and scene info are the port's own value; when it can't be read the
    // graph gets no value rather than a made-up one.
    KStatus status;
    const KDataHandle value = context.dataBlock->inputValue(*context.plug, &status);
    if (!status) {
        return false;
    }
    switch (kind) {
    case PortKind::Time:
        destination = Orsel::Value::make(portType, timeRecord(value.asTime()));
        break;
    case PortKind::Transforms:
        destination = Orsel::Value::make(portType, transformsOf(value));
        break;
    case PortKind::SceneInfo:
        destination = Orsel::Value::make(portType, readSceneInfo(value));
        break;
    case PortKind::Object:
    case PortKind::Unsupported:
        break;
    }
    return true;
}
