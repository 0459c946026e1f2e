#pragma once

#include <kova/KArrayDataBuilder.h>
#include <kova/KDataHandle.h>
#include <kova/KExport.h>
#include <kova/KStatus.h>
#include <memory>

namespace kova::detail {
struct Value;
class Attribute;
class Node;
} // namespace kova::detail

// Access to the elements of an array value. It has a current element, which starts at the
// first (physical index 0) and moves with next(), jumpToElement (by logical index) and
// jumpToArrayElement (by physical index).
class KOVA_API KArrayDataHandle {
public:
    KArrayDataHandle() = default;
    // Host internals.
    KArrayDataHandle(kova::detail::Value* array, std::shared_ptr<kova::detail::Attribute> attribute,
                     kova::detail::Node* node,
                     std::shared_ptr<kova::detail::Value> owned = nullptr);
    // The array value held by a handle (fails for a handle that holds no array).
    explicit KArrayDataHandle(const KDataHandle& handle, KStatus* status = nullptr);

    unsigned int elementCount(KStatus* status = nullptr) const;
    // Logical index of the current element.
    unsigned int elementIndex(KStatus* status = nullptr) const;
    KStatus jumpToElement(unsigned int logicalIndex);
    KStatus jumpToArrayElement(unsigned int physicalIndex);
    // Moves to the next element; fails with kFailure after the last.
    KStatus next();

    // The current element.
    KDataHandle inputValue(KStatus* status = nullptr) const;
    KDataHandle outputValue(KStatus* status = nullptr) const;

    // A builder holding a copy of the elements.
    KArrayDataBuilder builder(KStatus* status = nullptr) const;
    // Replaces the elements by the builder's; the current element goes back to the first.
    KStatus set(const KArrayDataBuilder& builder);
    // Marks the array attribute clean on its node.
    void setClean();

private:
    KDataHandle current(KStatus* status, const char* operation) const;
    kova::detail::Value* array_ = nullptr;
    std::shared_ptr<kova::detail::Attribute> attribute_;
    kova::detail::Node* node_ = nullptr;
    std::shared_ptr<kova::detail::Value> owned_;
    unsigned int position_ = 0;
};
