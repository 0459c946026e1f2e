#include <kova/KObjectHandle.h>
#include <kova/detail/Entity.h>

KObjectHandle::KObjectHandle(const KObject& object)
    : entity_(object.entity()), hashCode_(object.isNull() ? 0 : object.entity()->hashCode()) {}

bool KObjectHandle::isAlive() const {
    return !entity_.expired();
}

bool KObjectHandle::isValid() const {
    const auto entity = entity_.lock();
    return entity && entity->isValid();
}

KObject KObjectHandle::object() const {
    return KObject(entity_.lock());
}
