#include "detail/AttributeFactory.h"

#include "detail/Scene.h"

namespace kova::detail {

namespace {

bool validNames(const std::string& longName, const std::string& shortName, KStatus& status) {
    if (!Scene::isValidName(longName) || !Scene::isValidName(shortName)) {
        status = KStatus(KStatus::kInvalidParameter, KString("invalid attribute names '" +
                                                             longName + "', '" + shortName + "'"));
        return false;
    }
    status = KStatus();
    return true;
}

std::shared_ptr<Attribute> make(KFn::Type apiType, Attribute::Kind kind,
                                const std::string& longName, const std::string& shortName,
                                KStatus& status) {
    if (!validNames(longName, shortName, status)) {
        return nullptr;
    }
    return std::make_shared<Attribute>(apiType, kind, longName, shortName);
}

} // namespace

std::shared_ptr<Attribute> makeNumericAttribute(const std::string& longName,
                                                const std::string& shortName,
                                                KFnNumericData::Type type, double defaultValue,
                                                KStatus& status) {
    const unsigned int count = KFnNumericData::componentCount(type);
    if (count == 0) {
        status = KStatus(KStatus::kInvalidParameter, "invalid numeric kind");
        return nullptr;
    }
    auto a = make(KFn::kNumericAttribute, Attribute::Kind::Numeric, longName, shortName, status);
    if (a) {
        a->numericType = type;
        for (unsigned int i = 0; i < count; ++i) {
            a->numericDefault[i] = defaultValue;
        }
    }
    return a;
}

std::shared_ptr<Attribute> makeTypedAttribute(const std::string& longName,
                                              const std::string& shortName, KFnData::Type type,
                                              const KTypeId& pluginType,
                                              const std::shared_ptr<DataObject>& defaultData,
                                              KStatus& status) {
    if (type == KFnData::kInvalid) {
        status = KStatus(KStatus::kInvalidParameter, "invalid data kind");
        return nullptr;
    }
    if (defaultData && type != KFnData::kAny && type != KFnData::kPlugin &&
        defaultData->dataType() != type) {
        status = KStatus(KStatus::kInvalidParameter, "the default is of another data kind");
        return nullptr;
    }
    auto a = make(KFn::kTypedAttribute, Attribute::Kind::Typed, longName, shortName, status);
    if (a) {
        a->dataType = type;
        a->pluginType = pluginType;
        a->defaultData = defaultData;
    }
    return a;
}

std::shared_ptr<Attribute> makeGenericAttribute(const std::string& longName,
                                                const std::string& shortName, KStatus& status) {
    return make(KFn::kGenericAttribute, Attribute::Kind::Generic, longName, shortName, status);
}

std::shared_ptr<Attribute> makeCompoundAttribute(const std::string& longName,
                                                 const std::string& shortName, KStatus& status) {
    return make(KFn::kCompoundAttribute, Attribute::Kind::Compound, longName, shortName, status);
}

std::shared_ptr<Attribute> makeMatrixAttribute(const std::string& longName,
                                               const std::string& shortName,
                                               KFnMatrixAttribute::Type precision,
                                               KStatus& status) {
    auto a = make(precision == KFnMatrixAttribute::kFloat ? KFn::kFloatMatrixAttribute
                                                          : KFn::kMatrixAttribute,
                  Attribute::Kind::Matrix, longName, shortName, status);
    if (a) {
        a->precision = precision;
    }
    return a;
}

std::shared_ptr<Attribute> makeMessageAttribute(const std::string& longName,
                                                const std::string& shortName, KStatus& status) {
    return make(KFn::kMessageAttribute, Attribute::Kind::Message, longName, shortName, status);
}

std::shared_ptr<Attribute> makeUnitAttribute(const std::string& longName,
                                             const std::string& shortName,
                                             KFnUnitAttribute::Type type, double defaultValue,
                                             KStatus& status) {
    KFn::Type apiType = KFn::kInvalid;
    switch (type) {
    case KFnUnitAttribute::kAngle:
        apiType = KFn::kAngleAttribute;
        break;
    case KFnUnitAttribute::kDistance:
        apiType = KFn::kDistanceAttribute;
        break;
    case KFnUnitAttribute::kTime:
        apiType = KFn::kTimeAttribute;
        break;
    default:
        status = KStatus(KStatus::kInvalidParameter, "invalid unit kind");
        return nullptr;
    }
    auto a = make(apiType, Attribute::Kind::Unit, longName, shortName, status);
    if (a) {
        a->unitType = type;
        a->numericType = KFnNumericData::kDouble;
        a->numericDefault[0] = defaultValue;
        a->timeDefault = KTime(defaultValue, KTime::uiUnit());
    }
    return a;
}

KStatus addChildAttribute(Attribute& compound, const std::shared_ptr<Attribute>& child) {
    if (compound.kind != Attribute::Kind::Compound) {
        return KStatus(KStatus::kInvalidParameter, "not a compound attribute");
    }
    if (compound.owner != nullptr) {
        return KStatus(KStatus::kInvalidParameter,
                       "the compound belongs to a node already: add children before");
    }
    if (!child || compound.isOrHasAncestor(child.get()) || child->parent != nullptr ||
        child->owner != nullptr) {
        return KStatus(KStatus::kInvalidParameter,
                       "the child is a compound's child or belongs to a node already");
    }
    for (const auto& existing : compound.children) {
        if (existing->named(child->longName) || existing->named(child->shortName)) {
            return KStatus(KStatus::kInvalidParameter,
                           KString("the compound has a child named '" + child->longName + "'"));
        }
    }
    child->parent = &compound;
    child->indexInParent = static_cast<int>(compound.children.size());
    compound.children.push_back(child);
    return KStatus();
}

} // namespace kova::detail
