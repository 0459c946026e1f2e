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

    bool portAdded(const KObject& node, const Orsel::String& portName,
                   ZelvaneGraph::Executor::PortDirection direction, const Orsel::Type& type,
                   const Orsel::MetadataItem& metadata) const override;

    bool registerHostPlugins(const KObject& plugin) override;
    bool deregisterHostPlugins(const KObject& plugin) override;
};
