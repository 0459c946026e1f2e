#include "plugin/ZelvaneObjectTranslation.h"

#include "plugin/PortAttributes.h"
#include "plugin/PortTypes.h"

#include <zelvane/executor/FindInputs.h>

ZelvaneObjectTranslation::ZelvaneObjectTranslation()
    : TypeTranslationPreview(Orsel::String(ZelvanePlugin::kTranslationTableName)) {}

ZelvaneObjectTranslation::~ZelvaneObjectTranslation() = default;

void ZelvaneObjectTranslation::release() { delete this; }

void ZelvaneObjectTranslation::getSupportedTypeNames(Orsel::Array<Orsel::String>& names) const {
    names.push_back(ZelvanePlugin::kObjectTypeName);
    names.push_back(ZelvanePlugin::kTimeTypeName);
    names.push_back(ZelvanePlugin::kTransformsTypeName);
    names.push_back(ZelvanePlugin::kSceneInfoTypeName);
}

bool ZelvaneObjectTranslation::portAdded(const KObject& node, const Orsel::String& portName,
                                         ZelvaneGraph::Executor::PortDirection direction,
                                         const Orsel::Type& type,
                                         const Orsel::MetadataItem& metadata) const {
    using namespace ZelvanePlugin;
    ZelvaneBoardInputByPath::Options options;
    std::vector<KObject> inputsByPath;
    if (options.parse(ZelvaneBoardInputByPath::getOptions(metadata)) && isOneLevelArray(type)) {
        inputsByPath = ZelvaneBoardInputByPath::findInputs(options);
    }
    switch (classifyPortType(type)) {
    case PortKind::Object:
        return addObjectPortAttribute(node, portName, direction, type, options, inputsByPath);
    case PortKind::Time:
        return addTimePortAttribute(node, portName, direction);
    case PortKind::Transforms:
        return addTransformsPortAttribute(node, portName);
    case PortKind::SceneInfo:
        return addSceneInfoPortAttribute(node, portName);
    case PortKind::Unsupported:
        break;
    }
    return false;
}
