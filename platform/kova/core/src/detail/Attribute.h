#pragma once

#include "detail/Value.h"

#include <kova/KFnData.h>
#include <kova/KFnMatrixAttribute.h>
#include <kova/KFnNumericData.h>
#include <kova/KFnUnitAttribute.h>
#include <kova/KObject.h>
#include <kova/KTypeId.h>
#include <kova/detail/Entity.h>
#include <memory>
#include <string>
#include <vector>

namespace kova::detail {

// An attribute: the description of one value of a node (its kind, names, flags, default and
// accepted data). Static attributes belong to a node type and are shared by its nodes;
// dynamic attributes belong to one node. An attribute is added to exactly one owner.
class Attribute : public Entity {
public:
    enum class Kind { Numeric, Typed, Generic, Compound, Matrix, Message, Unit };

    Attribute(KFn::Type apiType, Kind kind, std::string longName, std::string shortName);
    ~Attribute() override;
    bool isValid() const override { return valid; }

    Kind kind;
    std::string longName;
    std::string shortName;

    bool readable = true;
    bool writable = true;
    bool storable = true;
    bool keyable = false;
    bool connectable = true;
    bool hidden = false;
    bool array = false;
    bool usesArrayDataBuilder = false;
    bool worldSpace = false;

    // Numeric: kind and default of each component.
    KFnNumericData::Type numericType = KFnNumericData::kInvalid;
    std::array<double, 4> numericDefault{};
    // Unit: kind and default (numbers in internal units, time as a KTime).
    KFnUnitAttribute::Type unitType = KFnUnitAttribute::kInvalid;
    KTime timeDefault;
    // Typed: the kind (kPlugin with pluginType for plug-in data) and an optional default.
    KFnData::Type dataType = KFnData::kInvalid;
    KTypeId pluginType;
    std::shared_ptr<DataObject> defaultData;
    // Generic: what it accepts.
    std::vector<KFnData::Type> acceptedTypes;
    std::vector<KTypeId> acceptedPluginTypes;
    bool acceptsNumbers = false;
    // Matrix.
    KFnMatrixAttribute::Type precision = KFnMatrixAttribute::kDouble;
    KMatrix defaultMatrix;
    // Compound.
    std::vector<std::shared_ptr<Attribute>> children;
    Attribute* parent = nullptr;
    int indexInParent = -1;

    // Where it was added: the owning node type or node, and its index among the owner's
    // attributes (compound children included).
    const void* owner = nullptr;
    int index = -1;
    bool valid = true;

    // The value of one plug of the attribute taken as a single value (for an array
    // attribute: one element).
    Value makeElementValue() const;
    // The value of the attribute's own plug (an empty array for array attributes).
    Value makeValue() const;

    bool acceptsData(KFnData::Type type) const;
    bool acceptsPluginType(const KTypeId& id) const;
    // Whether a plug of the attribute can hold `data` (by its kind, or its plug-in type).
    bool acceptsDataObject(const DataObject& data) const;
    // True for `a` itself and any compound above it.
    bool isOrHasAncestor(const Attribute* a) const;
    // The attribute and every attribute below it.
    void collect(std::vector<Attribute*>& out);
    // True when `name` is its long or short name.
    bool named(std::string_view name) const { return name == longName || name == shortName; }
};

// The attribute behind `object`, or null.
inline Attribute* attributeOf(const KObject& object) {
    return entityAs<Attribute>(object.entity());
}
inline std::shared_ptr<Attribute> sharedAttributeOf(const KObject& object) {
    return sharedEntityAs<Attribute>(object.entity());
}
inline KObject objectOf(const std::shared_ptr<Attribute>& attribute) {
    return KObject(std::static_pointer_cast<Entity>(attribute));
}

} // namespace kova::detail
