#pragma once

#include <kova/KExport.h>
#include <kova/KFnData.h>
#include <kova/KStringArray.h>

// Function set of geometry data (meshes, NURBS curves) and its component tags: named
// single-indexed components of the geometry. A tag's category follows from its contents:
// 2 vertices or CVs, 3 edges, 4 faces; 0 while it has no contents.
class KOVA_API KFnGeometryData : public KFnData {
public:
    KFnGeometryData() = default;
    explicit KFnGeometryData(const KObject& data, KStatus* status = nullptr);

    KFn::Type functionType() const override { return KFn::kGeometryData; }

    // Tag names in the order they were added.
    KStatus componentTags(KStringArray& names) const;
    bool hasComponentTag(const KString& name) const;
    int componentTagCategory(const KString& name, KStatus* status = nullptr) const;
    // A copy of the tag's contents (a single-indexed component); the null object while the
    // tag has none.
    KObject componentTagContents(const KString& name, KStatus* status = nullptr) const;
    // Adds an empty tag; fails for an empty or taken name.
    KStatus addComponentTag(const KString& name);
    KStatus removeComponentTag(const KString& name);
    // Stores a copy of `component`; its kind must belong to the geometry and its elements
    // must exist on it.
    KStatus setComponentTagContents(const KString& name, const KObject& component);
};
