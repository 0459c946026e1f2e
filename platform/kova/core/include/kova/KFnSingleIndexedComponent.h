#pragma once

#include <kova/KExport.h>
#include <kova/KFnComponent.h>
#include <kova/KIntArray.h>

// Function set of components whose elements have one index each.
class KOVA_API KFnSingleIndexedComponent : public KFnComponent {
public:
    KFnSingleIndexedComponent() = default;
    explicit KFnSingleIndexedComponent(const KObject& component, KStatus* status = nullptr);

    KFn::Type functionType() const override { return KFn::kSingleIndexedComponent; }

    // A new empty component of kind `type` (a kind below kSingleIndexedComponent).
    KObject create(KFn::Type type, KStatus* status = nullptr);
    KStatus addElement(int element);
    KStatus addElements(const KIntArray& elements);
    // The element indices, ascending (0 .. n-1 for a complete component).
    KStatus getElements(KIntArray& elements) const;
    int element(unsigned int index, KStatus* status = nullptr) const;
};
