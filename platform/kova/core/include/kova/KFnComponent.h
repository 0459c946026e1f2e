#pragma once

#include <kova/KExport.h>
#include <kova/KFnBase.h>

// Function set of components: element indices of one kind (mesh vertices, faces, ...).
class KOVA_API KFnComponent : public KFnBase {
public:
    KFnComponent() = default;
    explicit KFnComponent(const KObject& component, KStatus* status = nullptr);

    KFn::Type functionType() const override { return KFn::kComponent; }

    // The element kind (e.g. KFn::kMeshVertComponent).
    KFn::Type componentType() const;
    int elementCount() const;
    bool isEmpty() const;
    // A complete component stands for all elements of its kind without listing them.
    bool isComplete() const;
    KStatus setComplete(bool complete);
    // The number of elements a complete component stands for.
    KStatus setCompleteData(int count);
    int completeData() const;
};
