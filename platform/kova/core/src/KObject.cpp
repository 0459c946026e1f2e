#include <kova/KObject.h>
#include <kova/detail/Entity.h>

const KObject KObject::kNullObj;

KObject::KObject(std::shared_ptr<kova::detail::Entity> entity) : entity_(std::move(entity)) {}

KFn::Type KObject::apiType() const {
    return entity_ ? entity_->apiType() : KFn::kInvalid;
}

const char* KObject::apiTypeStr() const {
    return KFn::typeName(apiType());
}

bool KObject::hasFn(KFn::Type type) const {
    return KFn::isA(apiType(), type);
}
