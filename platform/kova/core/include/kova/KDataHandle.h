#pragma once

#include <kova/KExport.h>
#include <kova/KFloatMatrix.h>
#include <kova/KFnData.h>
#include <kova/KMatrix.h>
#include <kova/KObject.h>
#include <kova/KStatus.h>
#include <kova/KString.h>
#include <kova/KTime.h>
#include <kova/KTypeId.h>
#include <memory>

class KPxData;

namespace kova::detail {
struct Value;
class Attribute;
class Node;
} // namespace kova::detail

// Access to one value during an evaluation (from KDataBlock) or a copy of a plug's value
// (from KPlug::getValue). Readers convert between the numeric kinds; a reader that does
// not fit the value returns zero, false, an empty string, the identity or the null object.
// Data objects are shared: set(data) stores the object itself, and data() gives it back, so
// changes through a function set on data() are seen by every holder.
class KOVA_API KDataHandle {
public:
    KDataHandle() = default;
    // Host internals: a handle on `value`, described by `attribute`, of `node` (which may be
    // null for values that belong to no node). `owned` keeps a copied value alive.
    KDataHandle(kova::detail::Value* value, std::shared_ptr<kova::detail::Attribute> attribute,
                kova::detail::Node* node, std::shared_ptr<kova::detail::Value> owned = nullptr);

    bool isNull() const { return value_ == nullptr; }

    // The kind of the data held; kInvalid for numbers, messages, plug-in data and no data.
    KFnData::Type type() const;
    // The type id of plug-in data held, else id 0.
    KTypeId typeId() const;
    KObject data() const;

    double asDouble() const;
    float asFloat() const;
    int asInt() const;
    bool asBool() const;
    KString asString() const;
    KTime asTime() const;
    KMatrix asMatrix() const;
    KFloatMatrix asFloatMatrix() const;
    // The components of a 2- to 4-component numeric value (missing ones are 0).
    const double* asNumbers() const;
    KPxData* asPluginData() const;
    KObject asKObject() const { return data(); }
    // The data object when it is a mesh or a NURBS curve, else the null object.
    KObject asMesh() const;
    KObject asNurbsCurve() const;
    // The world matrix of the DAG node whose world-space attribute produced the geometry,
    // when the value was read from such an attribute; the identity otherwise.
    KMatrix geometryTransformMatrix() const;

    // The child of a compound value, by position or by child attribute.
    KDataHandle child(unsigned int index) const;
    KDataHandle child(const KObject& attribute) const;

    // Stores `data` (shared, not copied). Fails when the attribute does not accept its kind.
    KStatus set(const KObject& data);
    KStatus setDouble(double value);
    KStatus setFloat(float value);
    KStatus setInt(int value);
    KStatus setBool(bool value);
    KStatus setString(const KString& value);
    KStatus setTime(const KTime& value);
    KStatus setKMatrix(const KMatrix& value);
    KStatus setKFloatMatrix(const KFloatMatrix& value);
    KStatus setNumbers(const double* values, unsigned int count);
    // Marks the handle's attribute clean on its node.
    void setClean();

    // Host internals.
    kova::detail::Value* value() const { return value_; }
    const std::shared_ptr<kova::detail::Attribute>& attributeEntity() const { return attribute_; }

private:
    KStatus setNumber(double value, const char* operation);
    kova::detail::Value* value_ = nullptr;
    std::shared_ptr<kova::detail::Attribute> attribute_;
    kova::detail::Node* node_ = nullptr;
    std::shared_ptr<kova::detail::Value> owned_;
};
