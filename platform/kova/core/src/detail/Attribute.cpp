#include "detail/Attribute.h"

#include <algorithm>
#include <kova/detail/PluginData.h>

namespace kova::detail {

Attribute::Attribute(KFn::Type apiType, Kind kind, std::string longName, std::string shortName)
    : Entity(apiType), kind(kind), longName(std::move(longName)), shortName(std::move(shortName)) {}

Attribute::~Attribute() {
    for (const auto& child : children) {
        child->parent = nullptr;
        child->indexInParent = -1;
    }
}

Value Attribute::makeElementValue() const {
    Value value;
    switch (kind) {
    case Kind::Numeric:
        value.kind = Value::Kind::Numeric;
        value.numbers = numericDefault;
        break;
    case Kind::Unit:
        if (unitType == KFnUnitAttribute::kTime) {
            value.kind = Value::Kind::Time;
            value.time = timeDefault;
        } else {
            value.kind = Value::Kind::Numeric;
            value.numbers = numericDefault;
        }
        break;
    case Kind::Typed:
        value.kind = Value::Kind::Data;
        if (defaultData) {
            value.data = defaultData->clone();
        }
        break;
    case Kind::Generic:
        value.kind = Value::Kind::Data;
        break;
    case Kind::Matrix:
        value.kind = Value::Kind::Matrix;
        value.matrix = defaultMatrix;
        break;
    case Kind::Message:
        break;
    case Kind::Compound:
        value.kind = Value::Kind::Compound;
        value.children.reserve(children.size());
        for (const auto& child : children) {
            value.children.push_back(child->makeValue());
        }
        break;
    }
    return value;
}

Value Attribute::makeValue() const {
    if (array) {
        Value value;
        value.kind = Value::Kind::Array;
        return value;
    }
    return makeElementValue();
}

bool Attribute::acceptsData(KFnData::Type type) const {
    switch (kind) {
    case Kind::Typed:
        return dataType == KFnData::kAny || dataType == type;
    case Kind::Generic:
        return std::find(acceptedTypes.begin(), acceptedTypes.end(), KFnData::kAny) !=
                   acceptedTypes.end() ||
               std::find(acceptedTypes.begin(), acceptedTypes.end(), type) != acceptedTypes.end() ||
               (type == KFnData::kNumeric && acceptsNumbers);
    case Kind::Numeric:
    case Kind::Unit:
        return type == KFnData::kNumeric;
    case Kind::Matrix:
        return type == KFnData::kMatrix;
    case Kind::Compound:
    case Kind::Message:
        return false;
    }
    return false;
}

bool Attribute::acceptsPluginType(const KTypeId& id) const {
    switch (kind) {
    case Kind::Typed:
        return dataType == KFnData::kAny || (dataType == KFnData::kPlugin && pluginType == id);
    case Kind::Generic:
        return std::find(acceptedTypes.begin(), acceptedTypes.end(), KFnData::kAny) !=
                   acceptedTypes.end() ||
               std::find(acceptedTypes.begin(), acceptedTypes.end(), KFnData::kPlugin) !=
                   acceptedTypes.end() ||
               std::find(acceptedPluginTypes.begin(), acceptedPluginTypes.end(), id) !=
                   acceptedPluginTypes.end();
    default:
        return false;
    }
}

bool Attribute::acceptsDataObject(const DataObject& data) const {
    if (const auto* plugin = dynamic_cast<const PluginData*>(&data)) {
        return acceptsPluginType(plugin->typeId());
    }
    return acceptsData(data.dataType());
}

bool Attribute::isOrHasAncestor(const Attribute* a) const {
    for (const Attribute* p = this; p != nullptr; p = p->parent) {
        if (p == a) {
            return true;
        }
    }
    return false;
}

void Attribute::collect(std::vector<Attribute*>& out) {
    out.push_back(this);
    for (const auto& child : children) {
        child->collect(out);
    }
}

} // namespace kova::detail
