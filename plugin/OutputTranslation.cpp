#include "plugin/PortTypes.h"
#include "plugin/TimeValues.h"
#include "plugin/ZelvaneObjectTranslation.h"

#include <kova/KDataBlock.h>
#include <kova/KDataHandle.h>
#include <kova/KFnPluginData.h>
#include <kova/KPlug.h>
#include <zeldata/ZelData.h>
using ZelvaneGraph::Executor::HostPortContext;

namespace {

ZelData* zelDataOf(const KDataHandle& handle) {
    if (handle.data().isNull() || handle.typeId() != ZelData::id) {
        return nullptr;
    }
    return dynamic_cast<ZelData*>(handle.asPluginData());
}

// Appends one object to the output's ZelData (made when the handle holds none) and stores the
// data on the handle again; false when the data can't be made or stored.
bool addObject(KDataHandle& handle, Orsel::Ptr<Zelvane::Object> object) {
    KObject data = handle.data();
    ZelData* zelData = zelDataOf(handle);
    if (!zelData) {
        KFnPluginData fnData;
        data = fnData.create(ZelData::id);
        zelData = dynamic_cast<ZelData*>(fnData.data());
        if (!zelData) {
            return false;
        }
    }
    if (object) {
        zelData->addZelvaneObject(std::move(object));
    }
    return static_cast<bool>(handle.set(data));
}

void writeObjects(const Orsel::Value& value, KDataHandle& handle) {
    if (ZelData* previous = zelDataOf(handle)) {
        previous->clear(); // results of an earlier evaluation never survive
    }
    const Orsel::Type& type = value.type();
    if (!ZelvanePlugin::isObjectOrObjectArray(type)) {
        return;
    }
    if (!ZelvanePlugin::isOneLevelArray(type)) {
        Orsel::Ptr<Zelvane::Object> object = value.getOrselClass<Zelvane::Object>();
        addObject(handle, object ? std::move(object)
                                 : Orsel::Ptr<Zelvane::Object>(Zelvane::createObject()));
        return;
    }
    if (const Orsel::Ptr<Orsel::Array<Orsel::Ptr<Orsel::Class>>> objects = value.getOpaqueArray()) {
        for (const Orsel::Ptr<Orsel::Class>& entry : *objects) {
            auto object = Orsel::dynamicPtrCast<Zelvane::Object>(entry);
            if (!object) {
                continue; // null entries stand for absent objects
            }
            if (!addObject(handle, std::move(object))) {
                return;
            }
        }
    }
    // An empty array, or one of absent objects only: readers downstream still find a ZelData.
    if (!zelDataOf(handle)) {
        addObject(handle, nullptr);
    }
}

void writeTime(const Zelvane::Simulation::Time& result, KDataHandle& handle) {
    KTime changed;
    if (ZelvanePlugin::changedHostTime(result, handle.asTime(), changed)) {
        handle.setTime(changed);
    }
}

} // namespace

bool ZelvaneObjectTranslation::translateOutputValue(const Orsel::Value& value,
                                                    const HostPortContext& context) const {
    if (!context.plug || !context.dataBlock) {
        return false;
    }
    KDataHandle handle = context.dataBlock->outputValue(*context.plug);
    writeObjects(value, handle);
    context.dataBlock->setClean(*context.plug);
    return true;
}

bool ZelvaneObjectTranslation::translateOutputData(const Orsel::Value& result,
                                                   const HostPortContext& context) const {
    using namespace ZelvanePlugin;
    if (!context.plug || !context.dataBlock) {
        return false;
    }
    KDataHandle handle = context.dataBlock->outputValue(*context.plug);
    switch (classifyPortType(result.type())) {
    case PortKind::Object:
        writeObjects(result, handle);
        break;
    case PortKind::Time:
        if (const auto* time = result.get<Zelvane::Simulation::Time>()) {
            writeTime(*time, handle);
        }
        break;
    case PortKind::Transforms: // a world transform is the host's to give, never written back
        break;
    case PortKind::SceneInfo:
        if (const auto* info = result.get<Zelvane::File::Project::SceneInfo>()) {
            if (context.plug->isCompound()) {
                writeSceneInfo(*info, handle);
            }
        }
        break;
    case PortKind::Unsupported:
        return false;
    }
    context.dataBlock->setClean(*context.plug);
    return true;
}
