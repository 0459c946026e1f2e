#include "detail/Node.h"

#include "detail/Attribute.h"

namespace kova::detail {

Node::Node(std::shared_ptr<NodeType> nodeType)
    : Entity(nodeType->apiType), type(std::move(nodeType)),
      dynamicAttributes(type->attributes.end()) {
    const int count = type->attributes.end();
    for (int i = 0; i < count; ++i) {
        const auto& attribute = type->attributes.at(i);
        values.push_back(attribute && attribute->parent == nullptr ? attribute->makeValue()
                                                                   : Value());
        dirty.push_back(type->computed[static_cast<std::size_t>(i)]);
    }
    if (type->isSet()) {
        set = std::make_unique<SetMembers>();
    }
    ++type->liveNodes;
}

Node::~Node() {
    release();
}

void Node::release() {
    user.reset();
    values.clear();
    if (counted_) {
        counted_ = false;
        --type->liveNodes;
    }
}

Attribute* Node::findAttribute(std::string_view name) const {
    if (Attribute* a = type->attributes.find(name)) {
        return a;
    }
    return dynamicAttributes.find(name);
}

const std::shared_ptr<Attribute>& Node::attributeAt(int index) const {
    return type->attributes.contains(index) ? type->attributes.at(index)
                                            : dynamicAttributes.at(index);
}

std::vector<std::shared_ptr<Attribute>> Node::liveAttributes() const {
    auto out = type->attributes.live();
    for (auto& a : dynamicAttributes.live()) {
        out.push_back(std::move(a));
    }
    return out;
}

KStatus Node::addDynamicAttribute(const std::shared_ptr<Attribute>& attribute) {
    if (attribute && attribute->owner == this) {
        return KStatus(KStatus::kInvalidParameter,
                       KString("attribute '" + attribute->longName + "' was added already"));
    }
    KStatus status = dynamicAttributes.add(attribute, this, &type->attributes);
    if (!status) {
        return status;
    }
    std::lock_guard lock(mutex);
    while (static_cast<int>(values.size()) < dynamicAttributes.end()) {
        const auto& a = attributeAt(static_cast<int>(values.size()));
        values.push_back(a && a->parent == nullptr ? a->makeValue() : Value());
        dirty.push_back(a && computesDynamic(*a) ? 1 : 0);
    }
    return status;
}

bool Node::computesDynamic(const Attribute& attribute) const {
    if (!type->dynamicOutputsComputed) {
        return false;
    }
    const Attribute* top = &attribute;
    while (top->parent != nullptr) {
        top = top->parent;
    }
    return top->owner == this && !top->writable;
}

KStatus Node::removeDynamicAttribute(Attribute& attribute) {
    if (attribute.owner != this) {
        return KStatus(
            KStatus::kInvalidParameter,
            KString("'" + attribute.longName + "' is not a dynamic attribute of '" + name + "'"));
    }
    const int index = attribute.index;
    KStatus status = dynamicAttributes.remove(attribute);
    if (status) {
        std::lock_guard lock(mutex);
        values[static_cast<std::size_t>(index)] = Value();
    }
    return status;
}

bool Node::owns(const Attribute& attribute) const {
    return attribute.valid && (attribute.owner == type.get() || attribute.owner == this);
}

bool Node::isDirty(const Attribute& attribute) const {
    return dirty[static_cast<std::size_t>(attribute.index)] != 0;
}

void Node::setDirty(const Attribute& attribute, bool state) {
    dirty[static_cast<std::size_t>(attribute.index)] = state ? 1 : 0;
}

Value* Node::slot(const PlugPath& path, bool create) {
    if (path.empty() || !owns(*path.front().attribute) ||
        static_cast<std::size_t>(path.front().attribute->index) >= values.size()) {
        return nullptr;
    }
    Value* value = &values[static_cast<std::size_t>(path.front().attribute->index)];
    for (std::size_t i = 0; i < path.size(); ++i) {
        const PlugStep& step = path[i];
        if (i > 0) {
            const auto position = static_cast<std::size_t>(step.attribute->indexInParent);
            if (value->kind != Value::Kind::Compound || position >= value->children.size()) {
                return nullptr;
            }
            value = &value->children[position];
        }
        if (step.index >= 0) {
            if (value->kind != Value::Kind::Array) {
                return nullptr;
            }
            auto found = value->elements.find(static_cast<unsigned int>(step.index));
            if (found == value->elements.end()) {
                if (!create) {
                    return nullptr;
                }
                found = value->elements
                            .emplace(static_cast<unsigned int>(step.index),
                                     step.attribute->makeElementValue())
                            .first;
            }
            value = &found->second;
        }
    }
    return value;
}

} // namespace kova::detail
