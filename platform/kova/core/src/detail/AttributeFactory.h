#pragma once

#include "detail/Attribute.h"

#include <kova/KFailureInjection.h>
#include <kova/KStatus.h>
#include <memory>
#include <string>

namespace kova::detail {

// Makers of attributes, shared by the public function sets and the host's own node types.
// Each returns null (and sets `status`) for an empty or invalid name or kind.
std::shared_ptr<Attribute> makeNumericAttribute(const std::string& longName,
                                                const std::string& shortName,
                                                KFnNumericData::Type type, double defaultValue,
                                                KStatus& status);
std::shared_ptr<Attribute> makeTypedAttribute(const std::string& longName,
                                              const std::string& shortName, KFnData::Type type,
                                              const KTypeId& pluginType,
                                              const std::shared_ptr<DataObject>& defaultData,
                                              KStatus& status);
std::shared_ptr<Attribute> makeGenericAttribute(const std::string& longName,
                                                const std::string& shortName, KStatus& status);
std::shared_ptr<Attribute> makeCompoundAttribute(const std::string& longName,
                                                 const std::string& shortName, KStatus& status);
std::shared_ptr<Attribute> makeMatrixAttribute(const std::string& longName,
                                               const std::string& shortName,
                                               KFnMatrixAttribute::Type precision, KStatus& status);
std::shared_ptr<Attribute> makeMessageAttribute(const std::string& longName,
                                                const std::string& shortName, KStatus& status);
std::shared_ptr<Attribute> makeUnitAttribute(const std::string& longName,
                                             const std::string& shortName,
                                             KFnUnitAttribute::Type type, double defaultValue,
                                             KStatus& status);

// Adds `child` to `compound`: fails when the compound already belongs to an owner or the
// child has a parent or an owner.
KStatus addChildAttribute(Attribute& compound, const std::shared_ptr<Attribute>& child);

// The body of the function sets' create calls: a failure-injection point named `operation`,
// then `make(status)`. Returns the new attribute's object, or the null object on failure.
template <class Make>
KObject createAttribute(const char* operation, KStatus* status, Make&& make) {
    KStatus result;
    std::shared_ptr<Attribute> attribute;
    if (KFailureInjection::shouldFail(operation)) {
        result = KFailureInjection::failure(operation);
    } else {
        attribute = make(result);
    }
    if (status != nullptr) {
        *status = result;
    }
    return attribute ? objectOf(attribute) : KObject();
}

} // namespace kova::detail
