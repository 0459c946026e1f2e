#include <kova/detail/DoubleArrayData.h>
#include <kova/detail/MatrixData.h>
#include <kova/detail/VectorArrayData.h>
#include <sstream>

// Text forms of the host's data kinds, as `getAttr` prints them: the element count followed
// by the values.
namespace kova::detail {

namespace {

std::ostringstream numberStream() {
    std::ostringstream out;
    out.precision(17);
    return out;
}

} // namespace

KString DoubleArrayData::toText() const {
    auto out = numberStream();
    out << values.length();
    for (double v : values) {
        out << ' ' << v;
    }
    return KString(out.str());
}

KString VectorArrayData::toText() const {
    auto out = numberStream();
    out << values.length();
    for (const KVector& v : values) {
        out << ' ' << v.x << ' ' << v.y << ' ' << v.z;
    }
    return KString(out.str());
}

KString matrixText(const KMatrix& matrix) {
    auto out = numberStream();
    for (int r = 0; r < 4; ++r) {
        for (int c = 0; c < 4; ++c) {
            out << (r + c == 0 ? "" : " ") << matrix.matrix[r][c];
        }
    }
    return KString(out.str());
}

KString MatrixData::toText() const {
    return matrixText(matrix);
}

} // namespace kova::detail
