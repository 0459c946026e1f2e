#pragma once

#include <algorithm>
#include <vector>

namespace KovaIo {

// The entries of a global table that a list of indices uses, in table order, and the local
// index of each: how one piece of a file gets its own compact tables. Negative indices (no
// value) are ignored.
class IndexCompaction {
public:
    explicit IndexCompaction(const std::vector<int>& used) {
        for (int index : used) {
            if (index >= 0) {
                globals_.push_back(index);
            }
        }
        std::sort(globals_.begin(), globals_.end());
        globals_.erase(std::unique(globals_.begin(), globals_.end()), globals_.end());
    }

    // The used global indices, ascending.
    const std::vector<int>& globals() const { return globals_; }
    // The local index of a used global index.
    int local(int global) const {
        return static_cast<int>(std::lower_bound(globals_.begin(), globals_.end(), global) -
                                globals_.begin());
    }

private:
    std::vector<int> globals_;
};

} // namespace KovaIo
