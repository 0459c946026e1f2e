#include "detail/AttributeList.h"

#include "detail/Attribute.h"

namespace kova::detail {

namespace {

const std::shared_ptr<Attribute> kNoAttribute;

KStatus nameTaken(const std::string& name) {
    KString text;
    text.format("an attribute named '^1s' already exists", KString(name));
    return KStatus(KStatus::kInvalidParameter, text);
}

} // namespace

KStatus AttributeList::add(const std::shared_ptr<Attribute>& attribute, const void* owner,
                           const AttributeList* alsoTaken) {
    if (!attribute) {
        return KStatus(KStatus::kInvalidParameter, "not an attribute");
    }
    if (attribute->owner == owner) {
        return KStatus(); // added before, directly or with its compound
    }
    if (attribute->owner != nullptr) {
        return KStatus(KStatus::kInvalidParameter,
                       KString("attribute '" + attribute->longName + "' belongs to another node"));
    }
    if (attribute->parent != nullptr) {
        return KStatus(KStatus::kInvalidParameter,
                       KString("attribute '" + attribute->longName +
                               "' is a child: add its compound instead"));
    }
    std::vector<Attribute*> all;
    attribute->collect(all);
    for (Attribute* a : all) {
        if (a->owner != nullptr) {
            return KStatus(KStatus::kInvalidParameter,
                           KString("attribute '" + a->longName + "' belongs to another node"));
        }
        for (const std::string* name : {&a->longName, &a->shortName}) {
            if (find(*name) != nullptr || (alsoTaken != nullptr && alsoTaken->find(*name))) {
                return nameTaken(*name);
            }
            for (Attribute* other : all) {
                if (other != a && other->named(*name)) {
                    return nameTaken(*name);
                }
            }
        }
    }
    for (Attribute* a : all) {
        a->owner = owner;
        a->index = end();
        items_.push_back(std::static_pointer_cast<Attribute>(a->shared_from_this()));
    }
    return KStatus();
}

KStatus AttributeList::remove(Attribute& attribute) {
    if (!contains(attribute.index) || at(attribute.index).get() != &attribute ||
        attribute.parent != nullptr) {
        return KStatus(KStatus::kInvalidParameter, "the attribute is not a dynamic attribute here");
    }
    std::vector<Attribute*> all;
    attribute.collect(all);
    for (Attribute* a : all) {
        a->valid = false;
        items_[static_cast<std::size_t>(a->index - base_)].reset();
    }
    return KStatus();
}

Attribute* AttributeList::find(std::string_view name) const {
    for (const auto& a : items_) {
        if (a && a->named(name)) {
            return a.get();
        }
    }
    return nullptr;
}

const std::shared_ptr<Attribute>& AttributeList::at(int index) const {
    return contains(index) ? items_[static_cast<std::size_t>(index - base_)] : kNoAttribute;
}

bool AttributeList::contains(int index) const {
    return index >= base_ && index < end();
}

std::vector<std::shared_ptr<Attribute>> AttributeList::live() const {
    std::vector<std::shared_ptr<Attribute>> out;
    for (const auto& a : items_) {
        if (a) {
            out.push_back(a);
        }
    }
    return out;
}

} // namespace kova::detail
