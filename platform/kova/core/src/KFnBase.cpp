#include <kova/KFnBase.h>
#include <kova/KString.h>

KStatus KFnBase::setObject(const KObject& object) {
    if (!hasObj(object)) {
        object_ = KObject();
        return KStatus(
            KStatus::kInvalidParameter,
            KString(std::string("the object is not of kind ") + KFn::typeName(functionType())));
    }
    object_ = object;
    return KStatus();
}

KStatus KFnBase::attach(const KObject& object, KStatus* status) {
    KStatus result = setObject(object);
    if (status != nullptr) {
        *status = result;
    }
    return result;
}
