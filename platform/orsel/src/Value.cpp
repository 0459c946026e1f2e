#include <orsel/Value.h>

namespace Orsel {

Value::Value() noexcept = default;

Value Value::fromClass(Type type, Ptr<Class> object) {
    Value result;
    result.type_ = std::move(type);
    result.payload_ = std::move(object);
    return result;
}

Value Value::fromOpaqueArray(Type type, Ptr<Array<Ptr<Class>>> objects) {
    Value result;
    result.type_ = std::move(type);
    result.payload_ = std::move(objects);
    return result;
}

Ptr<Class> Value::getOrselClass() const noexcept {
    const auto* object = std::get_if<Ptr<Class>>(&payload_);
    return object ? *object : Ptr<Class>();
}

Ptr<Array<Ptr<Class>>> Value::getOpaqueArray() const noexcept {
    const auto* objects = std::get_if<Ptr<Array<Ptr<Class>>>>(&payload_);
    return objects ? *objects : Ptr<Array<Ptr<Class>>>();
}

} // namespace Orsel
