#pragma once

#include <kova/KExport.h>
#include <kova/KFnBase.h>
#include <kova/KFnData.h>
#include <kova/KString.h>
#include <kova/KTypeId.h>

// Function set of attributes: names, flags, the data an attribute accepts and, for the
// children of compounds, their parent.
//
// Flags and their defaults: readable (true: can be a connection's source), writable (true:
// can be set and be a connection's destination), storable (true), keyable (false),
// connectable (true), hidden (false), array (false: one value per plug rather than sparse
// elements by logical index), usesArrayDataBuilder (false), worldSpace (false: the value
// depends on the node's world transform; readers get the node's world matrix with it).
class KOVA_API KFnAttribute : public KFnBase {
public:
    KFnAttribute() = default;
    explicit KFnAttribute(const KObject& attribute, KStatus* status = nullptr);

    KFn::Type functionType() const override { return KFn::kAttribute; }

    KString name() const;
    KString shortName() const;

    bool isReadable() const;
    bool isWritable() const;
    bool isStorable() const;
    bool isKeyable() const;
    bool isConnectable() const;
    bool isHidden() const;
    bool isArray() const;
    bool usesArrayDataBuilder() const;
    bool isWorldSpace() const;

    KStatus setReadable(bool state);
    KStatus setWritable(bool state);
    KStatus setStorable(bool state);
    KStatus setKeyable(bool state);
    KStatus setConnectable(bool state);
    KStatus setHidden(bool state);
    KStatus setArray(bool state);
    KStatus setUsesArrayDataBuilder(bool state);
    KStatus setWorldSpace(bool state);

    // Whether a plug of this attribute can take data of kind `type` (typed and generic
    // attributes; numeric attributes accept kNumeric, matrix attributes kMatrix).
    bool accepts(KFnData::Type type) const;
    // Whether it can take plug-in data of type `id`.
    bool accepts(const KTypeId& id) const;

    // The compound this attribute is a child of, or the null object.
    KObject parent() const;
    // The index of this attribute among its parent's children, or -1.
    int indexInParent() const;
    // True once the attribute belongs to a node type or a node.
    bool isAdded() const;
};
