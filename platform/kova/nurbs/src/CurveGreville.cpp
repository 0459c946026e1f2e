#include <kova/nurbs/Curve.h>

namespace kova::nurbs {

std::vector<double> Curve::grevilleAbscissae() const {
    const int p = degree_;
    const std::size_t n = cvs_.size();
    if (p < 1 || knots_.size() < n + static_cast<std::size_t>(p) - 1)
        return {};
    std::vector<double> abscissae(n);
    for (std::size_t j = 0; j < n; ++j) {
        double sum = 0.0;
        for (int i = 0; i < p; ++i)
            sum += knots_[j + static_cast<std::size_t>(i)];
        abscissae[j] = sum / p;
    }
    return abscissae;
}

} // namespace kova::nurbs
