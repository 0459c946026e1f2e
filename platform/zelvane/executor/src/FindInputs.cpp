#include <algorithm>
#include <kova/KSelectionList.h>
#include <zelvane/executor/FindInputs.h>

namespace ZelvaneBoardInputByPath {

std::vector<KObject> findInputs(const Options& options) {
    std::vector<KObject> found;
    for (const Orsel::String& path : options.paths) {
        KSelectionList matches;
        if (!matches.add(KString(path.c_str()))) {
            continue;
        }
        for (unsigned int i = 0; i < matches.length(); ++i) {
            KObject node;
            if (matches.getDependNode(i, node) &&
                std::find(found.begin(), found.end(), node) == found.end()) {
                found.push_back(node);
            }
        }
    }
    return found;
}

} // namespace ZelvaneBoardInputByPath
