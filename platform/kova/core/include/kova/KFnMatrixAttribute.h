#pragma once

#include <kova/KFloatMatrix.h>
#include <kova/KFnAttribute.h>
#include <kova/KMatrix.h>

// Attributes holding a 4x4 matrix, in double or single precision. The default is the
// identity.
class KOVA_API KFnMatrixAttribute : public KFnAttribute {
public:
    enum Type { kFloat, kDouble };

    KFnMatrixAttribute() = default;
    explicit KFnMatrixAttribute(const KObject& attribute, KStatus* status = nullptr);

    KFn::Type functionType() const override { return KFn::kMatrixAttribute; }

    KObject create(const KString& longName, const KString& shortName, Type type = kDouble,
                   KStatus* status = nullptr);

    Type precision() const;
    KStatus setDefault(const KMatrix& matrix);
    KStatus setDefault(const KFloatMatrix& matrix);
    KMatrix defaultMatrix() const;
};
