#pragma once

#include <kova/KMatrix.h>
#include <kova/detail/DataObject.h>

namespace kova::detail {

// A 4x4 double matrix.
class KOVA_API MatrixData : public DataObject {
public:
    explicit MatrixData(const KMatrix& matrix = KMatrix())
        : DataObject(KFn::kMatrixData, KFnData::kMatrix), matrix(matrix) {}
    std::shared_ptr<DataObject> clone() const override {
        return std::make_shared<MatrixData>(matrix);
    }
    KString toText() const override;

    KMatrix matrix;
};

// The 16 values of `matrix`, row by row, separated by blanks.
KOVA_API KString matrixText(const KMatrix& matrix);

} // namespace kova::detail
