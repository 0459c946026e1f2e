#include "mesh_in/HostIndexLists.h"

#include "common/ParallelFill.h"

namespace ZelvanePlugin::MeshInput {

void copyIndices(const KIntArray& ids, Orsel::Array<std::uint32_t>& out) {
    const std::size_t count = ids.length();
    out.resizeForOverwrite(count);
    std::uint32_t* index = out.data();
    const int* id = ids.data();
    parallelFill(count, [&](std::size_t begin, std::size_t end) {
        for (std::size_t i = begin; i < end; ++i) {
            index[i] = static_cast<std::uint32_t>(id[i]);
        }
    });
}

void fillMembership(const KIntArray& elements, std::size_t count, Orsel::Array<bool>& membership) {
    membership.clear();
    membership.resize(count, false);
    bool* member = membership.data();
    const int* element = elements.data();
    parallelFill(elements.length(), [&](std::size_t begin, std::size_t end) {
        for (std::size_t i = begin; i < end; ++i) {
            if (element[i] >= 0 && static_cast<std::size_t>(element[i]) < count) {
                member[element[i]] = true;
            }
        }
    });
}

} // namespace ZelvanePlugin::MeshInput
