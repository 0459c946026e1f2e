#pragma once

#include <kova/KFnAttribute.h>

// Attributes grouping child attributes; a compound plug has one child plug per child.
class KOVA_API KFnCompoundAttribute : public KFnAttribute {
public:
    KFnCompoundAttribute() = default;
    explicit KFnCompoundAttribute(const KObject& attribute, KStatus* status = nullptr);

    KFn::Type functionType() const override { return KFn::kCompoundAttribute; }

    KObject create(const KString& longName, const KString& shortName, KStatus* status = nullptr);

    // Adds `child`, an attribute that has no parent and belongs to no node yet. Fails once the
    // compound belongs to a node type or a node.
    KStatus addChild(const KObject& child);
    unsigned int numChildren() const;
    KObject child(unsigned int index, KStatus* status = nullptr) const;
};
