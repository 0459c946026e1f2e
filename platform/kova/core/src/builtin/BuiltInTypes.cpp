#include "builtin/BuiltInTypes.h"

#include "curve/NurbsCurveShape.h"
#include "detail/NodeType.h"

namespace kova::builtin {

std::vector<std::shared_ptr<detail::NodeType>> makeBuiltInTypes() {
    std::vector<std::shared_ptr<detail::NodeType>> types{
        makeTimeType(),          makeTransformType(), makeObjectSetType(),
        makeShadingEngineType(), makeLambertType(),   makeDisplayShapeType()};
    types.push_back(makeMeshType());
    types.push_back(makeDisplacementShaderType());
    types.push_back(curve::makeNurbsCurveType());
    for (const auto& type : types) {
        type->builtIn = true;
    }
    return types;
}

} // namespace kova::builtin
