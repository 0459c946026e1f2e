#include "plugin/ArrayConverters.h"

#include <kova/KDataHandle.h>
#include <kova/KFnDoubleArrayData.h>
#include <kova/KFnVectorArrayData.h>
#include <kova/KPlug.h>
#include <zelvane/math/Vector.h>

namespace {

// The object holding `values` under the plug's partial name; nameless plugs give an empty one.
template <class T>
Orsel::Ptr<Zelvane::Object> objectWithArray(const KPlug& plug,
                                            Orsel::MutablePtr<Orsel::Array<T>>&& values) {
    const Orsel::String name(plug.partialName().view());
    Orsel::MutablePtr<Zelvane::Object> object = Zelvane::createObject();
    if (!name.empty()) {
        object->set(name, std::move(values));
    }
    return Orsel::Ptr<Zelvane::Object>(std::move(object));
}

} // namespace

Orsel::Ptr<Zelvane::Object> kovaDoubleArrayToObject(const KPlug& plug, const KDataHandle& handle) {
    if (handle.type() != KFnData::kDoubleArray) {
        return {};
    }
    KStatus status;
    KFnDoubleArrayData fnArray(handle.data(), &status);
    KDoubleArray hostValues;
    if (!status || !fnArray.copyTo(hostValues)) {
        return {};
    }
    auto values = Orsel::make<Orsel::Array<float>>();
    values->resizeForOverwrite(hostValues.length());
    for (unsigned int i = 0; i < hostValues.length(); ++i) {
        (*values)[i] = static_cast<float>(hostValues[i]); // narrowing to float is intended
    }
    return objectWithArray(plug, std::move(values));
}

Orsel::Ptr<Zelvane::Object> kovaVectorArrayToObject(const KPlug& plug, const KDataHandle& handle) {
    if (handle.type() != KFnData::kVectorArray) {
        return {};
    }
    KStatus status;
    KFnVectorArrayData fnArray(handle.data(), &status);
    KVectorArray hostValues;
    if (!status || !fnArray.copyTo(hostValues)) {
        return {};
    }
    auto values = Orsel::make<Orsel::Array<Zelvane::Math::float3>>();
    values->resizeForOverwrite(hostValues.length());
    for (unsigned int i = 0; i < hostValues.length(); ++i) {
        const KVector& v = hostValues[i];
        (*values)[i] = {static_cast<float>(v.x), static_cast<float>(v.y), static_cast<float>(v.z)};
    }
    return objectWithArray(plug, std::move(values));
}
