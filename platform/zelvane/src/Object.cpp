#include <algorithm>
#include <zelvane/Object.h>

namespace Zelvane {

Object::Object() = default;
Object::Object(const Object& other) = default;
Object::Object(Object&& other) noexcept = default;
Object& Object::operator=(const Object& other) = default;
Object& Object::operator=(Object&& other) noexcept = default;
Object::~Object() = default;

bool Object::set(const Orsel::String& name, PropertyValue value) {
    if (name.empty()) {
        return false;
    }
    for (Property& property : properties_) {
        if (property.name == name) {
            property.value = std::move(value);
            return true;
        }
    }
    properties_.push_back(Property{name, std::move(value)});
    return true;
}

const PropertyValue* Object::find(std::string_view name) const noexcept {
    for (const Property& property : properties_) {
        if (property.name == name) {
            return &property.value;
        }
    }
    return nullptr;
}

Orsel::Ptr<Object> Object::getObject(std::string_view name) const noexcept {
    const auto* object = get<Orsel::Ptr<Object>>(name);
    return object ? *object : Orsel::Ptr<Object>();
}

bool Object::remove(std::string_view name) {
    const auto it =
        std::find_if(properties_.begin(), properties_.end(),
                     [name](const Property& property) { return property.name == name; });
    if (it == properties_.end()) {
        return false;
    }
    properties_.erase(it);
    return true;
}

Orsel::Array<Orsel::String> Object::propertyNames() const {
    Orsel::Array<Orsel::String> names;
    names.reserve(properties_.size());
    for (const Property& property : properties_) {
        names.push_back(property.name);
    }
    return names;
}

bool Object::isA(const Object& object, const Object& prototype) noexcept {
    for (const Object* link = &object; link; link = link->prototype_.get()) {
        if (link == &prototype) {
            return true;
        }
    }
    return false;
}

Orsel::MutablePtr<Object> createObject() {
    return Orsel::make<Object>();
}

const Orsel::Type& objectType() {
    static const Orsel::Type type =
        Orsel::Type::named(Orsel::String::literal("Object"), Orsel::TypeKind::Class);
    return type;
}

} // namespace Zelvane
