#pragma once

#include <kova/KExport.h>
#include <kova/detail/ComponentData.h>
#include <memory>
#include <string>
#include <vector>

namespace kova::detail {

// Named groups of components on a piece of geometry (mesh or curve data). A tag's category
// follows from the kind of its contents: 2 for vertices and CVs, 3 for edges, 4 for faces,
// 0 while it has no contents. Tags keep their order of creation.
class KOVA_API ComponentTags {
public:
    struct Tag {
        std::string name;
        std::shared_ptr<ComponentData> contents; // null until contents are set
    };

    // The category of a component kind (0 for kinds that tags do not hold).
    static int categoryOf(KFn::Type componentType);

    const std::vector<Tag>& tags() const { return tags_; }
    const Tag* find(const std::string& name) const;
    // False when the name is empty or taken.
    bool add(const std::string& name);
    bool remove(const std::string& name);
    // Stores a copy of `contents`; false when there is no such tag.
    bool setContents(const std::string& name, const ComponentData& contents);
    void clear() { tags_.clear(); }
    // A copy that shares no contents with this one.
    ComponentTags deepCopy() const;

private:
    std::vector<Tag> tags_;
};

} // namespace kova::detail
