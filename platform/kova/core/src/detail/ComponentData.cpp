#include <algorithm>
#include <kova/detail/ComponentData.h>

namespace kova::detail {

void ComponentData::add(int element) {
    if (complete) {
        return;
    }
    const auto at = std::lower_bound(elements.begin(), elements.end(), element);
    if (at == elements.end() || *at != element) {
        elements.insert(at, element);
    }
}

void ComponentData::remove(int element) {
    const auto at = std::lower_bound(elements.begin(), elements.end(), element);
    if (at != elements.end() && *at == element) {
        elements.erase(at);
    }
}

bool ComponentData::contains(int element) const {
    return complete ? element >= 0 && element < completeCount
                    : std::binary_search(elements.begin(), elements.end(), element);
}

int ComponentData::count() const {
    return complete ? completeCount : static_cast<int>(elements.size());
}

std::vector<int> ComponentData::allElements() const {
    if (!complete) {
        return elements;
    }
    std::vector<int> all(static_cast<std::size_t>(std::max(completeCount, 0)));
    for (int i = 0; i < completeCount; ++i) {
        all[static_cast<std::size_t>(i)] = i;
    }
    return all;
}

std::shared_ptr<ComponentData> ComponentData::clone() const {
    auto copy = std::make_shared<ComponentData>(apiType());
    copy->elements = elements;
    copy->complete = complete;
    copy->completeCount = completeCount;
    return copy;
}

} // namespace kova::detail
