#pragma once

#include <kova/KExport.h>
#include <kova/KFnData.h>
#include <kova/KString.h>

// Function set of string data.
class KOVA_API KFnStringData : public KFnData {
public:
    KFnStringData() = default;
    explicit KFnStringData(const KObject& data, KStatus* status = nullptr);

    KFn::Type functionType() const override { return KFn::kStringData; }

    KObject create(const KString& text = KString(), KStatus* status = nullptr);
    KString string(KStatus* status = nullptr) const;
    KStatus set(const KString& text);
};
