#include <atomic>
#include <kova/detail/Entity.h>

namespace kova::detail {

namespace {

std::uint32_t nextHashCode() {
    static std::atomic<std::uint32_t> counter{0};
    std::uint32_t code = ++counter;
    while (code == 0) { // skipped after wrapping around: 0 stands for no entity
        code = ++counter;
    }
    return code;
}

} // namespace

Entity::Entity(KFn::Type type) : type_(type), hashCode_(nextHashCode()) {}

Entity::~Entity() = default;

} // namespace kova::detail
