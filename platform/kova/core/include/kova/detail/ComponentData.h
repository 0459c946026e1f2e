#pragma once

#include <kova/KExport.h>
#include <kova/detail/Entity.h>
#include <memory>
#include <vector>

namespace kova::detail {

// A set of element indices of one component kind (mesh vertices, faces, curve CVs ...).
// A complete component stands for all `completeCount` elements without listing them.
class KOVA_API ComponentData : public Entity {
public:
    explicit ComponentData(KFn::Type componentType) : Entity(componentType) {}

    // Sorted, without duplicates; empty while complete.
    std::vector<int> elements;
    bool complete = false;
    int completeCount = 0;

    void add(int element);
    void remove(int element);
    bool contains(int element) const;
    int count() const;
    // The listed elements, or 0 .. completeCount-1 when complete.
    std::vector<int> allElements() const;
    std::shared_ptr<ComponentData> clone() const;
};

} // namespace kova::detail
