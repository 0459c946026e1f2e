#pragma once

#include <kova/KDataHandle.h>
#include <kova/KExport.h>
#include <kova/KStatus.h>
#include <memory>

namespace kova::detail {
struct Value;
class Attribute;
} // namespace kova::detail

// Builds the elements of an array value. A builder from KArrayDataHandle::builder starts as
// a copy of the array's elements; KArrayDataHandle::set(builder) replaces them.
class KOVA_API KArrayDataBuilder {
public:
    KArrayDataBuilder() = default;
    // An empty builder for the elements of the array attribute `attribute`.
    explicit KArrayDataBuilder(const KObject& attribute, KStatus* status = nullptr);
    // Host internals: a builder starting from `elements` (an array value).
    KArrayDataBuilder(const kova::detail::Value& elements,
                      std::shared_ptr<kova::detail::Attribute> attribute);

    // The element of logical index `index`, created from the default if it does not exist.
    KDataHandle addElement(unsigned int index, KStatus* status = nullptr);
    // A new element after the last one.
    KDataHandle addLast(KStatus* status = nullptr);
    // Fails with kInvalidParameter when there is no element `index`.
    KStatus removeElement(unsigned int index);
    unsigned int elementCount() const;
    // Appends `amount` default elements after the last one.
    KStatus growArray(unsigned int amount);

    // Host internals.
    const std::shared_ptr<kova::detail::Value>& elements() const { return elements_; }
    const std::shared_ptr<kova::detail::Attribute>& attributeEntity() const { return attribute_; }

private:
    std::shared_ptr<kova::detail::Value> elements_;
    std::shared_ptr<kova::detail::Attribute> attribute_;
};
