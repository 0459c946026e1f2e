#pragma once

#include <array>
#include <cstdint>
#include <cstring>
#include <unordered_map>
#include <vector>

namespace KovaIo {

// A table of distinct N-float values: add() returns the index of a value equal to it bit for
// bit, appending it when new. How split vertex data is welded back into indexed tables.
template <std::size_t N>
class ValueTable {
public:
    int add(const float* value) {
        Key key;
        std::memcpy(key.data(), value, sizeof key);
        const auto [at, added] = index_.emplace(key, static_cast<int>(index_.size()));
        if (added) {
            values_.insert(values_.end(), value, value + N);
        }
        return at->second;
    }
    // N floats per distinct value, in the order they were first added.
    const std::vector<float>& values() const { return values_; }
    std::size_t size() const { return index_.size(); }

private:
    using Key = std::array<std::uint32_t, N>;
    struct Hash {
        std::size_t operator()(const Key& key) const {
            std::size_t h = 1469598103934665603ull;
            for (std::uint32_t word : key) {
                h = (h ^ word) * 1099511628211ull;
            }
            return h;
        }
    };
    std::unordered_map<Key, int, Hash> index_;
    std::vector<float> values_;
};

} // namespace KovaIo
