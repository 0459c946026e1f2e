#include "mesh_out/MeshObjectValidation.h"

#include <kova/KGlobal.h>
#include <kova/KString.h>

namespace ZelvanePlugin {

std::string describeShortArray(std::string_view name, std::string_view elementType,
                               const std::size_t* size, std::size_t count,
                               std::string_view elements) {
    if (size == nullptr) {
        return "\"" + std::string(name) + "\" is missing or not an array of " +
               std::string(elementType);
    }
    return "\"" + std::string(name) + "\" holds " + std::to_string(*size) + " " +
           std::string(elementType) + " values for " + std::to_string(count) + " " +
           std::string(elements);
}

void MeshObjectValidation::fail(const MeshFaultPlace& place, std::string what) {
    std::lock_guard lock(mutex_);
    if (!failed_.load(std::memory_order_relaxed) || place < place_) {
        place_ = place;
        what_ = std::move(what);
        failed_.store(true, std::memory_order_relaxed);
    }
}

void MeshObjectValidation::report() const {
    std::lock_guard lock(mutex_);
    KGlobal::displayError(KString("Graph mesh object not converted: " + what_));
}

} // namespace ZelvanePlugin
