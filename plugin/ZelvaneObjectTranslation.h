#pragma once

#include <zelvane/executor/TypeTranslationPreview.h>

namespace ZelvanePlugin {
inline constexpr const char* kTranslationTableName = "Zelvane Object Translation Table";
} // namespace ZelvanePlugin

// The object through which the board executor drives this plug-in. It keeps no state of
// its own: everything it shares lives in process-wide constants built at load time.
class ZelvaneObjectTranslation final : public ZelvaneGraph::Executor::TypeTranslationPreview {
public:
    ZelvaneObjectTranslation();
    ~ZelvaneObjectTranslation() override;

    void release() override;

    // Appends "Object", "Simulation::Time", "Geometry::Transform::GraphTransforms" and
    // "File::Project::SceneInfo", in that order; the list is never cleared.
    void getSupportedTypeNames(Orsel::Array<Orsel::String>& names) const override;

    // Reads the host attribute of an input port into its graph value before an evaluation.
    bool translateInputValue(const Orsel::Type& portType, Orsel::Value& destination,
                             const ZelvaneGraph::Executor::HostPortContext& context) const override;

    // Writes a time, scene-info or object result back into its host attribute
    // and marks the plug clean.
    bool translateOutputData(const Orsel::Value& result,
                             const ZelvaneGraph::Executor::HostPortContext& context) const override;

    // Puts an object result into a ZelData on the host output attribute, replacing what the
    // previous evaluation left there, and marks the plug clean.
    bool
    translateOutputValue(const Orsel::Value& value,
                         const ZelvaneGraph::Executor::HostPortContext& context) const override;

    bool portAdded(const KObject& node, const Orsel::String& portName,
                   ZelvaneGraph::Executor::PortDirection direction, const Orsel::Type& type,
                   const Orsel::MetadataItem& metadata) const override;

    bool registerHostPlugins(const KObject& plugin) override;
    bool deregisterHostPlugins(const KObject& plugin) override;
};
