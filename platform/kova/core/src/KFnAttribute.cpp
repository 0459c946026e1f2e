#include "detail/Attribute.h"

#include <kova/KFnAttribute.h>

using kova::detail::Attribute;
using kova::detail::attributeOf;

namespace {

bool flag(const KObject& object, bool Attribute::*member) {
    const Attribute* a = attributeOf(object);
    return a != nullptr && a->*member;
}

KStatus setFlag(const KObject& object, bool Attribute::*member, bool state) {
    Attribute* a = attributeOf(object);
    if (a == nullptr) {
        return KStatus(KStatus::kInvalidParameter, "no attribute attached");
    }
    a->*member = state;
    return KStatus();
}

} // namespace

KFnAttribute::KFnAttribute(const KObject& attribute, KStatus* status) {
    attach(attribute, status);
}

KString KFnAttribute::name() const {
    const Attribute* a = attributeOf(object_);
    return a ? KString(a->longName) : KString();
}

KString KFnAttribute::shortName() const {
    const Attribute* a = attributeOf(object_);
    return a ? KString(a->shortName) : KString();
}

bool KFnAttribute::isReadable() const {
    return flag(object_, &Attribute::readable);
}
bool KFnAttribute::isWritable() const {
    return flag(object_, &Attribute::writable);
}
bool KFnAttribute::isStorable() const {
    return flag(object_, &Attribute::storable);
}
bool KFnAttribute::isKeyable() const {
    return flag(object_, &Attribute::keyable);
}
bool KFnAttribute::isConnectable() const {
    return flag(object_, &Attribute::connectable);
}
bool KFnAttribute::isHidden() const {
    return flag(object_, &Attribute::hidden);
}
bool KFnAttribute::isArray() const {
    return flag(object_, &Attribute::array);
}
bool KFnAttribute::usesArrayDataBuilder() const {
    return flag(object_, &Attribute::usesArrayDataBuilder);
}
bool KFnAttribute::isWorldSpace() const {
    return flag(object_, &Attribute::worldSpace);
}

KStatus KFnAttribute::setReadable(bool state) {
    return setFlag(object_, &Attribute::readable, state);
}
KStatus KFnAttribute::setWritable(bool state) {
    return setFlag(object_, &Attribute::writable, state);
}
KStatus KFnAttribute::setStorable(bool state) {
    return setFlag(object_, &Attribute::storable, state);
}
KStatus KFnAttribute::setKeyable(bool state) {
    return setFlag(object_, &Attribute::keyable, state);
}
KStatus KFnAttribute::setConnectable(bool state) {
    return setFlag(object_, &Attribute::connectable, state);
}
KStatus KFnAttribute::setHidden(bool state) {
    return setFlag(object_, &Attribute::hidden, state);
}
KStatus KFnAttribute::setUsesArrayDataBuilder(bool state) {
    return setFlag(object_, &Attribute::usesArrayDataBuilder, state);
}
KStatus KFnAttribute::setWorldSpace(bool state) {
    return setFlag(object_, &Attribute::worldSpace, state);
}

KStatus KFnAttribute::setArray(bool state) {
    const Attribute* a = attributeOf(object_);
    if (a != nullptr && a->owner != nullptr && a->array != state) {
        return KStatus(
            KStatus::kInvalidParameter,
            "an attribute that belongs to a node cannot change between single and array");
    }
    return setFlag(object_, &Attribute::array, state);
}

bool KFnAttribute::accepts(KFnData::Type type) const {
    const Attribute* a = attributeOf(object_);
    return a != nullptr && a->acceptsData(type);
}

bool KFnAttribute::accepts(const KTypeId& id) const {
    const Attribute* a = attributeOf(object_);
    return a != nullptr && a->acceptsPluginType(id);
}

KObject KFnAttribute::parent() const {
    const Attribute* a = attributeOf(object_);
    return a && a->parent ? KObject(a->parent->shared_from_this()) : KObject();
}

int KFnAttribute::indexInParent() const {
    const Attribute* a = attributeOf(object_);
    return a ? a->indexInParent : -1;
}

bool KFnAttribute::isAdded() const {
    const Attribute* a = attributeOf(object_);
    return a != nullptr && a->owner != nullptr;
}
